#include "framework/drawing/CImageList.h"

#include "framework/drawing/CDrawContext.h"

#include <algorithm>
#include <utility>

bool CImageList::Create(int cx, int cy, int nInitial, int nGrow)
{
    constexpr int RESERVE_LIMIT = 4096; // images; a hint needs no more
    if (cx <= 0 || cy <= 0 || cx > CPixelBuffer::MAX_SIDE || cy > CPixelBuffer::MAX_SIDE ||
        nInitial < 0 || nGrow < 0)
    {
        return false;
    }
    m_Size = {cx, cy};
    m_Grow = static_cast<size_t>(std::min(nGrow, RESERVE_LIMIT));
    m_Images.clear();
    m_Images.reserve(static_cast<size_t>(std::min(nInitial, RESERVE_LIMIT)));
    return true;
}

int CImageList::Add(const CBitmap& bitmap, ColorRef uTransparent)
{
    if (m_Size.cx == 0 || bitmap.GetWidth() < m_Size.cx || bitmap.GetHeight() < m_Size.cy)
    {
        return -1;
    }
    const size_t nBefore = m_Images.size();
    const int nNew = bitmap.GetWidth() / m_Size.cx;
    const size_t nWanted = nBefore + static_cast<size_t>(nNew);
    if (nWanted > m_Images.capacity())
    {
        m_Images.reserve(std::max(nWanted, m_Images.capacity() + m_Grow));
    }
    for (int i = 0; i < nNew; ++i)
    {
        CBitmap image;
        if (!CutImage(bitmap, i * m_Size.cx, uTransparent, image))
        {
            m_Images.resize(nBefore);
            return -1;
        }
        m_Images.push_back(std::move(image));
    }
    return static_cast<int>(nBefore);
}

bool CImageList::CutImage(const CBitmap& bitmap,
                          int iLeft,
                          ColorRef uTransparent,
                          CBitmap& image) const
{
    CPixelBuffer pixels;
    if (!pixels.Create(m_Size.cx, m_Size.cy, 32))
    {
        return false;
    }
    // As the bitmap's depth shows it; an exact key would never match at 16 bits.
    CPixelBuffer key;
    if (!key.Create(1, 1, bitmap.GetBitsPerPixel()))
    {
        return false;
    }
    key.SetPixel(0, 0, uTransparent);
    for (int y = 0; y < m_Size.cy; ++y)
    {
        const uint8_t* pSource = bitmap.GetPixels().GetRow(y);
        uint8_t* pTarget = pixels.GetRow(y);
        for (int x = 0; x < m_Size.cx; ++x)
        {
            const ColorRef uColor = bitmap.GetPixels().GetPixel(iLeft + x, y);
            const bool bKey = uColor == key.GetPixel(0, 0);
            const uint8_t uOpacity = bitmap.HasAlpha() ? pSource[(iLeft + x) * 4 + 3] : 255;
            // SetPixel makes the pixel opaque, so its opacity comes after it.
            pixels.SetPixel(x, y, bKey ? 0 : uColor);
            pTarget[x * 4 + 3] = bKey ? 0 : uOpacity;
        }
    }
    return image.SetAlphaPixels(std::move(pixels));
}

bool CImageList::Draw(CDrawContext& context, int iImage, SPoint at) const
{
    if (iImage < 0 || iImage >= GetImageCount())
    {
        return false;
    }
    context.DrawBitmap(at, m_Images[static_cast<size_t>(iImage)]);
    return true;
}

bool CImageList::GetImage(int iImage, CPixelBuffer& pixels) const
{
    return iImage >= 0 && iImage < GetImageCount() &&
           pixels.CopyFrom(m_Images[static_cast<size_t>(iImage)].GetPixels());
}
