#include "engine/imaging/BmpHeader.h"
#include "engine/imaging/CBmpRunReader.h"
#include "engine/imaging/ImageCodecs.h"
#include "engine/imaging/PixelOrder.h"

// BMP is read here and not by a toolkit: those show half a picture for half a file, write no
// transparency, and leave the pixels that a run-length file skips as the memory was.
namespace
{

EImageFormat GetFormat(const SBmpHeader& Header)
{
    if (Header.BitsPerPixel <= 8)
    {
        return EImageFormat::Indexed8;
    }
    return Header.HasAlpha() ? EImageFormat::Rgba32 : EImageFormat::Rgb24;
}

void UnpackMasked(const uint8_t* pSource, uint8_t* pDest, const SBmpHeader& Header)
{
    const bool b16 = Header.BitsPerPixel == 16;
    const uint32_t uChannels = Header.HasAlpha() ? 4 : 3;
    for (uint32_t i = 0; i < Header.Width; ++i, pDest += uChannels)
    {
        const uint32_t uPixel =
            b16 ? ReadLe16(pSource + size_t{i} * 2) : ReadLe32(pSource + size_t{i} * 4);
        for (uint32_t k = 0; k < uChannels; ++k)
        {
            pDest[k] = Header.Channels[k].Extract(uPixel);
        }
    }
}

void ReadRows(std::span<const uint8_t> Data, const SBmpHeader& Header, CImage& Image)
{
    for (uint32_t uFileRow = 0; uFileRow < Header.Height; ++uFileRow)
    {
        const uint8_t* pSource =
            Data.data() + Header.PixelPosition + Header.GetRowBytes() * uFileRow;
        uint8_t* pDest = Image.GetRow(Header.GetImageRow(uFileRow));
        if (Header.BitsPerPixel <= 8)
        {
            UnpackIndices(pSource, pDest, Header.Width, Header.BitsPerPixel);
        }
        else if (Header.HasWholeBytes())
        {
            CopySwapped(pSource, pDest, Header.Width, Header.BitsPerPixel / 8);
        }
        else
        {
            UnpackMasked(pSource, pDest, Header);
        }
    }
}

std::unique_ptr<CPalette> ReadPalette(std::span<const uint8_t> Data, const SBmpHeader& Header)
{
    uint8_t Colors[CPalette::MAX_ENTRIES * 3] = {};
    for (uint32_t uEntry = 0; uEntry < Header.Colors; ++uEntry)
    {
        CopySwapped(Data.data() + Header.PalettePosition + size_t{uEntry} * Header.ColorBytes,
                    Colors + size_t{uEntry} * 3,
                    1,
                    3);
    }
    return CPalette::Create(Colors, Header.Colors);
}

} // namespace

bool DecodeBmp(std::span<const uint8_t> Data, SPicture& Picture, std::string& strFault)
{
    SBmpHeader Header;
    if (!ReadBmpHeader(Data, Header, strFault) ||
        !MakeImage(Picture, Header.Width, Header.Height, GetFormat(Header), strFault))
    {
        return false;
    }
    if (Header.Compression != BMP_RUNS_8 && Header.Compression != BMP_RUNS_4)
    {
        ReadRows(Data, Header, *Picture.Image);
    }
    else if (!CBmpRunReader(Data, Header, *Picture.Image).Read())
    {
        strFault = "damaged BMP file: the runs do not fit the picture";
        return false;
    }
    if (Header.BitsPerPixel <= 8)
    {
        Picture.Palette = ReadPalette(Data, Header);
    }
    return true;
}
