#include "editor/app/SLevelViews.h"

#include "editor/core/FileNames.h"
#include "editor/core/UserFolders.h"
#include "host/FileSystem.h"
#include "parser/DeclarativeText.h"
#include "parser/KeywordValues.h"
#include "parser/TCParseFile.h"

#include <algorithm>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

namespace
{

constexpr char FOLDER[] = "/views";
constexpr char EXTENSION[] = ".views";
constexpr char LEVEL[] = "level";
constexpr char VIEW[] = "view";
constexpr char FRAMED[] = "framed";
constexpr char BOOKMARK[] = "bookmark";
constexpr size_t MOST_FILES = 300;
constexpr size_t NAME_BYTES = 100;

std::string GetFolder()
{
    return GetUserStateFolder() + FOLDER;
}

// Levels of one name lie in several folders: their paths tell them apart.
std::string GetFile(const std::string& strLevel)
{
    constexpr uint64_t OFFSET = 14695981039346656037U; // FNV-1a
    constexpr uint64_t PRIME = 1099511628211U;
    uint64_t uHash = OFFSET;
    for (const char c : strLevel)
    {
        uHash = (uHash ^ static_cast<uint8_t>(c)) * PRIME;
    }
    char szHash[20];
    std::snprintf(szHash, sizeof(szHash), "-%016" PRIx64, uHash);
    const std::string strName = std::filesystem::path(strLevel).stem().string();
    return GetFolder() + "/" + ShortenName(strName, NAME_BYTES) + szHash + EXTENSION;
}

std::string MakeLookText(const SViewLook& look)
{
    return QuoteText(GetViewName(look.eKind)) + ", [ " + MakeExactNumber(look.at.x) + ", " +
           MakeExactNumber(look.at.y) + ", " + MakeExactNumber(look.at.z) + " ], " +
           MakeExactNumber(look.fYaw) + ", " + MakeExactNumber(look.fPitch) + ", " +
           MakeExactNumber(look.fHalfSide) + " )\n";
}

// False, and the look is not to be used, where one of the values is not there.
bool ReadLook(const CTCPARSE_PARAM* pKind, SViewLook& look)
{
    const char* pszKind = GetStringValue(pKind);
    const CTCPARSE_PARAM* pAt = pszKind != nullptr ? pKind->next : nullptr;
    if (pAt == nullptr || pAt->type != tcparse_vec3 || !FindViewKind(pszKind, look.eKind))
    {
        return false;
    }
    const auto& at = static_cast<const CTCPARSE_VEC3&>(*pAt);
    look.at = {at.x, at.y, at.z};
    const CTCPARSE_PARAM* pNext = pAt->next;
    for (float* pValue : {&look.fYaw, &look.fPitch, &look.fHalfSide})
    {
        if (pNext == nullptr)
        {
            return false;
        }
        *pValue = GetFloatValue(pNext);
        pNext = pNext->next;
    }
    return true;
}

void DropOldFiles()
{
    std::vector<std::filesystem::directory_entry> files;
    std::error_code error; // what stays is tried again next time
    for (const auto& entry : std::filesystem::directory_iterator(GetFolder(), error))
    {
        if (entry.path().extension() == EXTENSION)
        {
            files.push_back(entry);
        }
    }
    if (files.size() <= MOST_FILES)
    {
        return;
    }
    std::sort(files.begin(),
              files.end(),
              [](const auto& a, const auto& b)
              {
                  std::error_code none;
                  return a.last_write_time(none) > b.last_write_time(none);
              });
    for (size_t i = MOST_FILES; i < files.size(); ++i)
    {
        std::filesystem::remove(files[i].path(), error);
    }
}

} // namespace

SLevelViews SLevelViews::Load(const std::string& strLevel)
{
    SLevelViews found;
    const std::string strFile = GetFile(strLevel);
    if (!fs::exists(strFile.c_str()))
    {
        return found;
    }
    const std::unique_ptr<CTCPARSE_KEYWORD> pFirst(TCParseFile(strFile.c_str()));
    for (const CTCPARSE_KEYWORD* pKey = pFirst.get(); pKey != nullptr; pKey = pKey->next)
    {
        SViewLook look;
        const CTCPARSE_PARAM* pFirstParam = pKey->params;
        const char* pszLevel = IsKeyword(pKey, LEVEL) ? GetStringValue(pFirstParam) : nullptr;
        if (pszLevel != nullptr && strLevel != pszLevel)
        {
            return {}; // another level of the same hash
        }
        if (IsKeyword(pKey, VIEW) && ReadLook(pFirstParam, look))
        {
            found.views.push_back(look);
        }
        const char* pszFramed = IsKeyword(pKey, FRAMED) ? GetStringValue(pFirstParam) : nullptr;
        if (pszFramed != nullptr && FindViewKind(pszFramed, look.eKind))
        {
            look.bFramed = true;
            found.views.push_back(look);
        }
        const int32_t iBookmark = IsKeyword(pKey, BOOKMARK) ? GetIntValue(pFirstParam) : -1;
        if (pFirstParam != nullptr && iBookmark >= 0 &&
            iBookmark < static_cast<int32_t>(BOOKMARKS) && ReadLook(pFirstParam->next, look))
        {
            found.bookmarks[static_cast<size_t>(iBookmark)] = look;
        }
    }
    return found;
}

std::string SLevelViews::MakeText(const std::string& strLevel) const
{
    std::string strText =
        "!level( s )\n!view( s, v3, f, f, f )\n!framed( s )\n!bookmark( i, s, v3, f, f, f )\n\n"
        "level( " +
        QuoteText(strLevel) + " )\n";
    for (const SViewLook& look : views)
    {
        strText += look.bFramed
                       ? std::string(FRAMED) + "( " + QuoteText(GetViewName(look.eKind)) + " )\n"
                       : std::string(VIEW) + "( " + MakeLookText(look);
    }
    for (size_t i = 0; i < BOOKMARKS; ++i)
    {
        if (bookmarks[i].has_value())
        {
            strText += std::string(BOOKMARK) + "( " + std::to_string(i) + ", " +
                       MakeLookText(*bookmarks[i]);
        }
    }
    return strText;
}

bool SLevelViews::Save(const std::string& strLevel, const std::string& strText)
{
    const std::string strFile = GetFile(strLevel);
    if (!fs::exists(strFile.c_str()))
    {
        DropOldFiles();
    }
    return WriteTextFile("SLevelViews::Save", strFile, strText);
}

void SLevelViews::Remove(const std::string& strLevel)
{
    std::error_code error; // there need not be one
    std::filesystem::remove(GetFile(strLevel), error);
}
