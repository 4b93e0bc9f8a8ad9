#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

// Byte orders of the formats that store little-endian numbers and blue before red.

inline uint32_t ReadLe16(const uint8_t* pData)
{
    return pData[0] | uint32_t{pData[1]} << 8;
}

inline uint32_t ReadLe32(const uint8_t* pData)
{
    return ReadLe16(pData) | ReadLe16(pData + 2) << 16;
}

inline void AppendLe16(std::vector<uint8_t>& out, uint32_t uValue)
{
    out.push_back(static_cast<uint8_t>(uValue));
    out.push_back(static_cast<uint8_t>(uValue >> 8));
}

inline void AppendLe32(std::vector<uint8_t>& out, uint32_t uValue)
{
    AppendLe16(out, uValue);
    AppendLe16(out, uValue >> 16);
}

// Copies nPixels pixels and exchanges their first and third byte; a pixel of 1 byte is just copied.
// uPixelBytes: 1, 3 or 4. The buffers must not overlap.
void CopySwapped(const uint8_t* pSource, uint8_t* pDest, size_t nPixels, uint32_t uPixelBytes);

// Spreads palette indices of 1, 4 or 8 bits to one a byte; the leftmost pixel is in the highest
// bits.
void UnpackIndices(const uint8_t* pSource, uint8_t* pDest, size_t nPixels, uint32_t uBits);
