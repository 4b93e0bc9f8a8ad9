#include "editor/core/SLevelText.h"

#include "editor/core/MapKeywords.h"
#include "host/FileSystem.h"
#include "parser/DeclarativeText.h"
#include "parser/KeywordValues.h"

#include <filesystem>
#include <system_error>

namespace
{

constexpr char LEVEL_EXTENSION[] = ".level";
constexpr char HEIGHT_EXTENSION[] = ".height";
constexpr char HEIGHT_MAP[] = "height_map";
constexpr char BITMAP[] = "terrain_bitmap";
constexpr char MATERIAL[] = "material";
constexpr char PROTECTION[] = "protection";
// Also of what is not said, for people who add it.
constexpr char DECLARATIONS[] = "!height_map( s )\n"
                                "!terrain_size( v3 )\n"
                                "!cells( i, i )\n"
                                "!terrain_bitmap( s )\n"
                                "!material( s )\n"
                                "!protection( s )\n";

std::string MakeRelative(const std::string& strPath, const std::string& strFile)
{
    const std::filesystem::path folder = std::filesystem::path(strFile).parent_path();
    const std::filesystem::path relative =
        std::filesystem::path(strPath).lexically_relative(folder);
    const bool bBelow = !strPath.empty() && !relative.empty() && *relative.begin() != "..";
    return bBelow ? relative.generic_string() : strPath;
}

void ReadText(const CTCPARSE_KEYWORD* pKey, const char* pszName, std::string& strText)
{
    const char* pszText = IsKeyword(pKey, pszName) ? GetStringValue(pKey->params) : nullptr;
    strText = pszText != nullptr ? pszText : strText;
}

std::string MakeVectorText(const SVec3& vec)
{
    return "[" + MakeExactNumber(vec.x) + ", " + MakeExactNumber(vec.y) + ", " +
           MakeExactNumber(vec.z) + "]";
}

} // namespace

std::string GetFullPath(const char* pszPath)
{
    std::error_code error;
    const std::filesystem::path path = std::filesystem::absolute(fs::root_path(pszPath), error);
    return path.lexically_normal().string();
}

std::string SLevelText::Write(const CTCParseText& kept) const
{
    const std::vector<CTCParseText::SCall> calls = GetCalls(kept);
    if (kept.GetFirst() != nullptr)
    {
        return kept.Update(calls, strPath);
    }
    std::string strText = std::string(DECLARATIONS) + (geo.bKnown ? MAP_DECLARATIONS : "") + "\n";
    for (const CTCParseText::SCall& call : calls)
    {
        strText += call.GetText() + "\n";
    }
    return strText;
}

std::vector<CTCParseText::SCall> SLevelText::GetCalls(const CTCParseText& kept) const
{
    using SValue = CTCParseText::SValue;
    const auto text = [](const std::string& strText)
    {
        return SValue{tcparse_string, QuoteText(strText)};
    };
    std::vector<CTCParseText::SCall> calls = {
        {HEIGHT_MAP, {text(GetHeightMapName(kept))}},
        {"terrain_size", {{tcparse_vec3, MakeVectorText(size)}}},
        {"cells", {{tcparse_int, std::to_string(uCellsX)}, {tcparse_int, std::to_string(uCellsZ)}}},
    };
    // What the file names and the level has no more is written as an empty name, or it would come
    // back.
    if (!strBitmap.empty() || kept.FindLast(BITMAP) != nullptr)
    {
        calls.push_back({BITMAP, {text(strBitmap)}});
    }
    if (!strMaterial.empty() || kept.FindLast(MATERIAL) != nullptr)
    {
        calls.push_back({MATERIAL, {text(strMaterial)}});
    }
    if (!strProtection.empty() || (!bUnreadProtection && kept.FindLast(PROTECTION) != nullptr))
    {
        calls.push_back({PROTECTION, {text(GetProtectionName(kept))}});
    }
    const std::vector<CTCParseText::SCall> places = GetMapCalls(geo, kept);
    calls.insert(calls.end(), places.begin(), places.end());
    return calls;
}

// As a person has written it where that still means the same file.
std::string SLevelText::GetHeightMapName(const CTCParseText& kept) const
{
    SLevelText said;
    said.strPath = strPath;
    const CTCPARSE_KEYWORD* pCall = kept.FindLast(HEIGHT_MAP);
    const char* pszName = pCall != nullptr ? GetStringValue(pCall->params) : nullptr;
    const bool bSame = pszName != nullptr && said.Read(kept.GetFirst()) &&
                       GetFullPath(said.strHeightMap.c_str()) == strHeightMap;
    return bSame ? pszName : MakeRelative(strHeightMap, strPath);
}

std::string SLevelText::GetProtectionName(const CTCParseText& kept) const
{
    SLevelText said;
    said.strPath = strPath;
    const CTCPARSE_KEYWORD* pCall = kept.FindLast(PROTECTION);
    const char* pszName = pCall != nullptr ? GetStringValue(pCall->params) : nullptr;
    const bool bSame = pszName != nullptr && !strProtection.empty() && said.Read(kept.GetFirst()) &&
                       GetFullPath(said.strProtection.c_str()) == strProtection;
    return bSame ? pszName : MakeRelative(strProtection, strPath);
}

bool SLevelText::Read(const CTCPARSE_KEYWORD* pFirst)
{
    std::string strNamed;
    std::string strPicture;
    for (const CTCPARSE_KEYWORD* pKey = pFirst; pKey != nullptr; pKey = pKey->next)
    {
        ReadText(pKey, HEIGHT_MAP, strNamed);
        ReadText(pKey, BITMAP, strBitmap);
        ReadText(pKey, MATERIAL, strMaterial);
        ReadText(pKey, PROTECTION, strPicture);
        ReadMapCall(pKey, geo);
    }
    const std::filesystem::path folder = std::filesystem::path(strPath).parent_path();
    strProtection = strPicture.empty() ? "" : (folder / strPicture).lexically_normal().string();
    if (strNamed.empty())
    {
        return false;
    }
    // An absolute name takes the place of the folder before it.
    strHeightMap = (folder / strNamed).lexically_normal();
    return true;
}

SLevelTargets GetLevelTargets(const char* pszPath)
{
    std::filesystem::path path = GetFullPath(pszPath);
    if (path.extension() != LEVEL_EXTENSION)
    {
        // Looked up once more: a file of the longer name may be there in another spelling.
        path = GetFullPath((path.string() + LEVEL_EXTENSION).c_str());
    }
    const std::filesystem::path heights =
        std::filesystem::path(path).replace_extension(HEIGHT_EXTENSION);
    const std::filesystem::path protection =
        std::filesystem::path(path).replace_extension(PROTECTION_EXTENSION);
    return {path.string(), GetFullPath(heights.c_str()), GetFullPath(protection.c_str())};
}
