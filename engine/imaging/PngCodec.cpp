#include "engine/imaging/CPngReader.h"
#include "engine/imaging/ImageCodecs.h"
#include "engine/imaging/PngWriter.h"

namespace
{

// The header's chunk is always the first one.
constexpr size_t WIDTH_AT = 16;
constexpr size_t HEIGHT_AT = 20;
constexpr size_t SIZE_END = 24;

EImageFormat GetFormatOfChannels(uint32_t uChannels)
{
    switch (uChannels)
    {
    case 1:
        return EImageFormat::Indexed8;
    case 3:
        return EImageFormat::Rgb24;
    case 4:
        return EImageFormat::Rgba32;
    default:
        return EImageFormat::Unknown;
    }
}

int GetPngColorType(EImageFormat eFormat, bool bPalette)
{
    switch (eFormat)
    {
    case EImageFormat::Rgb24:
        return PNG_COLOR_TYPE_RGB;
    case EImageFormat::Rgba32:
        return PNG_COLOR_TYPE_RGBA;
    case EImageFormat::Indexed8:
    case EImageFormat::Unknown:
        break;
    }
    return bPalette ? PNG_COLOR_TYPE_PALETTE : PNG_COLOR_TYPE_GRAY;
}

} // namespace

bool DecodePng(std::span<const uint8_t> Data, SPicture& Picture, std::string& strFault)
{
    if (Data.size() >= SIZE_END && !CheckImageSize(png_get_uint_32(&Data[WIDTH_AT]),
                                                   png_get_uint_32(&Data[HEIGHT_AT]),
                                                   strFault))
    {
        return false;
    }
    CPngReader Reader(Data);
    if (!Reader.ReadHeader() || !Reader.Prepare(CPngReader::ESamples::Bytes))
    {
        strFault = Reader.GetFault();
        return false;
    }
    const EImageFormat eFormat = GetFormatOfChannels(Reader.GetChannels());
    if (!MakeImage(Picture, Reader.GetWidth(), Reader.GetHeight(), eFormat, strFault))
    {
        return false;
    }
    if (!Reader.ReadPixels(Picture.Image->GetRawData()))
    {
        strFault = Reader.GetFault();
        return false;
    }
    if (Reader.IsPaletted())
    {
        const std::span<const uint8_t> Colors = Reader.GetPaletteColors();
        Picture.Palette = CPalette::Create(Colors.data(), static_cast<uint32_t>(Colors.size() / 3));
    }
    return true;
}

bool EncodePng(const IImage& Image,
               const IPalette* pPalette,
               std::vector<uint8_t>& Out,
               std::string& strFault)
{
    std::vector<uint8_t> Colors;
    for (uint32_t uEntry = 0; pPalette != nullptr && uEntry < pPalette->GetCount(); ++uEntry)
    {
        const uint8_t* pEntry = pPalette->GetEntry(uEntry);
        Colors.insert(Colors.end(), pEntry, pEntry + 3);
    }
    SPngPixels Pixels;
    Pixels.Width = Image.GetWidth();
    Pixels.Height = Image.GetHeight();
    Pixels.ColorType = GetPngColorType(Image.GetFormat(), pPalette != nullptr);
    Pixels.RowBytes = size_t{Image.GetWidth()} * (Image.GetBitsPerPixel() / 8);
    Pixels.Rows = Image.GetRawData();
    Pixels.PaletteColors = Colors;
    return WritePng(Pixels, Out, strFault);
}
