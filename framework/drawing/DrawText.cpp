#include "framework/drawing/DrawText.h"

#include "framework/core/IWindowSystem.h"
#include "framework/drawing/DrawLimits.h"
#include "framework/drawing/IDrawingSystem.h"
#include "framework/drawing/PixelFormat.h"
#include "host/Log.h"

#include <memory>
#include <new>

namespace
{

// Null when no text can be drawn. A line is logged each time, except for a window system that
// cannot be opened, which OpenWindowSystem logs the first time only. pszWhere names the operation.
const IDrawingSystem* FindFont(const char* pszWhere, const char* pszUtf8)
{
    if (pszUtf8 == nullptr)
    {
        CrashLog("[CDrawContext::%s] text is null\n", pszWhere);
        return nullptr;
    }
    IWindowSystem* pSystem = OpenWindowSystem();
    if (pSystem == nullptr)
    {
        return nullptr;
    }
    if (!pSystem->GetDrawing().IsReady())
    {
        CrashLog("[CDrawContext::%s] no application to take the font from\n", pszWhere);
        return nullptr;
    }
    return &pSystem->GetDrawing();
}

SRect PlaceText(const SRect& rect, SSize size, uint32_t uFlags)
{
    const int iLeft =
        (uFlags & TEXT_CENTER) != 0 ? rect.left + (rect.GetWidth() - size.cx) / 2 : rect.left;
    const int iTop =
        (uFlags & TEXT_VCENTER) != 0 ? rect.top + (rect.GetHeight() - size.cy) / 2 : rect.top;
    return {iLeft, iTop, iLeft + size.cx, iTop + size.cy};
}

void BlendCoverage(CPixelBuffer& target,
                   const SRect& box,
                   const uint8_t* pCoverage,
                   size_t uStride,
                   ColorRef uColor)
{
    const int nBits = target.GetBitsPerPixel();
    const int nBytes = nBits / 8;
    for (int y = box.top; y < box.bottom; ++y, pCoverage += uStride)
    {
        uint8_t* pPixel = GetPixelOf(target.GetRow(y), box.left, nBits);
        for (int i = 0; i < box.GetWidth(); ++i, pPixel += nBytes)
        {
            if (pCoverage[i] != 0)
            {
                BlendPixel(pPixel, uColor, pCoverage[i], nBits);
            }
        }
    }
}

} // namespace

bool DrawTextLine(CDrawSurface& surface,
                  const char* pszUtf8,
                  const SRect& rect,
                  uint32_t uFlags,
                  ColorRef uText,
                  ColorRef uBack)
{
    const IDrawingSystem* pFont = FindFont("DrawText", pszUtf8);
    if (pFont == nullptr)
    {
        return false;
    }
    const SRect area = LimitRect(rect);
    const SRect text = PlaceText(area, pFont->GetTextSize(pszUtf8, surface.GetScale()), uFlags);
    const SRect box = text.Intersect(area).Intersect(surface.GetClipBox());
    if (box.IsEmpty())
    {
        return true;
    }
    // The font gives how far each pixel is covered; colours are mixed here, at every depth alike.
    const size_t uStride = (static_cast<size_t>(box.GetWidth()) + 3) / 4 * 4;
    const size_t nBytes = uStride * static_cast<size_t>(box.GetHeight());
    const std::unique_ptr<uint8_t[]> coverage(new (std::nothrow) uint8_t[nBytes]());
    if (coverage == nullptr)
    {
        CrashLog("[CDrawContext::DrawText] no memory for the text\n");
        return false;
    }
    pFont->CoverText(
        pszUtf8, surface.GetScale(), box.Offset(-text.left, -text.top), coverage.get(), uStride);
    if ((uFlags & TEXT_TRANSPARENT) == 0)
    {
        surface.FillRect(box, uBack);
    }
    BlendCoverage(*surface.GetTarget(), box, coverage.get(), uStride, uText);
    return true;
}

SSize MeasureTextLine(const char* pszUtf8, double fScale)
{
    const IDrawingSystem* pFont = FindFont("GetTextSize", pszUtf8);
    return pFont != nullptr ? pFont->GetTextSize(pszUtf8, fScale) : SSize();
}
