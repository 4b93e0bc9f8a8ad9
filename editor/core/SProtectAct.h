#pragma once

#include <cstdint>
#include <string>

enum class EProtect : uint32_t
{
    Disc, // a, b: x and z of its middle, c: its radius, terrain units
    Invert,
    Clear,
    Grow,    // a: vertices
    Slope,   // a: degrees
    Heights, // a, b: lowest and highest, terrain units
    Picture, // the whole protection, as a picture has it
};

// What a person does to the protection of a level.
struct SProtectAct
{
    EProtect eKind = EProtect::Clear;
    float a = 0.0F;
    float b = 0.0F;
    float c = 0.0F;
    bool bProtected = true;   // a disc takes protection away otherwise
    std::string strPath = {}; // of the picture, full
};
