#include "editor/core/SLevelText.h"

#include "parser/DeclarativeText.h"
#include "parser/KeywordValues.h"

#include <filesystem>

namespace
{

constexpr char DECLARATIONS[] = "!height_map( s )\n"
                                "!terrain_size( v3 )\n"
                                "!cells( i, i )\n"
                                "!terrain_bitmap( s )\n"
                                "!material( s )\n\n";

std::string MakeRelative(const std::string& strPath, const std::string& strFile)
{
    const std::filesystem::path folder = std::filesystem::path(strFile).parent_path();
    const std::filesystem::path relative =
        std::filesystem::path(strPath).lexically_relative(folder);
    const bool bBelow = !relative.empty() && *relative.begin() != "..";
    return bBelow ? relative.generic_string() : strPath;
}

void ReadText(const CTCPARSE_KEYWORD* pKey, const char* pszName, std::string& strText)
{
    const char* pszText = IsKeyword(pKey, pszName) ? GetStringValue(pKey->params) : nullptr;
    strText = pszText != nullptr ? pszText : strText;
}

} // namespace

std::string SLevelText::Write() const
{
    std::string strText = DECLARATIONS;
    strText += "height_map( " + QuoteText(MakeRelative(strHeightMap, strPath)) + " )\n";
    strText += "terrain_size( [" + MakeExactNumber(size.x) + ", " + MakeExactNumber(size.y) + ", " +
               MakeExactNumber(size.z) + "] )\n";
    strText += "cells( " + std::to_string(uCellsX) + ", " + std::to_string(uCellsZ) + " )\n";
    strText += strBitmap.empty() ? "" : "terrain_bitmap( " + QuoteText(strBitmap) + " )\n";
    strText += strMaterial.empty() ? "" : "material( " + QuoteText(strMaterial) + " )\n";
    return strText;
}

bool SLevelText::Read(const CTCPARSE_KEYWORD* pFirst)
{
    std::string strNamed;
    for (const CTCPARSE_KEYWORD* pKey = pFirst; pKey != nullptr; pKey = pKey->next)
    {
        ReadText(pKey, "height_map", strNamed);
        ReadText(pKey, "terrain_bitmap", strBitmap);
        ReadText(pKey, "material", strMaterial);
    }
    if (strNamed.empty())
    {
        return false;
    }
    strHeightMap = (std::filesystem::path(strPath).parent_path() / strNamed).lexically_normal();
    return true;
}
