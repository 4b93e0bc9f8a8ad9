#include "editor/script/CScriptFolder.h"

#include "editor/script/CScriptKeywords.h"
#include "host/FileSystem.h"
#include "parser/CTCParseNodes.h"

#include <cstring>
#include <filesystem>
#include <system_error>

namespace
{

constexpr char SEPARATORS[] = "/\\";

constexpr int BLOCK_DEPTH = 2; // of the bitmap in a brush; what is deeper is no script's

} // namespace

CScriptFolder::CScriptFolder(const std::string& strScriptPath, const CScriptKeywords& keywords)
    : m_Keywords(keywords)
{
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(strScriptPath, error);
    m_Script = error ? strScriptPath : path.string();
    m_Folder = m_Script;
    m_Folder.erase(m_Folder.find_last_of(SEPARATORS) + 1);
}

std::string CScriptFolder::GetPath(const std::string& strName) const
{
    const bool bAbsolute = !strName.empty() && std::strchr(SEPARATORS, strName[0]) != nullptr;
    return bAbsolute ? strName : m_Folder + strName;
}

bool CScriptFolder::Names(const CTCPARSE_KEYWORD* pFirst, const std::string& strPath) const
{
    return NamesWithin(pFirst, strPath, BLOCK_DEPTH);
}

bool CScriptFolder::NamesWithin(const CTCPARSE_KEYWORD* pFirst,
                                const std::string& strPath,
                                int nDepth) const
{
    bool bNames = false;
    for (; pFirst != nullptr && !bNames; pFirst = pFirst->next)
    {
        const char* pszFile = GetFile(*pFirst, nDepth);
        // A name that is not in the script's folder is looked for in the roots.
        bNames = (pszFile != nullptr && (fs::same_file(GetPath(pszFile).c_str(), strPath.c_str()) ||
                                         fs::same_file(pszFile, strPath.c_str()))) ||
                 (nDepth > 0 && NamesWithin(pFirst->block, strPath, nDepth - 1));
    }
    return bNames;
}

bool CScriptFolder::WouldReplaceScript(const CTCPARSE_KEYWORD& keyword) const
{
    const char* pszFile = GetFile(keyword, BLOCK_DEPTH);
    return pszFile != nullptr && GetUse(keyword, BLOCK_DEPTH) == EKeywordFile::Written &&
           fs::same_file(GetPath(pszFile).c_str(), m_Script.c_str());
}

void CScriptFolder::LocateFiles(CTCPARSE_KEYWORD& keyword) const
{
    LocateFile(keyword, BLOCK_DEPTH);
    LocateWithin(keyword.block, BLOCK_DEPTH - 1);
}

void CScriptFolder::LocateWithin(CTCPARSE_KEYWORD* pFirst, int nDepth) const
{
    for (; pFirst != nullptr && nDepth >= 0; pFirst = pFirst->next)
    {
        LocateFile(*pFirst, nDepth);
        LocateWithin(pFirst->block, nDepth - 1);
    }
}

EKeywordFile CScriptFolder::GetUse(const CTCPARSE_KEYWORD& keyword, int nDepth) const
{
    return nDepth == BLOCK_DEPTH ? m_Keywords.GetFileUse(keyword)
                                 : m_Keywords.GetFileUseInBlock(keyword);
}

const char* CScriptFolder::GetFile(const CTCPARSE_KEYWORD& keyword, int nDepth) const
{
    const CTCPARSE_PARAM* pParam = keyword.params;
    const bool bNamed = pParam != nullptr && pParam->type == tcparse_string &&
                        GetUse(keyword, nDepth) != EKeywordFile::None;
    return bNamed ? static_cast<const CTCPARSE_STRING*>(pParam)->value : nullptr;
}

void CScriptFolder::LocateFile(CTCPARSE_KEYWORD& keyword, int nDepth) const
{
    const char* pszName = GetFile(keyword, nDepth);
    if (pszName == nullptr)
    {
        return;
    }
    const std::string strName = pszName;
    const std::string strPath = GetPath(strName);
    if (strName.empty() || strPath == strName ||
        (GetUse(keyword, nDepth) == EKeywordFile::Read && !fs::exists(strPath.c_str())))
    {
        return;
    }
    CTCPARSE_PARAM* pParam = keyword.params;
    // The node of the argument owns its text, so another text takes another node.
    auto* pLocated = new CTCPARSE_STRING(strPath.c_str());
    pLocated->next = pParam->next;
    keyword.params = pLocated;
    delete pParam;
}
