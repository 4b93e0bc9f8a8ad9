#pragma once

#include "host/HostTypes.h"

#include <cmath>

// What the moves of views with and without a camera share.

constexpr float FARTHEST_ZOOM = 20.0F; // sizes of the terrain
constexpr float FRAME_MARGIN = 1.05F;  // around what is framed
constexpr float COORDINATE_LIMIT = 1e9F;

inline bool IsUsable(const SVec3& position)
{
    return std::fabs(position.x) < COORDINATE_LIMIT && std::fabs(position.y) < COORDINATE_LIMIT &&
           std::fabs(position.z) < COORDINATE_LIMIT;
}

// Of two keys that lead apart: -1, 0 or 1.
inline float GetAxis(bool bNegative, bool bPositive)
{
    return (bPositive ? 1.0F : 0.0F) - (bNegative ? 1.0F : 0.0F);
}
