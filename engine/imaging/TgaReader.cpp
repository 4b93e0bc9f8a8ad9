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
bool IsKnownKind(const STgaHeader& Header, uint32_t uMapType, uint32_t uMapBits, uint32_t uBits)
{
    const bool bMap = uMapType == 1 && Header.MapLength > 0 && IsColorBits(uMapBits);
    if (uMapType > 1 || (uMapType == 1 && !bMap))
    {
        return false;
    }
    switch (Header.Kind)
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

bool HasEnoughPixels(size_t nBytes, const STgaHeader& Header)
{
    const uint64_t nPixels = uint64_t{Header.Width} * Header.Height;
    if (Header.HasRuns)
    {
        const uint64_t nPackets = (nPixels + 127) / 128;
        return nPackets * (1 + Header.PixelBytes) <= nBytes;
    }
    return nPixels * Header.PixelBytes <= nBytes;
}

bool ReadHeader(std::span<const uint8_t> Data, STgaHeader& Header, std::string& strFault)
{
    if (Data.size() < HEADER_BYTES)
    {
        strFault = "damaged TGA file: the file ends too early";
        return false;
    }
    const uint32_t uBits = Data[16];
    Header.Kind = Data[2] & ~RUNS;
    Header.HasRuns = (Data[2] & RUNS) != 0;
    Header.HasMap = Data[1] == 1;
    Header.MapFirst = ReadLe16(&Data[3]);
    Header.MapLength = ReadLe16(&Data[5]);
    Header.MapEntryBytes = (uint32_t{Data[7]} + 7) / 8;
    Header.Width = ReadLe16(&Data[12]);
    Header.Height = ReadLe16(&Data[14]);
    Header.PixelBytes = (uBits + 7) / 8;
    Header.AlphaBits = Data[17] & 0xF;
    Header.RightToLeft = (Data[17] & 0x10) != 0;
    Header.TopDown = (Data[17] & 0x20) != 0;
    if (!IsKnownKind(Header, Data[1], Data[7], uBits) || Header.Width == 0 || Header.Height == 0)
    {
        strFault = "damaged TGA file, or a kind of TGA that is not supported";
        return false;
    }
    if (!CheckImageSize(Header.Width, Header.Height, strFault))
    {
        return false;
    }
    Header.MapPosition = HEADER_BYTES + Data[0];
    Header.PixelPosition =
        Header.MapPosition + (Header.HasMap ? size_t{Header.MapLength} * Header.MapEntryBytes : 0);
    if (Header.PixelPosition > Data.size() ||
        !HasEnoughPixels(Data.size() - Header.PixelPosition, Header))
    {
        strFault = "damaged TGA file: the file ends too early";
        return false;
    }
    return true;
}

// Unpacks runs, which may cross rows. False when the packets end early or go on beyond the picture.
bool UnpackRuns(std::span<const uint8_t> Packets, std::span<uint8_t> Pixels, size_t nPixelBytes)
{
    size_t nIn = 0;
    size_t nOut = 0;
    while (nOut < Pixels.size())
    {
        if (nIn >= Packets.size())
        {
            return false;
        }
        const uint8_t uPacket = Packets[nIn++];
        const bool bRun = (uPacket & 0x80) != 0;
        const size_t nBytes = ((uPacket & 0x7F) + size_t{1}) * nPixelBytes;
        const size_t nStored = bRun ? nPixelBytes : nBytes;
        if (nBytes > Pixels.size() - nOut || nStored > Packets.size() - nIn)
        {
            return false;
        }
        for (size_t nDone = 0; nDone < nBytes; nDone += nStored)
        {
            std::memcpy(&Pixels[nOut + nDone], &Packets[nIn], nStored);
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

void ReadRow(const uint8_t* pSource, const STgaHeader& Header, uint8_t* pDest)
{
    if (Header.PixelBytes != 2)
    {
        CopySwapped(pSource, pDest, Header.Width, Header.PixelBytes);
        return;
    }
    for (uint32_t i = 0; i < Header.Width; ++i)
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
void RepairAlpha(const STgaHeader& Header, CImage& Image)
{
    if (Header.AlphaBits != 0 || Image.GetFormat() != EImageFormat::Rgba32)
    {
        return;
    }
    uint8_t* pData = Image.GetRawData();
    const size_t nBytes = Image.GetByteCount();
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
std::unique_ptr<CPalette> ReadPalette(std::span<const uint8_t> Data, const STgaHeader& Header)
{
    uint8_t Colors[CPalette::MAX_ENTRIES * 3] = {};
    const uint32_t uEnd = std::min(Header.MapFirst + Header.MapLength, CPalette::MAX_ENTRIES);
    for (uint32_t uEntry = Header.MapFirst; uEntry < uEnd; ++uEntry)
    {
        const size_t nOffset = size_t{uEntry - Header.MapFirst} * Header.MapEntryBytes;
        ReadColor(
            &Data[Header.MapPosition + nOffset], Header.MapEntryBytes, Colors + size_t{uEntry} * 3);
    }
    return CPalette::Create(Colors, uEnd);
}

EImageFormat GetFormat(const STgaHeader& Header)
{
    switch (Header.PixelBytes)
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

bool DecodeTga(std::span<const uint8_t> Data, SPicture& Picture, std::string& strFault)
{
    STgaHeader Header;
    if (!ReadHeader(Data, Header, strFault) ||
        !MakeImage(Picture, Header.Width, Header.Height, GetFormat(Header), strFault))
    {
        return false;
    }
    std::span<const uint8_t> Pixels = Data.subspan(Header.PixelPosition);
    std::unique_ptr<uint8_t[]> pUnpacked;
    if (Header.HasRuns)
    {
        const size_t nBytes = size_t{Header.Width} * Header.Height * Header.PixelBytes;
        pUnpacked.reset(new (std::nothrow) uint8_t[nBytes]);
        if (!pUnpacked || !UnpackRuns(Pixels, {pUnpacked.get(), nBytes}, Header.PixelBytes))
        {
            strFault = pUnpacked ? "damaged TGA file: the runs do not fit the picture"
                                 : "not enough memory";
            return false;
        }
        Pixels = {pUnpacked.get(), nBytes};
    }
    CImage& Image = *Picture.Image;
    for (uint32_t uFileRow = 0; uFileRow < Header.Height; ++uFileRow)
    {
        const uint32_t uRow = Header.TopDown ? uFileRow : Header.Height - 1 - uFileRow;
        ReadRow(&Pixels[size_t{uFileRow} * Header.Width * Header.PixelBytes],
                Header,
                Image.GetRow(uRow));
        if (Header.RightToLeft)
        {
            MirrorRow(Image.GetRow(uRow), Header.Width, Image.GetBitsPerPixel() / 8);
        }
    }
    RepairAlpha(Header, Image);
    if (Header.Kind == KIND_INDEXED)
    {
        Picture.Palette = ReadPalette(Data, Header);
    }
    return true;
}
