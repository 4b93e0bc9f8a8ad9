#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

// Where the bits of one colour channel stand in a 16-bit or 32-bit pixel.
struct SBmpChannel
{
    uint32_t uMask = 0; // consecutive bits, or 0 when there is no such channel

    // The channel of a pixel, scaled to 0..255; 0 without a mask.
    uint8_t Extract(uint32_t uPixel) const;
};

enum EBmpCompression : uint32_t
{
    BMP_PLAIN = 0,
    BMP_RUNS_8 = 1,
    BMP_RUNS_4 = 2,
    BMP_MASKS = 3,
};

// The headers of a BMP, checked.
struct SBmpHeader
{
    uint32_t uWidth = 0;
    uint32_t uHeight = 0;
    bool bTopDown = false;
    uint32_t uBitsPerPixel = 0;  // 1, 4, 8, 16, 24 or 32
    uint32_t uCompression = 0;   // EBmpCompression, fitting the bits per pixel
    uint32_t uColors = 0;        // entries of the palette, 0 above 8 bits
    uint32_t uColorBytes = 4;    // bytes of one entry
    size_t nPalettePosition = 0; // from the start of the file
    size_t nPixelPosition = 0;   // the palette lies before it, both inside the file
    SBmpChannel channels[4];     // red, green, blue, alpha; above 8 bits

    bool HasAlpha() const { return channels[3].uMask != 0; }

    // Pixels are blue, green, red and no byte more, or alpha as the fourth.
    bool HasWholeBytes() const;

    // The row of the image that the file's row is.
    uint32_t GetImageRow(uint32_t uFileRow) const
    {
        return bTopDown ? uFileRow : uHeight - 1 - uFileRow;
    }

    // Bytes of an uncompressed row, padding included.
    size_t GetRowBytes() const { return (size_t{uWidth} * uBitsPerPixel + 31) / 32 * 4; }
};

// Refuses what is no BMP, what the reader does not know, and pixels that need more bytes than there
// are. False leaves a fault, a phrase without a line feed.
bool ReadBmpHeader(std::span<const uint8_t> data, SBmpHeader& header, std::string& strFault);
