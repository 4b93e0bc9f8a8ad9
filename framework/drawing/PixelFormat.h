#pragma once

#include "framework/drawing/ColorRef.h"

#include <bit>
#include <cstddef>
#include <cstring>

// Pixels as numbers in the layouts of CPixelBuffer, for the sources of this folder. A number holds
// the fourth byte too; what is compared as a colour goes through GetColorMask first.

static_assert(std::endian::native == std::endian::little, "pixels are read as numbers");

constexpr uint32_t OPAQUE_BYTE = 0xFF000000;

constexpr bool IsPixelDepth(int nBits)
{
    return nBits == 16 || nBits == 24 || nBits == 32;
}

constexpr uint32_t GetColorMask(int nBits)
{
    return nBits == 16 ? 0xFFFF : 0xFFFFFF;
}

constexpr uint32_t EncodePixel(ColorRef uColor, int nBits)
{
    const uint32_t uRed = GetRed(uColor);
    const uint32_t uGreen = GetGreen(uColor);
    const uint32_t uBlue = GetBlue(uColor);
    if (nBits == 16)
    {
        return (uRed & 0xF8) << 8 | (uGreen & 0xFC) << 3 | uBlue >> 3;
    }
    return OPAQUE_BYTE | uRed << 16 | uGreen << 8 | uBlue;
}

constexpr ColorRef DecodePixel(uint32_t uPixel, int nBits)
{
    if (nBits == 16)
    {
        const uint32_t uRed = uPixel >> 11 & 0x1F;
        const uint32_t uGreen = uPixel >> 5 & 0x3F;
        const uint32_t uBlue = uPixel & 0x1F;
        return (uRed << 3 | uRed >> 2) | (uGreen << 2 | uGreen >> 4) << 8 |
               (uBlue << 3 | uBlue >> 2) << 16;
    }
    return (uPixel >> 16 & 0xFF) | (uPixel & 0xFF00) | (uPixel & 0xFF) << 16;
}

// Where pixel x of a row lies.
template <class TByte> TByte* GetPixelOf(TByte* pRow, int x, int nBits)
{
    return pRow + static_cast<ptrdiff_t>(x) * (nBits / 8);
}

inline uint32_t LoadPixel(const uint8_t* pPixel, int nBits)
{
    uint32_t uPixel = 0;
    switch (nBits)
    {
    case 16:
        std::memcpy(&uPixel, pPixel, 2);
        break;
    case 24:
        uPixel = pPixel[0] | static_cast<uint32_t>(pPixel[1]) << 8 |
                 static_cast<uint32_t>(pPixel[2]) << 16;
        break;
    default:
        std::memcpy(&uPixel, pPixel, 4);
        break;
    }
    return uPixel;
}

inline void StorePixel(uint8_t* pPixel, uint32_t uPixel, int nBits)
{
    switch (nBits)
    {
    case 16:
        std::memcpy(pPixel, &uPixel, 2);
        break;
    case 24:
        pPixel[0] = static_cast<uint8_t>(uPixel);
        pPixel[1] = static_cast<uint8_t>(uPixel >> 8);
        pPixel[2] = static_cast<uint8_t>(uPixel >> 16);
        break;
    default:
        std::memcpy(pPixel, &uPixel, 4);
        break;
    }
}

// Fills the pixels of a row from iLeft up to, but not with, iRight. Both lie in the row.
inline void FillPixels(uint8_t* pRow, int iLeft, int iRight, uint32_t uPixel, int nBits)
{
    const int nBytes = nBits / 8;
    uint8_t* pPixel = GetPixelOf(pRow, iLeft, nBits);
    for (int x = iLeft; x < iRight; ++x, pPixel += nBytes)
    {
        StorePixel(pPixel, uPixel, nBits);
    }
}

// Lets a colour cover a pixel by uOpacity of 255. A fourth byte becomes more opaque by as much.
inline void BlendPixel(uint8_t* pPixel, ColorRef uColor, uint32_t uOpacity, int nBits)
{
    const uint32_t uBelow = LoadPixel(pPixel, nBits);
    const ColorRef uBelowColor = DecodePixel(uBelow, nBits);
    const auto mix = [uOpacity](uint32_t uOver, uint32_t uUnder)
    {
        return (uOver * uOpacity + uUnder * (255 - uOpacity) + 127) / 255;
    };
    const ColorRef uMixed = mix(uColor & 0xFF, uBelowColor & 0xFF) |
                            mix(uColor >> 8 & 0xFF, uBelowColor >> 8 & 0xFF) << 8 |
                            mix(uColor >> 16 & 0xFF, uBelowColor >> 16 & 0xFF) << 16;
    uint32_t uPixel = EncodePixel(uMixed, nBits);
    if (nBits == 32)
    {
        uPixel = (uPixel & 0xFFFFFF) | mix(255, uBelow >> 24) << 24;
    }
    StorePixel(pPixel, uPixel, nBits);
}
