#include "editor/script/CScriptFolder.h"

#include "host/FileSystem.h"
#include "parser/CTCParseNodes.h"
#include "parser/KeywordValues.h"

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <system_error>

namespace
{

constexpr char SEPARATORS[] = "/\\";

} // namespace

CScriptFolder::CScriptFolder(const std::string& strScriptPath)
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

bool CScriptFolder::WouldReplaceScript(const CTCPARSE_KEYWORD& keyword) const
{
    const char* const writing[] = {"save", "export_stl", "picture", "save_brushes", "save_bitmap"};
    const CTCPARSE_PARAM* pParam = keyword.params;
    const bool bWrites =
        std::any_of(std::begin(writing),
                    std::end(writing),
                    [&](const char* pszName) { return IsKeyword(&keyword, pszName); });
    if (!bWrites || pParam == nullptr || pParam->type != tcparse_string)
    {
        return false;
    }
    const std::string strPath = GetPath(static_cast<const CTCPARSE_STRING*>(pParam)->value);
    return fs::same_file(strPath.c_str(), m_Script.c_str());
}

void CScriptFolder::LocateFiles(CTCPARSE_KEYWORD& keyword) const
{
    if (IsKeyword(&keyword, "brush_file") || IsKeyword(&keyword, "paint_bitmap") ||
        IsKeyword(&keyword, "paint_brush"))
    {
        LocateFile(keyword, EUse::Read);
    }
    else if (IsKeyword(&keyword, "save_brushes") || IsKeyword(&keyword, "save_bitmap"))
    {
        LocateFile(keyword, EUse::Written);
    }
    else
    {
        LocateBrushFiles(keyword.block);
    }
}

void CScriptFolder::LocateBrushFiles(CTCPARSE_KEYWORD* pFirst) const
{
    LocateNamed(pFirst, "mask");
    for (CTCPARSE_KEYWORD* pEntry = pFirst; pEntry != nullptr; pEntry = pEntry->next)
    {
        if (std::strcmp(pEntry->name, "bitmap") == 0)
        {
            LocateNamed(pEntry->block, "path");
        }
    }
}

void CScriptFolder::LocateNamed(CTCPARSE_KEYWORD* pFirst, const char* pszName) const
{
    for (; pFirst != nullptr; pFirst = pFirst->next)
    {
        if (std::strcmp(pFirst->name, pszName) == 0)
        {
            LocateFile(*pFirst, EUse::Read);
        }
    }
}

void CScriptFolder::LocateFile(CTCPARSE_KEYWORD& keyword, EUse eUse) const
{
    CTCPARSE_PARAM* pParam = keyword.params;
    if (pParam == nullptr || pParam->type != tcparse_string)
    {
        return;
    }
    const std::string strName = static_cast<CTCPARSE_STRING*>(pParam)->value;
    const std::string strPath = GetPath(strName);
    if (strName.empty() || strPath == strName ||
        (eUse == EUse::Read && !fs::exists(strPath.c_str())))
    {
        return;
    }
    auto* pLocated = new CTCPARSE_STRING(strPath.c_str());
    pLocated->next = pParam->next;
    keyword.params = pLocated;
    delete pParam;
}
