#include "engine/imaging/CImage.h"
#include "host/Image.h"

#include <cstring>

namespace
{

// Luminance of the television standard, rounded; a grey stays what it is.
uint8_t GetLuminance(const uint8_t* pColor)
{
    return static_cast<uint8_t>((299 * pColor[0] + 587 * pColor[1] + 114 * pColor[2] + 500) / 1000);
}

// Formats of different sizes: TFrom and TTo are bytes a pixel.
template <size_t TFrom, size_t TTo>
void ConvertPixels(const uint8_t* pSource, uint8_t* pDest, size_t nPixels)
{
    // Grey repeats its byte. Alpha that is missing counts as opaque, and alpha without a place is
    // lost.
    for (size_t i = 0; i < nPixels; ++i, pSource += TFrom, pDest += TTo)
    {
        if constexpr (TTo == 1)
        {
            pDest[0] = GetLuminance(pSource);
        }
        else
        {
            pDest[0] = pSource[0];
            pDest[1] = pSource[TFrom == 1 ? 0 : 1];
            pDest[2] = pSource[TFrom == 1 ? 0 : 2];
        }
        if constexpr (TTo == 4)
        {
            pDest[3] = 0xFF;
        }
    }
}

using FConvert = void (*)(const uint8_t* pSource, uint8_t* pDest, size_t nPixels);

FConvert GetConverter(uint32_t uFrom, uint32_t uTo)
{
    if (uFrom == 1)
    {
        return uTo == 3 ? ConvertPixels<1, 3> : ConvertPixels<1, 4>;
    }
    if (uFrom == 3)
    {
        return uTo == 1 ? ConvertPixels<3, 1> : ConvertPixels<3, 4>;
    }
    return uTo == 1 ? ConvertPixels<4, 1> : ConvertPixels<4, 3>;
}

EImageFormat GetFormatOfBits(uint32_t uBitsPerPixel)
{
    switch (uBitsPerPixel)
    {
    case 8:
        return EImageFormat::Indexed8;
    case 24:
        return EImageFormat::Rgb24;
    case 32:
        return EImageFormat::Rgba32;
    default:
        return EImageFormat::Unknown;
    }
}

} // namespace

IImage* IL_CreateImageFromImage(const IImage* pImage, EImageFormat eFormat)
{
    if (pImage == nullptr || pImage->GetRawData() == nullptr)
    {
        return nullptr;
    }
    const EImageFormat eTarget = eFormat == EImageFormat::Unknown ? pImage->GetFormat() : eFormat;
    std::unique_ptr<CImage> pCopy =
        CImage::Create(pImage->GetWidth(), pImage->GetHeight(), eTarget);
    const uint32_t uFrom = CImage::GetBytesPerPixel(pImage->GetFormat());
    if (!pCopy || uFrom == 0)
    {
        return nullptr;
    }
    const uint32_t uTo = CImage::GetBytesPerPixel(eTarget);
    if (uFrom == uTo)
    {
        std::memcpy(pCopy->GetRawData(), pImage->GetRawData(), pCopy->GetByteCount());
    }
    else
    {
        const size_t nPixels = size_t{pImage->GetWidth()} * pImage->GetHeight();
        GetConverter(uFrom, uTo)(pImage->GetRawData(), pCopy->GetRawData(), nPixels);
    }
    return pCopy.release();
}

IImage* IL_CreateImageFromBufferFormat(uint32_t uWidth,
                                       uint32_t uHeight,
                                       EImageFormat eFormat,
                                       const uint8_t* pBuffer)
{
    std::unique_ptr<CImage> pImage = CImage::Create(uWidth, uHeight, eFormat);
    if (pImage && pBuffer != nullptr)
    {
        std::memcpy(pImage->GetRawData(), pBuffer, pImage->GetByteCount());
    }
    else if (pImage)
    {
        std::memset(pImage->GetRawData(), 0, pImage->GetByteCount());
    }
    return pImage.release();
}

IImage* IL_CreateImageFromBufferBPP(uint32_t uWidth,
                                    uint32_t uHeight,
                                    uint32_t uBitsPerPixel,
                                    const uint8_t* pBuffer)
{
    return IL_CreateImageFromBufferFormat(uWidth, uHeight, GetFormatOfBits(uBitsPerPixel), pBuffer);
}
