#include "framework/drawing/DrawShapes.h"

#include "framework/drawing/DrawLimits.h"
#include "framework/drawing/PixelFormat.h"
#include "framework/drawing/SystemColors.h"

#include <cstdint>
#include <cstdlib>

namespace
{

// The highest bit of each channel, which is half its range. The fourth byte stays untouched.
constexpr uint32_t GetFocusBits(int nBits)
{
    return nBits == 16 ? 0x8410 : 0x808080;
}

// Calls visit(y, left, right) once for each run of a frame nWidth wide inside the clip; no pixel
// comes twice, so that changes can be undone by a second walk.
template <class TVisit>
void WalkFrame(const SRect& frame, int nWidth, const SRect& clip, TVisit&& visit)
{
    const auto visitClipped = [&](int y, int iLeft, int iRight)
    {
        iLeft = std::max(iLeft, clip.left);
        iRight = std::min(iRight, clip.right);
        if (iLeft < iRight)
        {
            visit(y, iLeft, iRight);
        }
    };
    const SRect inside = frame.Deflate(nWidth, nWidth);
    const int iBottom = std::min(frame.bottom, clip.bottom);
    for (int y = std::max(frame.top, clip.top); y < iBottom; ++y)
    {
        // Rows of the upper and the lower line, and all rows of a frame whose sides meet, are one
        // run.
        if (y < inside.top || y >= inside.bottom || inside.right <= inside.left)
        {
            visitClipped(y, frame.left, frame.right);
        }
        else
        {
            visitClipped(y, frame.left, inside.left);
            visitClipped(y, inside.right, frame.right);
        }
    }
}

// The dots of a frame go on along its sides and around its corners.
bool IsDot(const SRect& frame, int nWidth, int x, int y)
{
    return ((x - frame.left) / nWidth + (y - frame.top) / nWidth) % 2 == 0;
}

int GetPenWidth(const SPen& pen)
{
    return std::clamp(pen.nWidth, 1, PEN_LIMIT);
}

void DrawFrame(CDrawSurface& surface, const SRect& rect, const SPen& pen)
{
    const SRect clip = surface.GetClipBox();
    if (clip.IsEmpty() || rect.IsEmpty() || pen.eStyle == EPenStyle::None)
    {
        return;
    }
    CPixelBuffer& target = *surface.GetTarget();
    const int nWidth = GetPenWidth(pen);
    const int nBits = target.GetBitsPerPixel();
    const uint32_t uPixel = EncodePixel(pen.uColor, nBits);
    WalkFrame(rect,
              nWidth,
              clip,
              [&](int y, int iLeft, int iRight)
              {
                  uint8_t* pRow = target.GetRow(y);
                  if (pen.eStyle == EPenStyle::Solid)
                  {
                      FillPixels(pRow, iLeft, iRight, uPixel, nBits);
                      return;
                  }
                  for (int x = iLeft; x < iRight; ++x)
                  {
                      if (IsDot(rect, nWidth, x, y))
                      {
                          FillPixels(pRow, x, x + 1, uPixel, nBits);
                      }
                  }
              });
}

// The bottom and right lines take the two corners that they share with the others.
void DrawRing(CDrawSurface& surface, const SRect& rect, ColorRef uTopLeft, ColorRef uBottomRight)
{
    const int nWidth = GetBorderWidth(surface.GetScale());
    // The rectangle may be smaller than its lines are wide.
    surface.FillRect(rect.Intersect({rect.left, rect.top, rect.right, rect.top + nWidth}),
                     uTopLeft);
    surface.FillRect(rect.Intersect({rect.left, rect.top, rect.left + nWidth, rect.bottom}),
                     uTopLeft);
    surface.FillRect(rect.Intersect({rect.left, rect.bottom - nWidth, rect.right, rect.bottom}),
                     uBottomRight);
    surface.FillRect(rect.Intersect({rect.right - nWidth, rect.top, rect.right, rect.bottom}),
                     uBottomRight);
}

} // namespace

void DrawPenLine(CDrawSurface& surface, SPoint from, SPoint to, const SPen& pen)
{
    const SRect clip = surface.GetClipBox();
    if (clip.IsEmpty() || pen.eStyle == EPenStyle::None)
    {
        return;
    }
    from = LimitPoint(from);
    to = LimitPoint(to);
    const bool bFlat = std::abs(to.x - from.x) >= std::abs(to.y - from.y);
    const int64_t iLong = bFlat ? to.x - from.x : to.y - from.y;
    const int64_t iShort = bFlat ? to.y - from.y : to.x - from.x;
    const int64_t nSteps = std::abs(iLong);
    const int iStart = bFlat ? from.x : from.y;
    const int iDirection = iLong < 0 ? -1 : 1;
    const int nWidth = GetPenWidth(pen);
    // Only the steps inside the clip are walked, however long the line is.
    const int64_t iClipFirst = bFlat ? clip.left : clip.top;
    const int64_t iClipLast = (bFlat ? clip.right : clip.bottom) - 1;
    const int64_t iFirst = iDirection > 0 ? iClipFirst - iStart : iStart - iClipLast;
    const int64_t iLast = iDirection > 0 ? iClipLast - iStart : iStart - iClipFirst;
    for (int64_t i = std::max<int64_t>(iFirst, 0); i <= iLast && i < nSteps; ++i)
    {
        if (pen.eStyle == EPenStyle::Dotted && i / nWidth % 2 != 0)
        {
            continue;
        }
        // Worked out anew for each step instead of carried on from the one before: a line that is
        // clipped has the same pixels as the whole one, and no error grows along it.
        const int64_t nAcross = (2 * i * std::abs(iShort) + nSteps) / (2 * nSteps);
        const int iAlong = static_cast<int>(iStart + iDirection * i);
        const int iAcross =
            static_cast<int>((bFlat ? from.y : from.x) + (iShort < 0 ? -nAcross : nAcross)) -
            (nWidth - 1) / 2;
        surface.FillRect(bFlat ? SRect{iAlong, iAcross, iAlong + 1, iAcross + nWidth}
                               : SRect{iAcross, iAlong, iAcross + nWidth, iAlong + 1},
                         pen.uColor);
    }
}

void DrawPenRectangle(CDrawSurface& surface,
                      const SRect& rect,
                      const SPen& pen,
                      std::optional<ColorRef> brush)
{
    const SRect frame = LimitRect(rect);
    const int nOutline = pen.eStyle == EPenStyle::None ? 0 : GetPenWidth(pen);
    if (brush.has_value())
    {
        surface.FillRect(frame.Deflate(nOutline, nOutline), *brush);
    }
    DrawFrame(surface, frame, pen);
}

SRect DrawSystemEdge(CDrawSurface& surface, const SRect& rect, EEdge eEdge, uint32_t uFlags)
{
    const int nWidth = GetBorderWidth(surface.GetScale());
    const ColorRef uHighlight = GetSystemColor(ESystemColor::ButtonHighlight);
    const ColorRef uLight = GetSystemColor(ESystemColor::Light3D);
    const ColorRef uShadow = GetSystemColor(ESystemColor::ButtonShadow);
    const ColorRef uDark = GetSystemColor(ESystemColor::DarkShadow);
    const bool bSoft = (uFlags & EDGE_SOFT) != 0;
    const SRect outer = LimitRect(rect);
    const SRect inner = outer.Deflate(nWidth, nWidth);
    if (eEdge == EEdge::Raised)
    {
        DrawRing(surface, outer, bSoft ? uHighlight : uLight, uDark);
        DrawRing(surface, inner, bSoft ? uLight : uHighlight, uShadow);
    }
    else
    {
        DrawRing(surface, outer, bSoft ? uDark : uShadow, uHighlight);
        DrawRing(surface, inner, bSoft ? uShadow : uDark, uLight);
    }
    const SRect inside = inner.Deflate(nWidth, nWidth);
    if ((uFlags & EDGE_FILL_MIDDLE) != 0)
    {
        surface.FillRect(inside, GetSystemColor(ESystemColor::ButtonFace));
    }
    return inside;
}

void DrawFocusDots(CDrawSurface& surface, const SRect& rect)
{
    const SRect clip = surface.GetClipBox();
    const SRect frame = LimitRect(rect);
    if (clip.IsEmpty() || frame.IsEmpty())
    {
        return;
    }
    CPixelBuffer& target = *surface.GetTarget();
    const int nBits = target.GetBitsPerPixel();
    const int nWidth = GetBorderWidth(surface.GetScale());
    WalkFrame(frame,
              nWidth,
              clip,
              [&](int y, int iLeft, int iRight)
              {
                  uint8_t* pRow = target.GetRow(y);
                  for (int x = iLeft; x < iRight; ++x)
                  {
                      uint8_t* pPixel = GetPixelOf(pRow, x, nBits);
                      const uint32_t uFlip = IsDot(frame, nWidth, x, y) ? GetFocusBits(nBits) : 0;
                      StorePixel(pPixel, LoadPixel(pPixel, nBits) ^ uFlip, nBits);
                  }
              });
}
