#pragma once

#include "framework/drawing/Geometry.h"
#include "host/Export.h"

#include <cstdint>
#include <vector>

class CDrawContext;
class IImage;

// The pixels of a grey picture in the depth of the display that it was drawn on last, so that they
// are not made for each drawing. They are made anew when there are none.
struct SGreyPixels
{
    std::vector<uint8_t> bytes;
    int nBits = 0; // of a pixel
};

// Stretches a picture of one byte a pixel over the rectangle: 5-6-5 at 16 bits a pixel, three equal
// bytes at 24 and at 32. kept is the caller's, who clears its bytes whenever the picture is another
// one. Answers false and draws nothing, without a line in the log, at another depth and when memory
// is short.
TELLUR_API bool
DrawGreyPixels(CDrawContext& context, const SRect& rect, const IImage& picture, SGreyPixels& kept);

// Fills the rectangle with black, for where there is no picture.
TELLUR_API void DrawNoPicture(CDrawContext& context, const SRect& rect);
