#include "engine/imaging/BmpCodec.h"
#include "engine/imaging/BmpHeader.h"
#include "engine/imaging/CBmpRunReader.h"
#include "engine/imaging/PixelOrder.h"

// BMP is read here and not by a toolkit: those show half a picture for half a file, write no
// transparency, and leave the pixels that a run-length file skips as the memory was.
namespace
{

EImageFormat GetFormat(const SBmpHeader& header)
{
    if (header.uBitsPerPixel <= 8)
    {
        return EImageFormat::Indexed8;
    }
    return header.HasAlpha() ? EImageFormat::Rgba32 : EImageFormat::Rgb24;
}

void UnpackMasked(const uint8_t* pSource, uint8_t* pDest, const SBmpHeader& header)
{
    const bool b16 = header.uBitsPerPixel == 16;
    const uint32_t uChannels = header.HasAlpha() ? 4 : 3;
    for (uint32_t i = 0; i < header.uWidth; ++i, pDest += uChannels)
    {
        const uint32_t uPixel =
            b16 ? ReadLe16(pSource + size_t{i} * 2) : ReadLe32(pSource + size_t{i} * 4);
        for (uint32_t k = 0; k < uChannels; ++k)
        {
            pDest[k] = header.channels[k].Extract(uPixel);
        }
    }
}

void ReadRows(std::span<const uint8_t> data, const SBmpHeader& header, CImage& image)
{
    for (uint32_t uFileRow = 0; uFileRow < header.uHeight; ++uFileRow)
    {
        const uint8_t* pSource =
            data.data() + header.nPixelPosition + header.GetRowBytes() * uFileRow;
        uint8_t* pDest = image.GetRow(header.GetImageRow(uFileRow));
        if (header.uBitsPerPixel <= 8)
        {
            UnpackIndices(pSource, pDest, header.uWidth, header.uBitsPerPixel);
        }
        else if (header.HasWholeBytes())
        {
            CopySwapped(pSource, pDest, header.uWidth, header.uBitsPerPixel / 8);
        }
        else
        {
            UnpackMasked(pSource, pDest, header);
        }
    }
}

std::unique_ptr<CPalette> ReadPalette(std::span<const uint8_t> data, const SBmpHeader& header)
{
    uint8_t colors[CPalette::MAX_ENTRIES * 3] = {};
    for (uint32_t uEntry = 0; uEntry < header.uColors; ++uEntry)
    {
        CopySwapped(data.data() + header.nPalettePosition + size_t{uEntry} * header.uColorBytes,
                    colors + size_t{uEntry} * 3,
                    1,
                    3);
    }
    return CPalette::Create(colors, header.uColors);
}

} // namespace

// "BM" may also begin a TGA: an identification of 66 bytes and colour map type 77. That type does
// not exist, so it is a BMP.
bool IsBmp(std::span<const uint8_t> data)
{
    return StartsWith(data, "BM");
}

bool MayBmpHavePalette(std::span<const uint8_t> /*data*/)
{
    return true;
}

SImageSize PeekBmpSize(std::span<const uint8_t> data)
{
    constexpr size_t HEADER_LENGTH_AT = 14;
    constexpr size_t SIZE_AT = 18;
    constexpr uint32_t OLD_HEADER = 12; // with sizes of 16 bits
    if (data.size() < SIZE_AT + 8)
    {
        return {};
    }
    if (ReadLe32(&data[HEADER_LENGTH_AT]) == OLD_HEADER)
    {
        return {ReadLe16(&data[SIZE_AT]), ReadLe16(&data[SIZE_AT + 2])};
    }
    const uint32_t uHeight = ReadLe32(&data[SIZE_AT + 4]);
    const bool bTopDown = (uHeight & 0x80000000U) != 0; // a negative number of rows
    return {ReadLe32(&data[SIZE_AT]), bTopDown ? 0U - uHeight : uHeight};
}

bool DecodeBmp(std::span<const uint8_t> data, SPicture& picture, std::string& strFault)
{
    SBmpHeader header;
    if (!ReadBmpHeader(data, header, strFault) ||
        !MakeImage(picture, header.uWidth, header.uHeight, GetFormat(header), strFault))
    {
        return false;
    }
    if (header.uCompression != BMP_RUNS_8 && header.uCompression != BMP_RUNS_4)
    {
        ReadRows(data, header, *picture.pImage);
    }
    else if (!CBmpRunReader(data, header, *picture.pImage).Read())
    {
        strFault = "damaged BMP file: the runs do not fit the picture";
        return false;
    }
    if (header.uBitsPerPixel <= 8)
    {
        picture.pPalette = ReadPalette(data, header);
    }
    return true;
}
