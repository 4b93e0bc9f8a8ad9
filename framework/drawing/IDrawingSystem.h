#pragma once

#include "framework/drawing/Geometry.h"
#include "framework/drawing/SystemColors.h"

#include <cstddef>
#include <cstdint>

// What only the window system knows of drawing: its font and its palette.
class TELLUR_API IDrawingSystem
{
public:
    // The program has an application object; font and palette are that one's. The operations below
    // need it.
    virtual bool IsReady() const = 0;

    // As the palette has it, which may make shades equal; GetSystemColor tells them apart.
    virtual ColorRef GetPaletteColor(ESystemColor eColor) const = 0;

    // Of the cell of one line, device pixels at the scale. Line breaks and tabs are blanks.
    virtual SSize GetTextSize(const char* pszUtf8, double fScale) const = 0;

    // How far the text covers each pixel of box, 0 to 255, where box counts from the corner of the
    // text's cell. pCoverage: zeros, the rows of the box; uStride: bytes from row to row, a
    // multiple of 4.
    virtual void CoverText(const char* pszUtf8,
                           double fScale,
                           const SRect& box,
                           uint8_t* pCoverage,
                           size_t uStride) const = 0;

protected:
    ~IDrawingSystem() = default;
};
