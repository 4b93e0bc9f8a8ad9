#pragma once

#include "framework/drawing/Geometry.h"
#include "host/Export.h"

#include <cstdint>
#include <vector>

class CDrawContext;
class IImage;

// The pixels of a grey picture as a display had them last; made anew when they are none.
struct SGreyPixels
{
    std::vector<uint8_t> bytes;
    int nBits = 0; // of a pixel
};

// Stretches a picture of one byte a pixel over the rectangle: 5-6-5 at 16 bits a pixel, three equal
// bytes at 24, and these at 32. kept: the caller's, cleared whenever it has another picture. False,
// with nothing drawn, on a display of another depth and when memory is short. Silent.
TELLUR_API bool
DrawGreyPixels(CDrawContext& context, const SRect& rect, const IImage& picture, SGreyPixels& kept);

// Black, where there is no picture.
TELLUR_API void DrawNoPicture(CDrawContext& context, const SRect& rect);
