#include "engine/imaging/PixelOrder.h"
#include "engine/imaging/TgaCodec.h"

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
    uint32_t uKind = 0; // EKind
    bool bHasRuns = false;
    bool bHasMap = false;
    uint32_t uMapFirst = 0;
    uint32_t uMapLength = 0;
    uint32_t uMapEntryBytes = 0;
    uint32_t uWidth = 0;
    uint32_t uHeight = 0;
    uint32_t uPixelBytes = 0;
    uint32_t uAlphaBits = 0;
    bool bTopDown = false;
    bool bRightToLeft = false;
    size_t nMapPosition = 0;
    size_t nPixelPosition = 0;
};

bool IsColorBits(uint32_t uBits)
{
    return uBits == 15 || uBits == 16 || uBits == 24 || uBits == 32;
}

// The header has no mark of its own, so it must make sense in every field.
bool IsKnownKind(const STgaHeader& header, uint32_t uMapType, uint32_t uMapBits, uint32_t uBits)
{
    const bool bMap = uMapType == 1 && header.uMapLength > 0 && IsColorBits(uMapBits);
    if (uMapType > 1 || (uMapType == 1 && !bMap))
    {
        return false;
    }
    switch (header.uKind)
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
    const uint64_t nPixels = uint64_t{header.uWidth} * header.uHeight;
    if (header.bHasRuns)
    {
        // A packet stands for at most 128 pixels and stores at least one.
        const uint64_t nPackets = (nPixels + 127) / 128;
        return nPackets * (1 + header.uPixelBytes) <= nBytes;
    }
    return nPixels * header.uPixelBytes <= nBytes;
}

bool ReadHeader(std::span<const uint8_t> data, STgaHeader& header, std::string& strFault)
{
    if (data.size() < HEADER_BYTES)
    {
        strFault = "damaged TGA file: the file ends too early";
        return false;
    }
    const uint32_t uBits = data[16];
    header.uKind = data[2] & ~RUNS;
    header.bHasRuns = (data[2] & RUNS) != 0;
    header.bHasMap = data[1] == 1;
    header.uMapFirst = ReadLe16(&data[3]);
    header.uMapLength = ReadLe16(&data[5]);
    header.uMapEntryBytes = (uint32_t{data[7]} + 7) / 8;
    header.uWidth = ReadLe16(&data[12]);
    header.uHeight = ReadLe16(&data[14]);
    header.uPixelBytes = (uBits + 7) / 8;
    header.uAlphaBits = data[17] & 0xF;
    header.bRightToLeft = (data[17] & 0x10) != 0;
    header.bTopDown = (data[17] & 0x20) != 0;
    if (!IsKnownKind(header, data[1], data[7], uBits) || header.uWidth == 0 || header.uHeight == 0)
    {
        strFault = "damaged TGA file, or a kind of TGA that is not supported";
        return false;
    }
    if (!CheckImageSize(header.uWidth, header.uHeight, strFault))
    {
        return false;
    }
    header.nMapPosition = HEADER_BYTES + data[0];
    header.nPixelPosition =
        header.nMapPosition +
        (header.bHasMap ? size_t{header.uMapLength} * header.uMapEntryBytes : 0);
    if (header.nPixelPosition > data.size() ||
        !HasEnoughPixels(data.size() - header.nPixelPosition, header))
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
        // A run copies its one pixel again and again, literals are a single copy.
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
    if (header.uPixelBytes != 2)
    {
        CopySwapped(pSource, pDest, header.uWidth, header.uPixelBytes);
        return;
    }
    for (uint32_t i = 0; i < header.uWidth; ++i)
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
    if (header.uAlphaBits != 0 || image.GetFormat() != EImageFormat::Rgba32)
    {
        return;
    }
    // All pixels are looked at first: a single alpha above 0 means that alpha is meant.
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
    // Pixels are bytes and cannot name an entry beyond these.
    const uint32_t uEnd = std::min(header.uMapFirst + header.uMapLength, CPalette::MAX_ENTRIES);
    for (uint32_t uEntry = header.uMapFirst; uEntry < uEnd; ++uEntry)
    {
        const size_t nOffset = size_t{uEntry - header.uMapFirst} * header.uMapEntryBytes;
        ReadColor(&data[header.nMapPosition + nOffset],
                  header.uMapEntryBytes,
                  colors + size_t{uEntry} * 3);
    }
    return CPalette::Create(colors, uEnd);
}

EImageFormat GetFormat(const STgaHeader& header)
{
    switch (header.uPixelBytes)
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

bool HasTgaFooter(std::span<const uint8_t> data)
{
    constexpr std::string_view MARK("TRUEVISION-XFILE.\0", 18);
    return data.size() >= MARK.size() && StartsWith(data.last(MARK.size()), MARK);
}

bool MayTgaHavePalette(std::span<const uint8_t> data)
{
    return data.size() > 1 && data[1] == 1;
}

SImageSize PeekTgaSize(std::span<const uint8_t> data)
{
    return data.size() < HEADER_BYTES ? SImageSize()
                                      : SImageSize{ReadLe16(&data[12]), ReadLe16(&data[14])};
}

bool DecodeTga(std::span<const uint8_t> data, SPicture& picture, std::string& strFault)
{
    STgaHeader header;
    if (!ReadHeader(data, header, strFault) ||
        !MakeImage(picture, header.uWidth, header.uHeight, GetFormat(header), strFault))
    {
        return false;
    }
    std::span<const uint8_t> pixels = data.subspan(header.nPixelPosition);
    std::unique_ptr<uint8_t[]> pUnpacked;
    if (header.bHasRuns)
    {
        // Unpacked as a whole and not by rows, because runs may cross them.
        const size_t nBytes = size_t{header.uWidth} * header.uHeight * header.uPixelBytes;
        pUnpacked.reset(new (std::nothrow) uint8_t[nBytes]);
        if (!pUnpacked || !UnpackRuns(pixels, {pUnpacked.get(), nBytes}, header.uPixelBytes))
        {
            strFault = pUnpacked ? "damaged TGA file: the runs do not fit the picture"
                                 : "not enough memory";
            return false;
        }
        pixels = {pUnpacked.get(), nBytes};
    }
    CImage& image = *picture.pImage;
    for (uint32_t uFileRow = 0; uFileRow < header.uHeight; ++uFileRow)
    {
        const uint32_t uRow = header.bTopDown ? uFileRow : header.uHeight - 1 - uFileRow;
        ReadRow(&pixels[size_t{uFileRow} * header.uWidth * header.uPixelBytes],
                header,
                image.GetRow(uRow));
        if (header.bRightToLeft)
        {
            MirrorRow(image.GetRow(uRow), header.uWidth, image.GetBitsPerPixel() / 8);
        }
    }
    RepairAlpha(header, image);
    if (header.uKind == KIND_INDEXED)
    {
        picture.pPalette = ReadPalette(data, header);
    }
    return true;
}
