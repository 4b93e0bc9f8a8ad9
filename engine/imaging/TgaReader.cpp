#include "engine/imaging/ImageCodecs.h"
#include "engine/imaging/PixelOrder.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace
{

constexpr size_t HEADER_BYTES = 18;
constexpr uint32_t RUNS = 8; // added to the type of the picture

enum EKind : uint32_t
{
    KIND_INDEXED = 1,
    KIND_COLOR = 2,
    KIND_GREY = 3,
};

struct STgaHeader
{
    uint32_t Kind = 0; // EKind
    bool HasRuns = false;
    bool HasMap = false;
    uint32_t MapFirst = 0;
    uint32_t MapLength = 0;
    uint32_t MapEntryBytes = 0;
    uint32_t Width = 0;
    uint32_t Height = 0;
    uint32_t PixelBytes = 0;
    uint32_t AlphaBits = 0;
    bool TopDown = false;
    bool RightToLeft = false;
    size_t MapPosition = 0;
    size_t PixelPosition = 0;
};

bool IsColorBits(uint32_t uBits)
{
    return uBits == 15 || uBits == 16 || uBits == 24 || uBits == 32;
}

// The header has no mark of its own, so it must make sense in every field.
bool IsKnownKind(const STgaHeader& header, uint32_t uMapType, uint32_t uMapBits, uint32_t uBits)
{
    const bool bMap = uMapType == 1 && header.MapLength > 0 && IsColorBits(uMapBits);
    if (uMapType > 1 || (uMapType == 1 && !bMap))
    {
        return false;
    }
    switch (header.Kind)
    {
    case KIND_INDEXED:
        return bMap && uBits == 8;
    case KIND_COLOR:
        return IsColorBits(uBits);
    case KIND_GREY:
        return uBits == 8;
    default:
        return false;
    }
}

bool HasEnoughPixels(size_t nBytes, const STgaHeader& header)
{
    const uint64_t nPixels = uint64_t{header.Width} * header.Height;
    if (header.HasRuns)
    {
        const uint64_t nPackets = (nPixels + 127) / 128;
        return nPackets * (1 + header.PixelBytes) <= nBytes;
    }
    return nPixels * header.PixelBytes <= nBytes;
}

bool ReadHeader(std::span<const uint8_t> data, STgaHeader& header, std::string& strFault)
{
    if (data.size() < HEADER_BYTES)
    {
        strFault = "damaged TGA file: the file ends too early";
        return false;
    }
    const uint32_t uBits = data[16];
    header.Kind = data[2] & ~RUNS;
    header.HasRuns = (data[2] & RUNS) != 0;
    header.HasMap = data[1] == 1;
    header.MapFirst = ReadLe16(&data[3]);
    header.MapLength = ReadLe16(&data[5]);
    header.MapEntryBytes = (uint32_t{data[7]} + 7) / 8;
    header.Width = ReadLe16(&data[12]);
    header.Height = ReadLe16(&data[14]);
    header.PixelBytes = (uBits + 7) / 8;
    header.AlphaBits = data[17] & 0xF;
    header.RightToLeft = (data[17] & 0x10) != 0;
    header.TopDown = (data[17] & 0x20) != 0;
    if (!IsKnownKind(header, data[1], data[7], uBits) || header.Width == 0 || header.Height == 0)
    {
        strFault = "damaged TGA file, or a kind of TGA that is not supported";
        return false;
    }
    if (!CheckImageSize(header.Width, header.Height, strFault))
    {
        return false;
    }
    header.MapPosition = HEADER_BYTES + data[0];
    header.PixelPosition =
        header.MapPosition + (header.HasMap ? size_t{header.MapLength} * header.MapEntryBytes : 0);
    if (header.PixelPosition > data.size() ||
        !HasEnoughPixels(data.size() - header.PixelPosition, header))
    {
        strFault = "damaged TGA file: the file ends too early";
        return false;
    }
    return true;
}

// Unpacks runs, which may cross rows. False when the packets end early or go on beyond the picture.
bool UnpackRuns(std::span<const uint8_t> packets, std::span<uint8_t> pixels, size_t nPixelBytes)
{
    size_t nIn = 0;
    size_t nOut = 0;
    while (nOut < pixels.size())
    {
        if (nIn >= packets.size())
        {
            return false;
        }
        const uint8_t uPacket = packets[nIn++];
        const bool bRun = (uPacket & 0x80) != 0;
        const size_t nBytes = ((uPacket & 0x7F) + size_t{1}) * nPixelBytes;
        const size_t nStored = bRun ? nPixelBytes : nBytes;
        if (nBytes > pixels.size() - nOut || nStored > packets.size() - nIn)
        {
            return false;
        }
        for (size_t nDone = 0; nDone < nBytes; nDone += nStored)
        {
            std::memcpy(&pixels[nOut + nDone], &packets[nIn], nStored);
        }
        nIn += nStored;
        nOut += nBytes;
    }
    return true;
}

// One colour of 2, 3 or 4 bytes to red, green, blue. Two bytes hold five bits each.
void ReadColor(const uint8_t* pSource, uint32_t uBytes, uint8_t* pDest)
{
    if (uBytes != 2)
    {
        CopySwapped(pSource, pDest, 1, 3);
        return;
    }
    const uint32_t uColor = ReadLe16(pSource);
    for (uint32_t k = 0; k < 3; ++k)
    {
        const uint32_t uValue = uColor >> (10 - 5 * k) & 0x1F;
        pDest[k] = static_cast<uint8_t>((uValue * 255 + 15) / 31);
    }
}

void ReadRow(const uint8_t* pSource, const STgaHeader& header, uint8_t* pDest)
{
    if (header.PixelBytes != 2)
    {
        CopySwapped(pSource, pDest, header.Width, header.PixelBytes);
        return;
    }
    for (uint32_t i = 0; i < header.Width; ++i)
    {
        ReadColor(pSource + size_t{i} * 2, 2, pDest + size_t{i} * 3);
    }
}

void MirrorRow(uint8_t* pRow, uint32_t uWidth, uint32_t uPixelBytes)
{
    for (uint32_t uLeft = 0, uRight = uWidth - 1; uLeft < uRight; ++uLeft, --uRight)
    {
        std::swap_ranges(pRow + size_t{uLeft} * uPixelBytes,
                         pRow + size_t{uLeft + 1} * uPixelBytes,
                         pRow + size_t{uRight} * uPixelBytes);
    }
}

// Old writers leave both the number of alpha bits and the alpha of every pixel at 0 and mean an
// opaque picture.
void RepairAlpha(const STgaHeader& header, CImage& image)
{
    if (header.AlphaBits != 0 || image.GetFormat() != EImageFormat::Rgba32)
    {
        return;
    }
    uint8_t* pData = image.GetRawData();
    const size_t nBytes = image.GetByteCount();
    for (size_t i = 3; i < nBytes; i += 4)
    {
        if (pData[i] != 0)
        {
            return;
        }
    }
    for (size_t i = 3; i < nBytes; i += 4)
    {
        pData[i] = 0xFF;
    }
}

// Entries keep the index the pixels call them by: those before the first stored one are black.
std::unique_ptr<CPalette> ReadPalette(std::span<const uint8_t> data, const STgaHeader& header)
{
    uint8_t colors[CPalette::MAX_ENTRIES * 3] = {};
    const uint32_t uEnd = std::min(header.MapFirst + header.MapLength, CPalette::MAX_ENTRIES);
    for (uint32_t uEntry = header.MapFirst; uEntry < uEnd; ++uEntry)
    {
        const size_t nOffset = size_t{uEntry - header.MapFirst} * header.MapEntryBytes;
        ReadColor(
            &data[header.MapPosition + nOffset], header.MapEntryBytes, colors + size_t{uEntry} * 3);
    }
    return CPalette::Create(colors, uEnd);
}

EImageFormat GetFormat(const STgaHeader& header)
{
    switch (header.PixelBytes)
    {
    case 1:
        return EImageFormat::Indexed8;
    case 4:
        return EImageFormat::Rgba32;
    default:
        return EImageFormat::Rgb24;
    }
}

} // namespace

bool DecodeTga(std::span<const uint8_t> data, SPicture& picture, std::string& strFault)
{
    STgaHeader header;
    if (!ReadHeader(data, header, strFault) ||
        !MakeImage(picture, header.Width, header.Height, GetFormat(header), strFault))
    {
        return false;
    }
    std::span<const uint8_t> pixels = data.subspan(header.PixelPosition);
    std::unique_ptr<uint8_t[]> pUnpacked;
    if (header.HasRuns)
    {
        const size_t nBytes = size_t{header.Width} * header.Height * header.PixelBytes;
        pUnpacked.reset(new (std::nothrow) uint8_t[nBytes]);
        if (!pUnpacked || !UnpackRuns(pixels, {pUnpacked.get(), nBytes}, header.PixelBytes))
        {
            strFault = pUnpacked ? "damaged TGA file: the runs do not fit the picture"
                                 : "not enough memory";
            return false;
        }
        pixels = {pUnpacked.get(), nBytes};
    }
    CImage& image = *picture.Image;
    for (uint32_t uFileRow = 0; uFileRow < header.Height; ++uFileRow)
    {
        const uint32_t uRow = header.TopDown ? uFileRow : header.Height - 1 - uFileRow;
        ReadRow(&pixels[size_t{uFileRow} * header.Width * header.PixelBytes],
                header,
                image.GetRow(uRow));
        if (header.RightToLeft)
        {
            MirrorRow(image.GetRow(uRow), header.Width, image.GetBitsPerPixel() / 8);
        }
    }
    RepairAlpha(header, image);
    if (header.Kind == KIND_INDEXED)
    {
        picture.Palette = ReadPalette(data, header);
    }
    return true;
}
