#include "engine/imaging/DdsHeader.h"
#include "engine/imaging/ImageCodecs.h"
#include "engine/imaging/PixelOrder.h"

#include <squish.h>

#include <cstring>

namespace
{

constexpr uint32_t HEADER_BYTES = 124;
constexpr uint32_t PIXEL_FORMAT_BYTES = 32;

EImageFormat GetFormat(const SDdsHeader& Header)
{
    if (Header.Pixels != EDdsPixels::Plain)
    {
        return EImageFormat::Rgba32;
    }
    if (Header.PixelBytes == 1)
    {
        return EImageFormat::Indexed8;
    }
    return Header.PixelBytes == 4 && Header.HasAlpha ? EImageFormat::Rgba32 : EImageFormat::Rgb24;
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

void CopyPlainPixels(const uint8_t* pSource, const SDdsHeader& Header, CImage& Image)
{
    const size_t nPixels = size_t{Header.Width} * Header.Height;
    const uint32_t uImageBytes = Image.GetBitsPerPixel() / 8;
    uint8_t* pDest = Image.GetRawData();
    if (uImageBytes == Header.PixelBytes && Header.RedFirst)
    {
        std::memcpy(pDest, pSource, nPixels * uImageBytes);
        return;
    }
    if (uImageBytes == Header.PixelBytes)
    {
        CopySwapped(pSource, pDest, nPixels, uImageBytes);
        return;
    }
    // Four bytes of which the last means nothing.
    const size_t nRed = Header.RedFirst ? 0 : 2;
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

bool DecodeDds(std::span<const uint8_t> Data, SPicture& Picture, std::string& strFault)
{
    SDdsHeader Header;
    if (!ReadDdsHeader(Data, Header, strFault) ||
        !MakeImage(Picture, Header.Width, Header.Height, GetFormat(Header), strFault))
    {
        return false;
    }
    const uint8_t* pSource = Data.data() + Header.PixelPosition;
    if (Header.Pixels == EDdsPixels::Plain)
    {
        CopyPlainPixels(pSource, Header, *Picture.Image);
    }
    else
    {
        squish::DecompressImage(Picture.Image->GetRawData(),
                                static_cast<int>(Header.Width),
                                static_cast<int>(Header.Height),
                                pSource,
                                GetSquishKind(Header.Pixels));
    }
    return true;
}

void EncodeDds(const IImage& Image, std::vector<uint8_t>& Out)
{
    constexpr uint32_t uHeaderFlags = 0x100F; // sizes, pitch and pixel format are given
    constexpr uint32_t uTexture = 0x1000;
    const uint32_t uPixelBytes = Image.GetBitsPerPixel() / 8;
    const size_t nPixels = size_t{Image.GetWidth()} * Image.GetHeight();
    const SWrittenFormat Format = GetWrittenFormat(Image.GetFormat());

    constexpr char Magic[] = {'D', 'D', 'S', ' '};
    Out.insert(Out.end(), Magic, Magic + sizeof(Magic));
    const size_t nHeaderStart = Out.size();
    AppendLe32(Out, HEADER_BYTES);
    AppendLe32(Out, uHeaderFlags);
    AppendLe32(Out, Image.GetHeight());
    AppendLe32(Out, Image.GetWidth());
    AppendLe32(Out, Image.GetWidth() * uPixelBytes);
    Out.resize(nHeaderStart + 72); // no depth, no smaller copies, reserved words
    AppendLe32(Out, PIXEL_FORMAT_BYTES);
    AppendLe32(Out, Format.Flags);
    AppendLe32(Out, 0);
    AppendLe32(Out, uPixelBytes * 8);
    AppendLe32(Out, Format.Red);
    AppendLe32(Out, Format.Green);
    AppendLe32(Out, Format.Blue);
    AppendLe32(Out, Format.Alpha);
    AppendLe32(Out, uTexture);
    Out.resize(nHeaderStart + HEADER_BYTES);

    const size_t nStart = Out.size();
    Out.resize(nStart + nPixels * uPixelBytes);
    CopySwapped(Image.GetRawData(), Out.data() + nStart, nPixels, uPixelBytes);
}
