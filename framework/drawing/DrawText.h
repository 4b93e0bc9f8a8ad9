#pragma once

#include "framework/drawing/CDrawSurface.h"
#include "framework/drawing/DrawTypes.h"

#include <cstdint>

// One line of text on a surface, for the drawing context, whose operations say what it looks like.
// Failures are logged in the name of those operations.

// uFlags: ETextFlag. False, with one logged line, when nothing can be drawn.
bool DrawTextLine(CDrawSurface& surface,
                  const char* pszUtf8,
                  const SRect& rect,
                  uint32_t uFlags,
                  ColorRef uText,
                  ColorRef uBack);

// Device pixels; nothing, with one logged line, where DrawTextLine fails.
SSize MeasureTextLine(const char* pszUtf8, double fScale);
