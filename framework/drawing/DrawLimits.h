#pragma once

#include "framework/drawing/Geometry.h"

// For the sources of this folder: coordinates are kept where sums and products of them fit their
// types, and still far outside of any pixels.

constexpr int COORDINATE_LIMIT = 1 << 29; // device pixels
constexpr int PEN_LIMIT = 1 << 15;        // device pixels

constexpr int LimitCoordinate(int i)
{
    return std::clamp(i, -COORDINATE_LIMIT, COORDINATE_LIMIT);
}

constexpr SPoint LimitPoint(SPoint point)
{
    return {LimitCoordinate(point.x), LimitCoordinate(point.y)};
}

constexpr SRect LimitRect(const SRect& rect)
{
    return {LimitCoordinate(rect.left),
            LimitCoordinate(rect.top),
            LimitCoordinate(rect.right),
            LimitCoordinate(rect.bottom)};
}
