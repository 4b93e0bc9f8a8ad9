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

bool ReadFields(const uint8_t* pHeader, uint32_t uHeaderBytes, SBmpHeader& Header)
{
    if (uHeaderBytes == OLD_HEADER_BYTES)
    {
        Header.Width = ReadLe16(pHeader + 4);
        Header.Height = ReadLe16(pHeader + 6);
        Header.BitsPerPixel = ReadLe16(pHeader + 10);
        Header.ColorBytes = 3;
    }
    else
    {
        const auto iHeight = static_cast<int32_t>(ReadLe32(pHeader + 8));
        Header.Width = ReadLe32(pHeader + 4);
        Header.Height = static_cast<uint32_t>(std::abs(int64_t{iHeight}));
        Header.TopDown = iHeight < 0;
        Header.BitsPerPixel = ReadLe16(pHeader + 14);
        Header.Compression = ReadLe32(pHeader + 16);
        Header.Colors = ReadLe32(pHeader + 32);
    }
    if (Header.BitsPerPixel > 8)
    {
        Header.Colors = 0;
    }
    else if (Header.Colors == 0)
    {
        Header.Colors = 1U << Header.BitsPerPixel;
    }
    const bool bRuns = Header.Compression == BMP_RUNS_8 || Header.Compression == BMP_RUNS_4;
    return IsKnownKind(Header.BitsPerPixel, Header.Compression) && Header.Colors <= 256 &&
           !(bRuns && Header.TopDown);
}

void SetChannels(
    SBmpHeader& Header, uint32_t uRed, uint32_t uGreen, uint32_t uBlue, uint32_t uAlpha)
{
    Header.Channels[0].Mask = uRed;
    Header.Channels[1].Mask = uGreen;
    Header.Channels[2].Mask = uBlue;
    Header.Channels[3].Mask = uAlpha;
}

bool AreMasksWhole(const SBmpHeader& Header)
{
    return std::ranges::all_of(Header.Channels,
                               [](const SBmpChannel& Channel)
                               {
                                   const uint32_t uMask = Channel.Mask;
                                   const uint32_t uLow = uMask & (~uMask + 1);
                                   return (uMask & (uMask + uLow)) == 0;
                               });
}

// The masks stand behind the common header, whether they count as a part of it or not.
bool ReadMasks(std::span<const uint8_t> Data, uint32_t uHeaderBytes, SBmpHeader& Header)
{
    if (Header.Compression != BMP_MASKS)
    {
        const bool b16 = Header.BitsPerPixel == 16;
        SetChannels(Header, b16 ? 0x7C00 : 0xFF0000, b16 ? 0x3E0 : 0xFF00, b16 ? 0x1F : 0xFF, 0);
        return true;
    }
    const bool bAlpha = uHeaderBytes >= ALPHA_MASK_HEADER_BYTES;
    const size_t nMasks = FILE_HEADER_BYTES + COMMON_HEADER_BYTES;
    if (Data.size() < nMasks + (bAlpha ? 16 : 12))
    {
        return false;
    }
    const uint8_t* pMasks = Data.data() + nMasks;
    SetChannels(Header,
                ReadLe32(pMasks),
                ReadLe32(pMasks + 4),
                ReadLe32(pMasks + 8),
                bAlpha ? ReadLe32(pMasks + 12) : 0);
    return true;
}

bool HasEnoughPixels(size_t nBytes, const SBmpHeader& Header)
{
    if (Header.Compression == BMP_RUNS_8 || Header.Compression == BMP_RUNS_4)
    {
        return uint64_t{Header.Width} * Header.Height / MAX_PIXELS_PER_RUN_BYTE <= nBytes;
    }
    return nBytes / Header.GetRowBytes() >= Header.Height;
}

} // namespace

uint8_t SBmpChannel::Extract(uint32_t uPixel) const
{
    if (Mask == 0)
    {
        return 0;
    }
    const int iBits = std::popcount(Mask);
    const uint32_t uValue = (uPixel & Mask) >> std::countr_zero(Mask);
    if (iBits >= 8)
    {
        return static_cast<uint8_t>(uValue >> (iBits - 8));
    }
    const uint32_t uMost = (1U << iBits) - 1;
    return static_cast<uint8_t>((uValue * 255 + uMost / 2) / uMost);
}

bool SBmpHeader::HasWholeBytes() const
{
    return BitsPerPixel == 24 ||
           (BitsPerPixel == 32 && Channels[0].Mask == 0xFF0000 && Channels[1].Mask == 0xFF00 &&
            Channels[2].Mask == 0xFF && Channels[3].Mask == 0xFF000000);
}

bool ReadBmpHeader(std::span<const uint8_t> Data, SBmpHeader& Header, std::string& strFault)
{
    strFault = TOO_SHORT;
    if (Data.size() < FILE_HEADER_BYTES + 4)
    {
        return false;
    }
    const uint32_t uHeaderBytes = ReadLe32(&Data[FILE_HEADER_BYTES]);
    if (uHeaderBytes != OLD_HEADER_BYTES && uHeaderBytes < COMMON_HEADER_BYTES)
    {
        strFault = "damaged BMP file: unknown header";
        return false;
    }
    if (Data.size() - FILE_HEADER_BYTES < uHeaderBytes)
    {
        return false;
    }
    if (!ReadFields(&Data[FILE_HEADER_BYTES], uHeaderBytes, Header))
    {
        strFault = "damaged BMP file, or a kind of BMP that is not supported";
        return false;
    }
    if (Header.Width == 0 || Header.Height == 0)
    {
        strFault = "damaged BMP file: no pixels";
        return false;
    }
    if (!CheckImageSize(Header.Width, Header.Height, strFault))
    {
        return false;
    }
    if (!ReadMasks(Data, uHeaderBytes, Header))
    {
        return false;
    }
    if (!AreMasksWhole(Header))
    {
        strFault = "damaged BMP file: a colour mask has gaps";
        return false;
    }
    const bool bMasksBehind =
        Header.Compression == BMP_MASKS && uHeaderBytes == COMMON_HEADER_BYTES;
    Header.PalettePosition = FILE_HEADER_BYTES + uHeaderBytes + (bMasksBehind ? 12 : 0);
    const size_t nPaletteEnd = Header.PalettePosition + size_t{Header.Colors} * Header.ColorBytes;
    Header.PixelPosition = std::max<size_t>(ReadLe32(&Data[10]), nPaletteEnd);
    return Header.PixelPosition <= Data.size() &&
           HasEnoughPixels(Data.size() - Header.PixelPosition, Header);
}
