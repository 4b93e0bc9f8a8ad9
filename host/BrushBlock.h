#pragma once

#include <string>

// What the text syntax has to be told before it reads the block of a brush. The library of brushes
// and replay scripts hold the same block but for one key.
enum class EBrushBlock
{
    Library,
    Script, // says, too, whether the mask is on
};

// One declaration a line, in the order in which files have them; that of the brush itself is its
// file's own.
inline std::string GetBrushDeclarations(EBrushBlock eBlock)
{
    std::string strText = "!brush_name( s )\n!bitmap()\n!path( s )\n!function( s )\n"
                          "!power_modifier( f )\n!usage_density( f )\n!fade_factor( f )\n"
                          "!hardness( f )\n!vertical_distance( f )\n!extent( f )\n!mask( s )\n";
    if (eBlock == EBrushBlock::Script)
    {
        strText += "!mask_enabled( i )\n";
    }
    return strText + "!attrib( s, s )\n";
}
