#include "engine/imaging/CImage.h"

#include <new>

uint32_t CImage::GetBytesPerPixel(EImageFormat eFormat)
{
    switch (eFormat)
    {
    case EImageFormat::Rgb24:
        return 3;
    case EImageFormat::Rgba32:
        return 4;
    case EImageFormat::Indexed8:
        return 1;
    case EImageFormat::Unknown:
        break;
    }
    return 0;
}

std::unique_ptr<CImage> CImage::Create(uint32_t uWidth, uint32_t uHeight, EImageFormat eFormat)
{
    const size_t nPixelBytes = GetBytesPerPixel(eFormat);
    if (nPixelBytes == 0 || uWidth == 0 || uHeight == 0 || uWidth > MAX_SIDE || uHeight > MAX_SIDE)
    {
        return nullptr;
    }
    std::unique_ptr<CImage> pImage(new (std::nothrow) CImage);
    if (pImage)
    {
        pImage->m_Width = uWidth;
        pImage->m_Height = uHeight;
        pImage->m_Format = eFormat;
        pImage->m_Pixels.reset(new (std::nothrow) uint8_t[nPixelBytes * uWidth * uHeight]);
    }
    return pImage && pImage->m_Pixels ? std::move(pImage) : nullptr;
}
