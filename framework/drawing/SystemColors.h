#pragma once

#include "framework/drawing/ColorRef.h"
#include "host/Export.h"

// The colours and measures of the desktop for controls that draw themselves. UI thread.

enum class ESystemColor : uint8_t
{
    ButtonFace,
    ButtonShadow,
    ButtonHighlight,
    Light3D,    // between face and highlight
    DarkShadow, // darker than the shadow
    ButtonText,
    Window, // behind lists and edits
    WindowText,
    GrayText,  // of disabled controls
    Highlight, // behind what is selected
    HighlightText,
};

// Answers a colour of the application's palette, so that it follows a light or dark desktop from
// one call to the next; without an application these are the classic greys. From dark shadow over
// shadow, face and light to highlight each is brighter than the one before, at 16 bits per pixel
// too: a palette that does not give that is replaced by shades of its face, and a face next to
// black or white is moved off it.
TELLUR_API ColorRef GetSystemColor(ESystemColor eColor);

// Width of a vertical and height of a horizontal border line in device pixels: round(scale), at
// least 1.
TELLUR_API int GetBorderWidth(double fScale);
TELLUR_API int GetBorderHeight(double fScale);
