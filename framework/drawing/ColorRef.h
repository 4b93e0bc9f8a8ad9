#pragma once

#include <cstdint>

// A colour as controls and drawing contexts pass it: red in the lowest byte, then green, then blue;
// the top byte is 0.
using ColorRef = uint32_t;

constexpr ColorRef MakeColor(uint8_t uRed, uint8_t uGreen, uint8_t uBlue)
{
    return uRed | static_cast<uint32_t>(uGreen) << 8 | static_cast<uint32_t>(uBlue) << 16;
}

constexpr uint8_t GetRed(ColorRef uColor)
{
    return static_cast<uint8_t>(uColor);
}

constexpr uint8_t GetGreen(ColorRef uColor)
{
    return static_cast<uint8_t>(uColor >> 8);
}

constexpr uint8_t GetBlue(ColorRef uColor)
{
    return static_cast<uint8_t>(uColor >> 16);
}
