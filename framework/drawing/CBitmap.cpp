#include "framework/drawing/CBitmap.h"

#include "framework/core/ResourceModule.h"
#include "framework/drawing/CDrawContext.h"
#include "framework/drawing/PictureDecoder.h"
#include "framework/drawing/PictureScaling.h"
#include "framework/drawing/PixelFormat.h"
#include "host/Log.h"

#include <cmath>
#include <utility>

namespace
{

const SBitmapResource* FindBitmap(uint32_t uId, const SResourceModule* pModule)
{
    if (pModule == nullptr)
    {
        return FindBitmapResource(uId);
    }
    for (const SBitmapResource& bitmap : pModule->bitmaps)
    {
        if (bitmap.uId == uId)
        {
            return &bitmap;
        }
    }
    return nullptr;
}

bool IsTransparent(const CPixelBuffer& pixels)
{
    for (int y = 0; y < pixels.GetHeight(); ++y)
    {
        const uint8_t* pRow = pixels.GetRow(y);
        for (int x = 0; x < pixels.GetWidth(); ++x)
        {
            if (pRow[x * 4 + 3] != 255)
            {
                return true;
            }
        }
    }
    return false;
}

// Scaled along one side; 0 when no picture may have that size, which a broken scale gives too.
int GetScaledSide(int iSide, double fScale)
{
    const double fScaled = std::round(iSide * fScale);
    return fScaled >= 1 && fScaled <= MAX_PICTURE_SIDE ? static_cast<int>(fScaled) : 0;
}

} // namespace

bool CBitmap::CreateBitmap(
    int iWidth, int iHeight, int nPlanes, int nBitsPerPixel, const void* pBits)
{
    CPixelBuffer pixels;
    if (nPlanes != 1 || !pixels.Create(iWidth, iHeight, nBitsPerPixel))
    {
        return false;
    }
    const auto* pSource = static_cast<const uint8_t*>(pBits);
    const size_t nRowBytes = static_cast<size_t>(iWidth) * static_cast<size_t>(nBitsPerPixel / 8);
    for (int y = 0; pSource != nullptr && y < iHeight; ++y, pSource += nRowBytes)
    {
        uint8_t* pRow = pixels.GetRow(y);
        std::memcpy(pRow, pSource, nRowBytes);
        for (size_t i = 3; nBitsPerPixel == 32 && i < nRowBytes; i += 4)
        {
            pRow[i] = 255;
        }
    }
    return SetPixels(std::move(pixels));
}

bool CBitmap::CreateCompatibleBitmap(const CDrawContext& context, int iWidth, int iHeight)
{
    return CreateBitmap(iWidth, iHeight, context.GetPlanes(), context.GetBitsPerPixel(), nullptr);
}

bool CBitmap::LoadBitmap(uint32_t uId, double fScale, const SResourceModule* pModule)
{
    const SBitmapResource* pResource = FindBitmap(uId, pModule);
    if (pResource == nullptr)
    {
        CrashLog("[CBitmap::LoadBitmap] bitmap %u not found\n", uId);
        return false;
    }
    const SPictureResource& picture = pResource->picture;
    // The size follows from the picture at 100 %, so that one is decoded even where the other is
    // drawn.
    const bool bDouble = fScale > 1 && picture.pPngDouble != nullptr;
    CPixelBuffer single;
    CPixelBuffer twice;
    if (!DecodePicture(picture.pPng, picture.nBytes, single) ||
        (bDouble && !DecodePicture(picture.pPngDouble, picture.nBytesDouble, twice)))
    {
        CrashLog("[CBitmap::LoadBitmap] bitmap %u is no PNG picture\n", uId);
        return false;
    }
    const int iWidth = GetScaledSide(single.GetWidth(), fScale);
    const int iHeight = GetScaledSide(single.GetHeight(), fScale);
    CPixelBuffer scaled;
    if (!ScalePicture(bDouble ? twice : single, iWidth, iHeight, scaled))
    {
        CrashLog("[CBitmap::LoadBitmap] bitmap %u cannot be scaled by %g\n", uId, fScale);
        return false;
    }
    // A picture without transparency is copied when it is drawn, which is faster than blending.
    return IsTransparent(scaled) ? SetAlphaPixels(std::move(scaled)) : SetPixels(std::move(scaled));
}

bool CBitmap::SetPixels(CPixelBuffer&& pixels)
{
    if (pixels.IsEmpty())
    {
        return false;
    }
    m_Pixels = std::move(pixels);
    m_Alpha = false;
    return true;
}

bool CBitmap::SetAlphaPixels(CPixelBuffer&& pixels)
{
    if (pixels.GetBitsPerPixel() != 32)
    {
        return false;
    }
    m_Pixels = std::move(pixels);
    m_Alpha = true;
    return true;
}

bool CBitmap::CopyFrom(const CBitmap& other)
{
    if (!m_Pixels.CopyFrom(other.m_Pixels))
    {
        return false;
    }
    m_Alpha = other.m_Alpha;
    return true;
}

void CBitmap::Delete()
{
    m_Pixels = CPixelBuffer();
    m_Alpha = false;
}
