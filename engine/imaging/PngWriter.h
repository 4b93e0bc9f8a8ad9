#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

// What a PNG is written from: rows without gaps, top row first.
struct SPngPixels
{
    uint32_t Width = 0;
    uint32_t Height = 0;
    int BitDepth = 8;  // 8, or 16 in the byte order of the processor
    int ColorType = 0; // PNG_COLOR_TYPE_…
    size_t RowBytes = 0;
    const uint8_t* Rows = nullptr;          // borrowed for the call
    std::span<const uint8_t> PaletteColors; // red, green, blue each; empty without a palette
};

// Appends the whole file to out. False leaves a fault in strFault, a phrase without a line feed.
bool WritePng(const SPngPixels& pixels, std::vector<uint8_t>& out, std::string& strFault);
