#include "editor/script/CScriptFolder.h"

#include "host/FileSystem.h"
#include "host/ScriptKeywords.h"
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

// Of a brush block.
constexpr const char* BRUSH_FILES[] = {"path", "mask"};

// What the first argument of a keyword names, in a script or in the block of a brush.
EKeywordFile GetFileUse(const CTCPARSE_KEYWORD& keyword)
{
    for (const SScriptKeyword& known : SCRIPT_KEYWORDS)
    {
        if (IsKeyword(&keyword, known.pszName))
        {
            return known.eFile;
        }
    }
    const bool bBrushFile = std::any_of(std::begin(BRUSH_FILES),
                                        std::end(BRUSH_FILES),
                                        [&](const char* psz) { return IsKeyword(&keyword, psz); });
    return bBrushFile ? EKeywordFile::Read : EKeywordFile::None;
}

// Null for a keyword that names none.
const char* GetFile(const CTCPARSE_KEYWORD& keyword)
{
    const CTCPARSE_PARAM* pParam = keyword.params;
    const bool bNamed = pParam != nullptr && pParam->type == tcparse_string &&
                        GetFileUse(keyword) != EKeywordFile::None;
    return bNamed ? static_cast<const CTCPARSE_STRING*>(pParam)->value : nullptr;
}

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

bool CScriptFolder::Names(const CTCPARSE_KEYWORD* pFirst, const std::string& strPath) const
{
    constexpr int BRUSH_DEPTH = 2; // of the bitmap in a brush; what is deeper is no script's
    return NamesWithin(pFirst, strPath, BRUSH_DEPTH);
}

bool CScriptFolder::NamesWithin(const CTCPARSE_KEYWORD* pFirst,
                                const std::string& strPath,
                                int nDepth) const
{
    bool bNames = false;
    for (; pFirst != nullptr && !bNames; pFirst = pFirst->next)
    {
        const char* pszFile = GetFile(*pFirst);
        // A name that is not in the script's folder is looked for in the roots.
        bNames = (pszFile != nullptr && (fs::same_file(GetPath(pszFile).c_str(), strPath.c_str()) ||
                                         fs::same_file(pszFile, strPath.c_str()))) ||
                 (nDepth > 0 && NamesWithin(pFirst->block, strPath, nDepth - 1));
    }
    return bNames;
}

bool CScriptFolder::WouldReplaceScript(const CTCPARSE_KEYWORD& keyword) const
{
    const char* pszFile = GetFile(keyword);
    return pszFile != nullptr && GetFileUse(keyword) == EKeywordFile::Written &&
           fs::same_file(GetPath(pszFile).c_str(), m_Script.c_str());
}

void CScriptFolder::LocateFiles(CTCPARSE_KEYWORD& keyword) const
{
    const EKeywordFile eUse = GetFileUse(keyword);
    if (eUse != EKeywordFile::None)
    {
        LocateFile(keyword, eUse);
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
            LocateFile(*pFirst, EKeywordFile::Read);
        }
    }
}

void CScriptFolder::LocateFile(CTCPARSE_KEYWORD& keyword, EKeywordFile eUse) const
{
    CTCPARSE_PARAM* pParam = keyword.params;
    if (pParam == nullptr || pParam->type != tcparse_string)
    {
        return;
    }
    const std::string strName = static_cast<CTCPARSE_STRING*>(pParam)->value;
    const std::string strPath = GetPath(strName);
    if (strName.empty() || strPath == strName ||
        (eUse == EKeywordFile::Read && !fs::exists(strPath.c_str())))
    {
        return;
    }
    auto* pLocated = new CTCPARSE_STRING(strPath.c_str());
    pLocated->next = pParam->next;
    keyword.params = pLocated;
    delete pParam;
}
