#include "engine/imaging/BmpHeader.h"
#include "engine/imaging/CBmpRunReader.h"
#include "engine/imaging/ImageCodecs.h"
#include "engine/imaging/PixelOrder.h"

// BMP is read here and not by a toolkit: those show half a picture for half a file, write no
// transparency, and leave the pixels that a run-length file skips as the memory was.
namespace
{

EImageFormat GetFormat(const SBmpHeader& header)
{
    if (header.BitsPerPixel <= 8)
    {
        return EImageFormat::Indexed8;
    }
    return header.HasAlpha() ? EImageFormat::Rgba32 : EImageFormat::Rgb24;
}

void UnpackMasked(const uint8_t* pSource, uint8_t* pDest, const SBmpHeader& header)
{
    const bool b16 = header.BitsPerPixel == 16;
    const uint32_t uChannels = header.HasAlpha() ? 4 : 3;
    for (uint32_t i = 0; i < header.Width; ++i, pDest += uChannels)
    {
        const uint32_t uPixel =
            b16 ? ReadLe16(pSource + size_t{i} * 2) : ReadLe32(pSource + size_t{i} * 4);
        for (uint32_t k = 0; k < uChannels; ++k)
        {
            pDest[k] = header.Channels[k].Extract(uPixel);
        }
    }
}

void ReadRows(std::span<const uint8_t> data, const SBmpHeader& header, CImage& image)
{
    for (uint32_t uFileRow = 0; uFileRow < header.Height; ++uFileRow)
    {
        const uint8_t* pSource =
            data.data() + header.PixelPosition + header.GetRowBytes() * uFileRow;
        uint8_t* pDest = image.GetRow(header.GetImageRow(uFileRow));
        if (header.BitsPerPixel <= 8)
        {
            UnpackIndices(pSource, pDest, header.Width, header.BitsPerPixel);
        }
        else if (header.HasWholeBytes())
        {
            CopySwapped(pSource, pDest, header.Width, header.BitsPerPixel / 8);
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
    for (uint32_t uEntry = 0; uEntry < header.Colors; ++uEntry)
    {
        CopySwapped(data.data() + header.PalettePosition + size_t{uEntry} * header.ColorBytes,
                    colors + size_t{uEntry} * 3,
                    1,
                    3);
    }
    return CPalette::Create(colors, header.Colors);
}

} // namespace

bool DecodeBmp(std::span<const uint8_t> data, SPicture& picture, std::string& strFault)
{
    SBmpHeader header;
    if (!ReadBmpHeader(data, header, strFault) ||
        !MakeImage(picture, header.Width, header.Height, GetFormat(header), strFault))
    {
        return false;
    }
    if (header.Compression != BMP_RUNS_8 && header.Compression != BMP_RUNS_4)
    {
        ReadRows(data, header, *picture.Image);
    }
    else if (!CBmpRunReader(data, header, *picture.Image).Read())
    {
        strFault = "damaged BMP file: the runs do not fit the picture";
        return false;
    }
    if (header.BitsPerPixel <= 8)
    {
        picture.Palette = ReadPalette(data, header);
    }
    return true;
}
