#include "engine/imaging/BmpHeader.h"

#include "engine/imaging/ImageCodecs.h"
#include "engine/imaging/PixelOrder.h"

#include <algorithm>
#include <bit>
#include <cstdlib>

namespace
{

constexpr size_t FILE_HEADER_BYTES = 14;
constexpr uint32_t OLD_HEADER_BYTES = 12;
constexpr uint32_t COMMON_HEADER_BYTES = 40;
constexpr uint32_t ALPHA_MASK_HEADER_BYTES = 56; // the first that holds four masks

// A run of two bytes fills up to 255 pixels, a row end up to a row: twice that has room for both.
constexpr uint64_t MAX_PIXELS_PER_RUN_BYTE = 256;

const char* const TOO_SHORT = "damaged BMP file: the file ends too early";

bool IsKnownKind(uint32_t uBits, uint32_t uCompression)
{
    switch (uCompression)
    {
    case BMP_PLAIN:
        return uBits == 1 || uBits == 4 || uBits == 8 || uBits == 16 || uBits == 24 || uBits == 32;
    case BMP_RUNS_8:
        return uBits == 8;
    case BMP_RUNS_4:
        return uBits == 4;
    case BMP_MASKS:
        return uBits == 16 || uBits == 32;
    default:
        return false;
    }
}

bool ReadFields(const uint8_t* pHeader, uint32_t uHeaderBytes, SBmpHeader& header)
{
    if (uHeaderBytes == OLD_HEADER_BYTES)
    {
        header.uWidth = ReadLe16(pHeader + 4);
        header.uHeight = ReadLe16(pHeader + 6);
        header.uBitsPerPixel = ReadLe16(pHeader + 10);
        header.uColorBytes = 3;
    }
    else
    {
        const auto iHeight = static_cast<int32_t>(ReadLe32(pHeader + 8));
        header.uWidth = ReadLe32(pHeader + 4);
        header.uHeight = static_cast<uint32_t>(std::abs(int64_t{iHeight}));
        // Rows run from the bottom up unless the height is negative.
        header.bTopDown = iHeight < 0;
        header.uBitsPerPixel = ReadLe16(pHeader + 14);
        header.uCompression = ReadLe32(pHeader + 16);
        header.uColors = ReadLe32(pHeader + 32);
    }
    // Such pixels name no entries, so a palette that a file has all the same is passed over.
    if (header.uBitsPerPixel > 8)
    {
        header.uColors = 0;
    }
    else if (header.uColors == 0)
    {
        header.uColors = 1U << header.uBitsPerPixel;
    }
    const bool bRuns = header.uCompression == BMP_RUNS_8 || header.uCompression == BMP_RUNS_4;
    return IsKnownKind(header.uBitsPerPixel, header.uCompression) && header.uColors <= 256 &&
           !(bRuns && header.bTopDown);
}

void SetChannels(
    SBmpHeader& header, uint32_t uRed, uint32_t uGreen, uint32_t uBlue, uint32_t uAlpha)
{
    header.channels[0].uMask = uRed;
    header.channels[1].uMask = uGreen;
    header.channels[2].uMask = uBlue;
    header.channels[3].uMask = uAlpha;
}

bool AreMasksWhole(const SBmpHeader& header)
{
    return std::ranges::all_of(header.channels,
                               [](const SBmpChannel& channel)
                               {
                                   // Adding its lowest bit carries through a mask without gaps and
                                   // leaves none of its bits.
                                   const uint32_t uMask = channel.uMask;
                                   const uint32_t uLow = uMask & (~uMask + 1);
                                   return (uMask & (uMask + uLow)) == 0;
                               });
}

// The masks stand behind the common header, whether they count as a part of it or not.
bool ReadMasks(std::span<const uint8_t> data, uint32_t uHeaderBytes, SBmpHeader& header)
{
    if (header.uCompression != BMP_MASKS)
    {
        const bool b16 = header.uBitsPerPixel == 16;
        SetChannels(header, b16 ? 0x7C00 : 0xFF0000, b16 ? 0x3E0 : 0xFF00, b16 ? 0x1F : 0xFF, 0);
        return true;
    }
    const bool bAlpha = uHeaderBytes >= ALPHA_MASK_HEADER_BYTES;
    const size_t nMasks = FILE_HEADER_BYTES + COMMON_HEADER_BYTES;
    if (data.size() < nMasks + (bAlpha ? 16 : 12))
    {
        return false;
    }
    const uint8_t* pMasks = data.data() + nMasks;
    SetChannels(header,
                ReadLe32(pMasks),
                ReadLe32(pMasks + 4),
                ReadLe32(pMasks + 8),
                bAlpha ? ReadLe32(pMasks + 12) : 0);
    return true;
}

bool HasEnoughPixels(size_t nBytes, const SBmpHeader& header)
{
    if (header.uCompression == BMP_RUNS_8 || header.uCompression == BMP_RUNS_4)
    {
        return uint64_t{header.uWidth} * header.uHeight / MAX_PIXELS_PER_RUN_BYTE <= nBytes;
    }
    return nBytes / header.GetRowBytes() >= header.uHeight;
}

} // namespace

uint8_t SBmpChannel::Extract(uint32_t uPixel) const
{
    if (uMask == 0)
    {
        return 0;
    }
    const int iBits = std::popcount(uMask);
    const uint32_t uValue = (uPixel & uMask) >> std::countr_zero(uMask);
    if (iBits >= 8)
    {
        return static_cast<uint8_t>(uValue >> (iBits - 8));
    }
    const uint32_t uMost = (1U << iBits) - 1;
    return static_cast<uint8_t>((uValue * 255 + uMost / 2) / uMost);
}

bool SBmpHeader::HasWholeBytes() const
{
    return uBitsPerPixel == 24 ||
           (uBitsPerPixel == 32 && channels[0].uMask == 0xFF0000 && channels[1].uMask == 0xFF00 &&
            channels[2].uMask == 0xFF && channels[3].uMask == 0xFF000000);
}

bool ReadBmpHeader(std::span<const uint8_t> data, SBmpHeader& header, std::string& strFault)
{
    // What returns below without a fault of its own found too few bytes.
    strFault = TOO_SHORT;
    if (data.size() < FILE_HEADER_BYTES + 4)
    {
        return false;
    }
    const uint32_t uHeaderBytes = ReadLe32(&data[FILE_HEADER_BYTES]);
    if (uHeaderBytes != OLD_HEADER_BYTES && uHeaderBytes < COMMON_HEADER_BYTES)
    {
        strFault = "damaged BMP file: unknown header";
        return false;
    }
    if (data.size() - FILE_HEADER_BYTES < uHeaderBytes)
    {
        return false;
    }
    if (!ReadFields(&data[FILE_HEADER_BYTES], uHeaderBytes, header))
    {
        strFault = "damaged BMP file, or a kind of BMP that is not supported";
        return false;
    }
    if (header.uWidth == 0 || header.uHeight == 0)
    {
        strFault = "damaged BMP file: no pixels";
        return false;
    }
    if (!CheckImageSize(header.uWidth, header.uHeight, strFault))
    {
        return false;
    }
    if (!ReadMasks(data, uHeaderBytes, header))
    {
        return false;
    }
    if (!AreMasksWhole(header))
    {
        strFault = "damaged BMP file: a colour mask has gaps";
        return false;
    }
    const bool bMasksBehind =
        header.uCompression == BMP_MASKS && uHeaderBytes == COMMON_HEADER_BYTES;
    header.nPalettePosition = FILE_HEADER_BYTES + uHeaderBytes + (bMasksBehind ? 12 : 0);
    const size_t nPaletteEnd =
        header.nPalettePosition + size_t{header.uColors} * header.uColorBytes;
    // A position inside the header or the palette counts as right behind them.
    header.nPixelPosition = std::max<size_t>(ReadLe32(&data[10]), nPaletteEnd);
    return header.nPixelPosition <= data.size() &&
           HasEnoughPixels(data.size() - header.nPixelPosition, header);
}
