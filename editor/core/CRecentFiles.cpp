#include "editor/core/CRecentFiles.h"

#include "parser/DeclarativeText.h"
#include "parser/KeywordValues.h"
#include "parser/TCParseFile.h"

#include <algorithm>
#include <memory>

namespace
{

constexpr char KEY[] = "recent";

} // namespace

CRecentFiles::CRecentFiles(std::string strFile)
    : m_File(std::move(strFile))
{
    if (m_File.empty())
    {
        return;
    }
    const std::unique_ptr<CTCPARSE_KEYWORD> pFirst(TCParseFile(m_File.c_str()));
    for (const CTCPARSE_KEYWORD* pKey = pFirst.get(); pKey != nullptr; pKey = pKey->next)
    {
        const char* pszPath = IsKeyword(pKey, KEY) ? GetStringValue(pKey->params) : nullptr;
        if (pszPath != nullptr && m_Paths.size() < MOST)
        {
            m_Paths.emplace_back(pszPath);
        }
    }
}

bool CRecentFiles::Add(const std::string& strPath)
{
    std::erase(m_Paths, strPath);
    m_Paths.insert(m_Paths.begin(), strPath);
    m_Paths.resize(std::min(m_Paths.size(), MOST));
    return Write();
}

bool CRecentFiles::Remove(const std::string& strPath)
{
    return std::erase(m_Paths, strPath) == 0 || Write();
}

bool CRecentFiles::Clear()
{
    m_Paths.clear();
    return Write();
}

bool CRecentFiles::Write()
{
    std::string strText = "!recent( s )\n\n";
    for (const std::string& strPath : m_Paths)
    {
        strText += "recent( " + QuoteText(strPath) + " )\n";
    }
    return m_File.empty() || WriteTextFile("CRecentFiles::Write", m_File, strText);
}
