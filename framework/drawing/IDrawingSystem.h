#pragma once

#include "framework/drawing/Geometry.h"
#include "framework/drawing/SystemColors.h"

#include <cstddef>
#include <cstdint>

// What only the window system knows of drawing: its font and its palette.
class TELLUR_API IDrawingSystem
{
public:
    // Whether the program has an application object, whose font and palette these are. The
    // operations below may be called only while it has.
    virtual bool IsReady() const = 0;

    // Answers the colour as the palette has it, where shades may be equal; GetSystemColor sees to
    // it that they differ.
    virtual ColorRef GetPaletteColor(ESystemColor eColor) const = 0;

    // The size of the cell of one line, in device pixels at the scale. Line breaks and tabs count
    // as blanks.
    virtual SSize GetTextSize(const char* pszUtf8, double fScale) const = 0;

    // Writes how far the text covers each pixel of box, 0 to 255, where box counts from the corner
    // of the text's cell. pCoverage: the rows of the box, which the caller has filled with zeros.
    // uStride: bytes from row to row, a multiple of 4.
    virtual void CoverText(const char* pszUtf8,
                           double fScale,
                           const SRect& box,
                           uint8_t* pCoverage,
                           size_t uStride) const = 0;

protected:
    ~IDrawingSystem() = default;
};
