#include "framework/drawing/CDrawContext.h"

#include "framework/drawing/CBitmap.h"
#include "framework/drawing/DrawLimits.h"
#include "framework/drawing/DrawShapes.h"
#include "framework/drawing/DrawText.h"
#include "framework/drawing/PixelCopies.h"

#include <utility>

CDrawContext::CDrawContext(CPixelBuffer& buffer, double fScale)
    : CDrawSurface(buffer, fScale)
{
}

CDrawContext::CDrawContext(int nBitsPerPixel, double fScale)
    : CDrawSurface(nBitsPerPixel, fScale)
{
}

CDrawContext::~CDrawContext() = default;

CDrawContext CDrawContext::CreateCompatible(const CDrawContext& context)
{
    return CDrawContext(context.GetBitsPerPixel(), context.GetScale());
}

int CDrawContext::SaveState()
{
    m_Saved.push_back({m_Tools, GetClip()});
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
    m_Tools = m_Saved[nKept].tools;
    SetClip(m_Saved[nKept].clip);
    m_Saved.resize(nKept);
    return true;
}

ColorRef CDrawContext::SetTextColor(ColorRef uColor)
{
    return std::exchange(m_Tools.uText, uColor);
}

ColorRef CDrawContext::SetBackColor(ColorRef uColor)
{
    return std::exchange(m_Tools.uBack, uColor);
}

SPen CDrawContext::SetPen(const SPen& pen)
{
    return std::exchange(m_Tools.pen, pen);
}

std::optional<ColorRef> CDrawContext::SetBrush(std::optional<ColorRef> brush)
{
    return std::exchange(m_Tools.brush, brush);
}

void CDrawContext::DrawLine(SPoint from, SPoint to)
{
    DrawPenLine(*this, from, to, m_Tools.pen);
}

void CDrawContext::Rectangle(const SRect& rect)
{
    DrawPenRectangle(*this, rect, m_Tools.pen, m_Tools.brush);
}

void CDrawContext::FrameRect(const SRect& rect, ColorRef uColor)
{
    DrawPenRectangle(*this, rect, {EPenStyle::Solid, 1, uColor}, std::nullopt);
}

SRect CDrawContext::DrawEdge(const SRect& rect, EEdge eEdge, uint32_t uFlags)
{
    return DrawSystemEdge(*this, rect, eEdge, uFlags);
}

SRect CDrawContext::DrawPushButtonFrame(const SRect& rect, bool bPushed)
{
    return DrawEdge(rect, bPushed ? EEdge::Sunken : EEdge::Raised, EDGE_SOFT | EDGE_FILL_MIDDLE);
}

void CDrawContext::DrawFocusRect(const SRect& rect)
{
    DrawFocusDots(*this, rect);
}

bool CDrawContext::DrawText(const char* pszUtf8, const SRect& rect, uint32_t uFlags)
{
    return DrawTextLine(*this, pszUtf8, rect, uFlags, m_Tools.uText, m_Tools.uBack);
}

SSize CDrawContext::GetTextSize(const char* pszUtf8) const
{
    return MeasureTextLine(pszUtf8, GetScale());
}

void CDrawContext::BitBlt(const SRect& target, const CDrawContext& source, SPoint sourceAt)
{
    const SRect rect = LimitRect(target);
    const SPoint at = LimitPoint(sourceAt);
    const SRect sourceRect = {at.x, at.y, at.x + rect.GetWidth(), at.y + rect.GetHeight()};
    CopyPixels(*this, rect, {source.GetTarget(), sourceRect, EPixelCopy::Opaque, 0});
}

void CDrawContext::StretchBlt(const SRect& target,
                              const CDrawContext& source,
                              const SRect& sourceRect)
{
    CopyPixels(*this,
               LimitRect(target),
               {source.GetTarget(), LimitRect(sourceRect), EPixelCopy::Opaque, 0});
}

void CDrawContext::TransparentBlt(const SRect& target,
                                  const CDrawContext& source,
                                  const SRect& sourceRect,
                                  ColorRef uKey)
{
    CopyPixels(*this,
               LimitRect(target),
               {source.GetTarget(), LimitRect(sourceRect), EPixelCopy::Keyed, uKey});
}

void CDrawContext::DrawBitmap(SPoint at, const CBitmap& bitmap)
{
    const SPoint corner = LimitPoint(at);
    const SRect bounds = bitmap.GetPixels().GetBounds();
    DrawBitmap(bounds.Offset(corner.x, corner.y), bitmap, bounds);
}

void CDrawContext::DrawBitmap(const SRect& target, const CBitmap& bitmap, const SRect& sourceRect)
{
    const EPixelCopy eCopy = bitmap.HasAlpha() ? EPixelCopy::Blended : EPixelCopy::Opaque;
    CopyPixels(*this, LimitRect(target), {&bitmap.GetPixels(), LimitRect(sourceRect), eCopy, 0});
}

void CDrawContext::ReplaceColor(const SRect& rect, ColorRef uFrom, ColorRef uTo)
{
    const SColorPair pair = {uFrom, uTo};
    MapPixels(*this, rect, {&pair, 1});
}

void CDrawContext::MapColors(std::span<const SColorPair> pairs)
{
    MapPixels(*this, GetClipBox(), pairs);
}
