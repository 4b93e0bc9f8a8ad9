#pragma once

#include "host/ScriptKeywords.h"

#include <string>
#include <vector>

// What the text syntax has to be told before it reads the block of a brush. The library of brushes
// and replay scripts hold the same block but for one key.
enum class EBrushBlock
{
    Library,
    Script, // says, too, whether the mask is on
};

// In the order in which files declare them; the keyword of the brush itself is its file's own.
inline std::vector<SScriptKeyword> GetBrushKeywords(EBrushBlock eBlock)
{
    std::vector<SScriptKeyword> keywords = {
        {"brush_name", "s"},
        {"bitmap", ""},
        {"path", "s", EKeywordFile::Read}, // in the block of the bitmap
        {"function", "s"},
        {"power_modifier", "f"},
        {"usage_density", "f"},
        {"fade_factor", "f"},
        {"hardness", "f"},
        {"vertical_distance", "f"},
        {"extent", "f"},
        {"mask", "s", EKeywordFile::Read},
    };
    if (eBlock == EBrushBlock::Script)
    {
        keywords.push_back({"mask_enabled", "i"});
    }
    keywords.push_back({"attrib", "ss"}); // in the block of the function
    return keywords;
}

// One declaration a line.
inline std::string GetBrushDeclarations(EBrushBlock eBlock)
{
    std::string strText;
    for (const SScriptKeyword& keyword : GetBrushKeywords(eBlock))
    {
        strText += MakeDeclaration(keyword);
    }
    return strText;
}
