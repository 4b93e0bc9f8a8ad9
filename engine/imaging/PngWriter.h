#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

// What a PNG is written from: rows without gaps, top row first.
struct SPngPixels
{
    uint32_t uWidth = 0;
    uint32_t uHeight = 0;
    int iBitDepth = 8;  // 8, or 16 in the byte order of the processor
    int iColorType = 0; // PNG_COLOR_TYPE_…
    size_t nRowBytes = 0;
    const uint8_t* pRows = nullptr;         // borrowed for the call
    std::span<const uint8_t> paletteColors; // red, green, blue each; empty without a palette
};

// Appends the whole file to out. False leaves a fault in strFault, a phrase without a line feed.
bool WritePng(const SPngPixels& pixels, std::vector<uint8_t>& out, std::string& strFault);
