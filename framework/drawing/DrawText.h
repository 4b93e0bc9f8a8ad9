#pragma once

#include "framework/drawing/CDrawSurface.h"
#include "framework/drawing/DrawTypes.h"

#include <cstdint>

// One line of text on a surface, for the drawing context, whose operations say what it looks like.
// Failures are logged in the name of those operations.

// Draws a text. uFlags: ETextFlag. Answers false when nothing can be drawn; see
// CDrawContext::DrawText for the reasons and for what is logged.
bool DrawTextLine(CDrawSurface& surface,
                  const char* pszUtf8,
                  const SRect& rect,
                  uint32_t uFlags,
                  ColorRef uText,
                  ColorRef uBack);

// The size of a text in device pixels; 0 by 0, logged alike, where DrawTextLine fails.
SSize MeasureTextLine(const char* pszUtf8, double fScale);
