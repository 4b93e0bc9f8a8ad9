#pragma once

#include "host/HostTypes.h"

#include <cmath>

// Arithmetic on vectors that the views share.

inline SVec3 AddScaled(const SVec3& a, const SVec3& b, float fScale)
{
    return {a.x + b.x * fScale, a.y + b.y * fScale, a.z + b.z * fScale};
}

inline SVec3 Subtract(const SVec3& a, const SVec3& b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

inline float Dot(const SVec3& a, const SVec3& b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline float GetLength(const SVec3& vec)
{
    return std::hypot(vec.x, vec.y, vec.z);
}

// Corner 0 to 7 of a box: bit 0 chooses the upper x, bit 1 the upper y, bit 2 the upper z.
inline SVec3 GetCorner(const SExtents& box, int i)
{
    return {(i & 1) != 0 ? box.max.x : box.min.x,
            (i & 2) != 0 ? box.max.y : box.min.y,
            (i & 4) != 0 ? box.max.z : box.min.z};
}

inline SVec3 GetBoxCenter(const SExtents& box)
{
    return {(box.min.x + box.max.x) * 0.5F,
            (box.min.y + box.max.y) * 0.5F,
            (box.min.z + box.max.z) * 0.5F};
}
