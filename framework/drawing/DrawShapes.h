#pragma once

#include "framework/drawing/CDrawSurface.h"
#include "framework/drawing/DrawTypes.h"

#include <cstdint>
#include <optional>

// Lines, frames and edges on a surface, for the drawing context, whose operations say what they
// look like. Nothing happens outside of the clip.

void DrawPenLine(CDrawSurface& surface, SPoint from, SPoint to, const SPen& pen);

// The outline with the pen, and inside of it the brush; without a brush the inside stays as it is.
void DrawPenRectangle(CDrawSurface& surface,
                      const SRect& rect,
                      const SPen& pen,
                      std::optional<ColorRef> brush);

// uFlags: EEdgeFlag. Returns what is inside the lines.
SRect DrawSystemEdge(CDrawSurface& surface, const SRect& rect, EEdge eEdge, uint32_t uFlags);

void DrawFocusDots(CDrawSurface& surface, const SRect& rect);
