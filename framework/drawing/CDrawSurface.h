#pragma once

#include "framework/drawing/CPixelBuffer.h"

#include <optional>

class CBitmap;

// What drawing goes to: a pixel buffer or, in memory, the bitmap that is selected; both are
// borrowed. It has a clip, outside of which nothing changes, and the scale of what is drawn.
// Coordinates are device pixels, rectangles may lie anywhere. UI thread.
class TELLUR_API CDrawSurface
{
public:
    explicit CDrawSurface(CPixelBuffer& buffer, double fScale = 1.0); // 1 is 100 %
    // A surface in memory with nothing selected: nothing can be drawn on it.
    CDrawSurface(int nBitsPerPixel, double fScale);
    CDrawSurface(const CDrawSurface&) = delete;
    CDrawSurface& operator=(const CDrawSurface&) = delete;

    // Selects what a surface in memory draws on, borrowed until another one is selected; null
    // selects nothing. Returns the one before. A surface over a buffer answers null and does
    // nothing.
    CBitmap* SelectBitmap(CBitmap* pBitmap);

    // The pixels, borrowed until another bitmap is selected; null when there are none. Whoever
    // writes them heeds the clip.
    CPixelBuffer* GetTarget();
    const CPixelBuffer* GetTarget() const;

    int GetBitsPerPixel() const; // of the pixels; without any what the surface was made for

    int GetPlanes() const { return 1; }

    double GetScale() const { return m_Scale; }

    const std::optional<SRect>& GetClip() const { return m_Clip; }

    std::optional<SRect> SetClip(std::optional<SRect> clip); // none: all pixels; returns the old
    SRect GetClipBox() const;                                // what can be drawn on now

    ColorRef GetPixel(int x, int y) const; // black outside the pixels; the clip does not count
    void SetPixel(int x, int y, ColorRef uColor);
    void FillRect(const SRect& rect, ColorRef uColor);

private:
    CPixelBuffer* m_Buffer; // null: in memory
    CBitmap* m_Bitmap = nullptr;
    int m_Bits;
    double m_Scale;
    std::optional<SRect> m_Clip;
};
