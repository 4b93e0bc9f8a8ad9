#include "engine/imaging/PngCodec.h"

#include "engine/imaging/CPngReader.h"
#include "engine/imaging/PngWriter.h"

namespace
{

// The header's chunk is always the first one.
constexpr size_t WIDTH_AT = 16;
constexpr size_t HEIGHT_AT = 20;
constexpr size_t SIZE_END = 24;
constexpr size_t COLOR_TYPE_AT = 25;

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
    // Grey with alpha does not arrive here: the reader turns it into colours.
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

bool IsPng(std::span<const uint8_t> data)
{
    return StartsWith(data, "\x89PNG\r\n\x1a\n");
}

bool MayPngHavePalette(std::span<const uint8_t> data)
{
    return data.size() > COLOR_TYPE_AT && data[COLOR_TYPE_AT] == PNG_COLOR_TYPE_PALETTE;
}

SImageSize PeekPngSize(std::span<const uint8_t> data)
{
    return data.size() < SIZE_END
               ? SImageSize()
               : SImageSize{png_get_uint_32(&data[WIDTH_AT]), png_get_uint_32(&data[HEIGHT_AT])};
}

bool DecodePng(std::span<const uint8_t> data, SPicture& picture, std::string& strFault)
{
    // Refused with the limits that hold for all formats, before libpng does it in words of its own.
    const SImageSize size = PeekPngSize(data);
    if (data.size() >= SIZE_END && !CheckImageSize(size.uWidth, size.uHeight, strFault))
    {
        return false;
    }
    CPngReader reader(data);
    if (!reader.ReadHeader() || !reader.Prepare(CPngReader::ESamples::Bytes))
    {
        strFault = reader.GetFault();
        return false;
    }
    const EImageFormat eFormat = GetFormatOfChannels(reader.GetChannels());
    if (!MakeImage(picture, reader.GetWidth(), reader.GetHeight(), eFormat, strFault))
    {
        return false;
    }
    if (!reader.ReadPixels(picture.pImage->GetRawData()))
    {
        strFault = reader.GetFault();
        return false;
    }
    if (reader.IsPaletted())
    {
        const std::span<const uint8_t> colors = reader.GetPaletteColors();
        picture.pPalette =
            CPalette::Create(colors.data(), static_cast<uint32_t>(colors.size() / 3));
    }
    return true;
}

bool EncodePng(const IImage& image,
               const IPalette* pPalette,
               std::vector<uint8_t>& out,
               std::string& strFault)
{
    std::vector<uint8_t> colors;
    for (uint32_t uEntry = 0; pPalette != nullptr && uEntry < pPalette->GetCount(); ++uEntry)
    {
        const uint8_t* pEntry = pPalette->GetEntry(uEntry);
        colors.insert(colors.end(), pEntry, pEntry + 3);
    }
    SPngPixels pixels;
    pixels.uWidth = image.GetWidth();
    pixels.uHeight = image.GetHeight();
    pixels.iColorType = GetPngColorType(image.GetFormat(), pPalette != nullptr);
    pixels.nRowBytes = size_t{image.GetWidth()} * (image.GetBitsPerPixel() / 8);
    pixels.pRows = image.GetRawData();
    pixels.paletteColors = colors;
    return WritePng(pixels, out, strFault);
}
