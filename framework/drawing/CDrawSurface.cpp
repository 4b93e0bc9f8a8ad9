#include "framework/drawing/CDrawSurface.h"

#include "framework/drawing/CBitmap.h"
#include "framework/drawing/PixelFormat.h"

#include <utility>

CDrawSurface::CDrawSurface(CPixelBuffer& buffer, double fScale)
    : m_Buffer(&buffer)
    , m_Bits(buffer.GetBitsPerPixel())
    , m_Scale(fScale)
{
}

CDrawSurface::CDrawSurface(int nBitsPerPixel, double fScale)
    : m_Buffer(nullptr)
    , m_Bits(nBitsPerPixel)
    , m_Scale(fScale)
{
}

CBitmap* CDrawSurface::SelectBitmap(CBitmap* pBitmap)
{
    return m_Buffer == nullptr ? std::exchange(m_Bitmap, pBitmap) : nullptr;
}

CPixelBuffer* CDrawSurface::GetTarget()
{
    CPixelBuffer* pPixels = m_Bitmap != nullptr ? &m_Bitmap->GetPixels() : m_Buffer;
    return pPixels != nullptr && !pPixels->IsEmpty() ? pPixels : nullptr;
}

const CPixelBuffer* CDrawSurface::GetTarget() const
{
    const CPixelBuffer* pPixels = m_Bitmap != nullptr ? &m_Bitmap->GetPixels() : m_Buffer;
    return pPixels != nullptr && !pPixels->IsEmpty() ? pPixels : nullptr;
}

int CDrawSurface::GetBitsPerPixel() const
{
    const CPixelBuffer* pTarget = GetTarget();
    return pTarget != nullptr ? pTarget->GetBitsPerPixel() : m_Bits;
}

std::optional<SRect> CDrawSurface::SetClip(std::optional<SRect> clip)
{
    return std::exchange(m_Clip, clip);
}

SRect CDrawSurface::GetClipBox() const
{
    const CPixelBuffer* pTarget = GetTarget();
    if (pTarget == nullptr)
    {
        return {};
    }
    const SRect bounds = pTarget->GetBounds();
    const SRect box = m_Clip.has_value() ? bounds.Intersect(*m_Clip) : bounds;
    return box.IsEmpty() ? SRect() : box;
}

ColorRef CDrawSurface::GetPixel(int x, int y) const
{
    const CPixelBuffer* pTarget = GetTarget();
    return pTarget != nullptr ? pTarget->GetPixel(x, y) : 0;
}

void CDrawSurface::SetPixel(int x, int y, ColorRef uColor)
{
    if (GetClipBox().Contains({x, y}))
    {
        GetTarget()->SetPixel(x, y, uColor);
    }
}

void CDrawSurface::FillRect(const SRect& rect, ColorRef uColor)
{
    const SRect box = rect.Intersect(GetClipBox());
    if (box.IsEmpty())
    {
        return;
    }
    CPixelBuffer& target = *GetTarget();
    const int nBits = target.GetBitsPerPixel();
    const uint32_t uPixel = EncodePixel(uColor, nBits);
    for (int y = box.top; y < box.bottom; ++y)
    {
        FillPixels(target.GetRow(y), box.left, box.right, uPixel, nBits);
    }
}
