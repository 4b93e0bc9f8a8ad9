#include "framework/drawing/CDrawContext.h"

#include "framework/drawing/CBitmap.h"
#include "framework/drawing/SystemColors.h"

#include <utility>

CDrawContext::CDrawContext(CPixelBuffer& buffer, double fScale)
    : m_Buffer(&buffer)
    , m_Bits(buffer.GetBitsPerPixel())
    , m_Scale(fScale)
{
}

CDrawContext::CDrawContext(int nBitsPerPixel, double fScale)
    : m_Buffer(nullptr)
    , m_Bits(nBitsPerPixel)
    , m_Scale(fScale)
{
}

CDrawContext::~CDrawContext() = default;

CDrawContext CDrawContext::CreateCompatible(const CDrawContext& context)
{
    return CDrawContext(context.GetBitsPerPixel(), context.m_Scale);
}

CBitmap* CDrawContext::SelectBitmap(CBitmap* pBitmap)
{
    return m_Buffer == nullptr ? std::exchange(m_Bitmap, pBitmap) : nullptr;
}

CPixelBuffer* CDrawContext::GetTarget()
{
    CPixelBuffer* pPixels = m_Bitmap != nullptr ? &m_Bitmap->GetPixels() : m_Buffer;
    return pPixels != nullptr && !pPixels->IsEmpty() ? pPixels : nullptr;
}

const CPixelBuffer* CDrawContext::GetTarget() const
{
    const CPixelBuffer* pPixels = m_Bitmap != nullptr ? &m_Bitmap->GetPixels() : m_Buffer;
    return pPixels != nullptr && !pPixels->IsEmpty() ? pPixels : nullptr;
}

int CDrawContext::GetBitsPerPixel() const
{
    const CPixelBuffer* pTarget = GetTarget();
    return pTarget != nullptr ? pTarget->GetBitsPerPixel() : m_Bits;
}

SRect CDrawContext::GetClipBox() const
{
    const CPixelBuffer* pTarget = GetTarget();
    if (pTarget == nullptr)
    {
        return {};
    }
    const SRect bounds = pTarget->GetBounds();
    const SRect box = m_State.clip.has_value() ? bounds.Intersect(*m_State.clip) : bounds;
    return box.IsEmpty() ? SRect() : box;
}

int CDrawContext::GetLineWidth() const
{
    return GetBorderWidth(m_Scale);
}

int CDrawContext::SaveState()
{
    m_Saved.push_back(m_State);
    return static_cast<int>(m_Saved.size());
}

bool CDrawContext::RestoreState(int iState)
{
    const int nSaved = static_cast<int>(m_Saved.size());
    const int iKept = iState == -1 ? nSaved : iState;
    if (iKept < 1 || iKept > nSaved)
    {
        return false;
    }
    const auto nKept = static_cast<size_t>(iKept) - 1;
    m_State = m_Saved[nKept];
    m_Saved.resize(nKept);
    return true;
}

ColorRef CDrawContext::SetTextColor(ColorRef uColor)
{
    return std::exchange(m_State.uText, uColor);
}

ColorRef CDrawContext::SetBackColor(ColorRef uColor)
{
    return std::exchange(m_State.uBack, uColor);
}

SPen CDrawContext::SetPen(const SPen& pen)
{
    return std::exchange(m_State.pen, pen);
}

std::optional<ColorRef> CDrawContext::SetBrush(std::optional<ColorRef> brush)
{
    return std::exchange(m_State.brush, brush);
}

std::optional<SRect> CDrawContext::SetClip(std::optional<SRect> clip)
{
    return std::exchange(m_State.clip, clip);
}

ColorRef CDrawContext::GetPixel(int x, int y) const
{
    const CPixelBuffer* pTarget = GetTarget();
    return pTarget != nullptr ? pTarget->GetPixel(x, y) : 0;
}

void CDrawContext::SetPixel(int x, int y, ColorRef uColor)
{
    if (GetClipBox().Contains({x, y}))
    {
        GetTarget()->SetPixel(x, y, uColor);
    }
}
