#pragma once

#include "host/HostTypes.h"

struct SViewProjection;

// Where a view that keeps its direction shows a box as large as can be. Positions of the view do
// not matter, its axes, its angle and its size do. Terrain units.

// The position from which all corners of the box lie in the picture, less fMargin of its half sides
// (1.05: a twentieth), and two opposite ones touch that; none is nearer than fLeast. bCentered:
// with the middle of the box in the middle of the picture, and one corner that touches.
SVec3 FindFramingPosition(const SViewProjection& view,
                          const SExtents& box,
                          float fMargin,
                          float fLeast,
                          bool bCentered = false);

// The pitch, in degrees, at which a box that is framed so from the south covers most of the
// picture; one from which ground is seen well.
float FindBestPitch(const SViewProjection& view, const SExtents& box, float fMargin);

// The box with horizontal sides of at least twice fLeast, about the same middle.
SExtents Widen(const SExtents& box, float fLeast);
