#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The command line of the height-map converter. Numbers that were not given are 0.
struct SHeightOptions
{
    enum class EAction
    {
        Convert,
        Picture,
        ShowHelp,
    };

    EAction eAction = EAction::Convert;
    std::vector<std::string> inputs; // one to convert, one or more to draw
    std::string strOutput;
    uint32_t uSize = 0;     // vertices per side
    uint32_t uPixels = 0;   // of a picture's longer side
    float fWidth = 0.0F;    // terrain units along x
    float fDepth = 0.0F;    // along z
    float fSpacingX = 0.0F; // terrain units between samples along x
    float fSpacingZ = 0.0F;
    float fMaxHeight = 0.0F;

    // False for a line that makes no sense; strFault then says why, without a line feed.
    bool Read(int nArguments, const char* const* ppszArguments, std::string& strFault);

    static const char* GetUsage(); // of several lines
};
