#include "engine/imaging/DdsHeader.h"
#include "engine/imaging/ImageCodecs.h"
#include "engine/imaging/PixelOrder.h"

#include <squish.h>

#include <cstring>

namespace
{

constexpr uint32_t HEADER_BYTES = 124;
constexpr uint32_t PIXEL_FORMAT_BYTES = 32;

EImageFormat GetFormat(const SDdsHeader& header)
{
    if (header.Pixels != EDdsPixels::Plain)
    {
        return EImageFormat::Rgba32;
    }
    if (header.PixelBytes == 1)
    {
        return EImageFormat::Indexed8;
    }
    return header.PixelBytes == 4 && header.HasAlpha ? EImageFormat::Rgba32 : EImageFormat::Rgb24;
}

int GetSquishKind(EDdsPixels ePixels)
{
    switch (ePixels)
    {
    case EDdsPixels::Bc2:
        return squish::kDxt3;
    case EDdsPixels::Bc3:
        return squish::kDxt5;
    case EDdsPixels::Bc1:
    case EDdsPixels::Plain:
        break;
    }
    return squish::kDxt1;
}

void CopyPlainPixels(const uint8_t* pSource, const SDdsHeader& header, CImage& image)
{
    const size_t nPixels = size_t{header.Width} * header.Height;
    const uint32_t uImageBytes = image.GetBitsPerPixel() / 8;
    uint8_t* pDest = image.GetRawData();
    if (uImageBytes == header.PixelBytes && header.RedFirst)
    {
        std::memcpy(pDest, pSource, nPixels * uImageBytes);
        return;
    }
    if (uImageBytes == header.PixelBytes)
    {
        CopySwapped(pSource, pDest, nPixels, uImageBytes);
        return;
    }
    // Four bytes of which the last means nothing.
    const size_t nRed = header.RedFirst ? 0 : 2;
    for (size_t i = 0; i < nPixels; ++i, pSource += 4, pDest += 3)
    {
        pDest[0] = pSource[nRed];
        pDest[1] = pSource[1];
        pDest[2] = pSource[2 - nRed];
    }
}

struct SWrittenFormat
{
    uint32_t Flags;
    uint32_t Red;
    uint32_t Green;
    uint32_t Blue;
    uint32_t Alpha;
};

SWrittenFormat GetWrittenFormat(EImageFormat eFormat)
{
    switch (eFormat)
    {
    case EImageFormat::Rgb24:
        return {0x40, 0xFF0000, 0xFF00, 0xFF, 0};
    case EImageFormat::Rgba32:
        return {0x41, 0xFF0000, 0xFF00, 0xFF, 0xFF000000};
    case EImageFormat::Indexed8:
    case EImageFormat::Unknown:
        break;
    }
    return {0x20000, 0xFF, 0, 0, 0};
}

} // namespace

bool DecodeDds(std::span<const uint8_t> data, SPicture& picture, std::string& strFault)
{
    SDdsHeader header;
    if (!ReadDdsHeader(data, header, strFault) ||
        !MakeImage(picture, header.Width, header.Height, GetFormat(header), strFault))
    {
        return false;
    }
    const uint8_t* pSource = data.data() + header.PixelPosition;
    if (header.Pixels == EDdsPixels::Plain)
    {
        CopyPlainPixels(pSource, header, *picture.Image);
    }
    else
    {
        squish::DecompressImage(picture.Image->GetRawData(),
                                static_cast<int>(header.Width),
                                static_cast<int>(header.Height),
                                pSource,
                                GetSquishKind(header.Pixels));
    }
    return true;
}

void EncodeDds(const IImage& image, std::vector<uint8_t>& out)
{
    constexpr uint32_t HEADER_FLAGS = 0x100F; // sizes, pitch and pixel format are given
    constexpr uint32_t TEXTURE = 0x1000;
    const uint32_t uPixelBytes = image.GetBitsPerPixel() / 8;
    const size_t nPixels = size_t{image.GetWidth()} * image.GetHeight();
    const SWrittenFormat format = GetWrittenFormat(image.GetFormat());

    constexpr char MAGIC[] = {'D', 'D', 'S', ' '};
    out.insert(out.end(), MAGIC, MAGIC + sizeof(MAGIC));
    const size_t nHeaderStart = out.size();
    AppendLe32(out, HEADER_BYTES);
    AppendLe32(out, HEADER_FLAGS);
    AppendLe32(out, image.GetHeight());
    AppendLe32(out, image.GetWidth());
    AppendLe32(out, image.GetWidth() * uPixelBytes);
    out.resize(nHeaderStart + 72); // no depth, no smaller copies, reserved words
    AppendLe32(out, PIXEL_FORMAT_BYTES);
    AppendLe32(out, format.Flags);
    AppendLe32(out, 0);
    AppendLe32(out, uPixelBytes * 8);
    AppendLe32(out, format.Red);
    AppendLe32(out, format.Green);
    AppendLe32(out, format.Blue);
    AppendLe32(out, format.Alpha);
    AppendLe32(out, TEXTURE);
    out.resize(nHeaderStart + HEADER_BYTES);

    const size_t nStart = out.size();
    out.resize(nStart + nPixels * uPixelBytes);
    CopySwapped(image.GetRawData(), out.data() + nStart, nPixels, uPixelBytes);
}
