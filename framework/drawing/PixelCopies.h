#pragma once

#include "framework/drawing/CDrawSurface.h"
#include "framework/drawing/DrawTypes.h"

#include <cstdint>
#include <span>

// Copies of pixels onto a surface, and changes of their colours, for the drawing context. Nothing
// happens outside of the clip. Rectangles: see DrawLimits.h.

enum class EPixelCopy : uint8_t
{
    Opaque,
    Keyed,   // leaves out what has the key colour, as far as the source's depth can tell
    Blended, // by the fourth byte
};

// What is copied.
struct SPixelSource
{
    const CPixelBuffer* pPixels = nullptr; // borrowed; null copies nothing
    SRect rect;                            // another size than the target's: the nearest pixel
    EPixelCopy eCopy = EPixelCopy::Opaque;
    ColorRef uKey = 0;
};

// Copies the source onto the rectangle. Target pixels whose source lies outside the source's pixels
// stay as they are. The source may be the surface itself.
void CopyPixels(CDrawSurface& surface, const SRect& target, const SPixelSource& source);

// Turns each pixel of a pair's first colour into its second one, once: the first pair that fits
// counts. Transparency stays.
void MapPixels(CDrawSurface& surface, const SRect& rect, std::span<const SColorPair> pairs);
