#include "engine/imaging/DdsCodec.h"

#include "engine/imaging/DdsHeader.h"
#include "engine/imaging/PixelOrder.h"

#include <squish.h>

#include <cstring>

namespace
{

constexpr uint32_t HEADER_BYTES = 124;
constexpr uint32_t PIXEL_FORMAT_BYTES = 32;

EImageFormat GetFormat(const SDdsHeader& header)
{
    // Every packed kind may have transparent pixels, the first one too.
    if (header.ePixels != EDdsPixels::Plain)
    {
        return EImageFormat::Rgba32;
    }
    if (header.uPixelBytes == 1)
    {
        return EImageFormat::Indexed8;
    }
    return header.uPixelBytes == 4 && header.bHasAlpha ? EImageFormat::Rgba32 : EImageFormat::Rgb24;
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
    const size_t nPixels = size_t{header.uWidth} * header.uHeight;
    const uint32_t uImageBytes = image.GetBitsPerPixel() / 8;
    uint8_t* pDest = image.GetRawData();
    if (uImageBytes == header.uPixelBytes && header.bRedFirst)
    {
        std::memcpy(pDest, pSource, nPixels * uImageBytes);
        return;
    }
    if (uImageBytes == header.uPixelBytes)
    {
        CopySwapped(pSource, pDest, nPixels, uImageBytes);
        return;
    }
    // Four bytes of which the last means nothing.
    const size_t nRed = header.bRedFirst ? 0 : 2;
    for (size_t i = 0; i < nPixels; ++i, pSource += 4, pDest += 3)
    {
        pDest[0] = pSource[nRed];
        pDest[1] = pSource[1];
        pDest[2] = pSource[2 - nRed];
    }
}

struct SWrittenFormat
{
    uint32_t uFlags;
    uint32_t uRed;
    uint32_t uGreen;
    uint32_t uBlue;
    uint32_t uAlpha;
};

// Flags of the pixel format: 0x40 means colours, 0x1 alpha besides, 0x20000 grey.
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

bool IsDds(std::span<const uint8_t> data)
{
    return StartsWith(data, "DDS ");
}

SImageSize PeekDdsSize(std::span<const uint8_t> data)
{
    constexpr size_t HEIGHT_AT = 12;
    constexpr size_t WIDTH_AT = 16;
    return data.size() < WIDTH_AT + 4
               ? SImageSize()
               : SImageSize{ReadLe32(&data[WIDTH_AT]), ReadLe32(&data[HEIGHT_AT])};
}

bool DecodeDds(std::span<const uint8_t> data, SPicture& picture, std::string& strFault)
{
    SDdsHeader header;
    if (!ReadDdsHeader(data, header, strFault) ||
        !MakeImage(picture, header.uWidth, header.uHeight, GetFormat(header), strFault))
    {
        return false;
    }
    const uint8_t* pSource = data.data() + header.nPixelPosition;
    if (header.ePixels == EDdsPixels::Plain)
    {
        CopyPlainPixels(pSource, header, *picture.pImage);
    }
    else
    {
        // The library counts no bytes; ReadDdsHeader has made sure that there are enough.
        squish::DecompressImage(picture.pImage->GetRawData(),
                                static_cast<int>(header.uWidth),
                                static_cast<int>(header.uHeight),
                                pSource,
                                GetSquishKind(header.ePixels));
    }
    return true;
}

bool EncodeDds(const IImage& image,
               const IPalette* /*pPalette*/,
               std::vector<uint8_t>& out,
               std::string& /*strFault*/)
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
    AppendLe32(out, format.uFlags);
    AppendLe32(out, 0);
    AppendLe32(out, uPixelBytes * 8);
    AppendLe32(out, format.uRed);
    AppendLe32(out, format.uGreen);
    AppendLe32(out, format.uBlue);
    AppendLe32(out, format.uAlpha);
    AppendLe32(out, TEXTURE);
    out.resize(nHeaderStart + HEADER_BYTES);

    // Pixels are written as they are, never packed, with blue before red.
    const size_t nStart = out.size();
    out.resize(nStart + nPixels * uPixelBytes);
    CopySwapped(image.GetRawData(), out.data() + nStart, nPixels, uPixelBytes);
    return true;
}
