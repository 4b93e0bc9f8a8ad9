#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

enum class EDdsPixels
{
    Plain, // 1, 3 or 4 bytes a pixel
    Bc1,
    Bc2,
    Bc3,
};

// The headers of a DDS, checked. Only the first, largest surface of the file counts: the others are
// smaller copies, further layers or faces.
struct SDdsHeader
{
    uint32_t uWidth = 0;
    uint32_t uHeight = 0;
    EDdsPixels ePixels = EDdsPixels::Plain;
    uint32_t uPixelBytes = 0; // Plain: 1 is grey, 3 and 4 are colours
    bool bRedFirst = false;   // Plain: otherwise blue comes first
    bool bHasAlpha = false;   // Plain with 4 bytes: otherwise the fourth byte means nothing
    size_t nPixelPosition = 0;

    // Bytes of the first surface.
    uint64_t GetSurfaceBytes() const;
};

// Refuses what the reader does not know and a surface that needs more bytes than there are. False
// leaves a fault, a phrase without a line feed.
bool ReadDdsHeader(std::span<const uint8_t> data, SDdsHeader& header, std::string& strFault);
