#pragma once

#include <array>
#include <cstdint>
#include <string>

constexpr uint32_t LEVEL_BITMAP_SIDE = 16384; // texels, at most

// Writes a picture of one colour (red, green, blue, alpha) with 32 bits a pixel, to be painted as a
// level's terrain-type bitmap. False after one logged line; a file that is there then stays.
bool MakeLevelBitmap(const std::string& strPath,
                     uint32_t uWidth,
                     uint32_t uHeight,
                     const std::array<uint8_t, 4>& color);
