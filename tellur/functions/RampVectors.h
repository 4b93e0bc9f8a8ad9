#pragma once

#include "host/HostTypes.h"

#include <cmath>

// The few vector operations of the ramp.

inline SVec3 Scale(const SVec3& v, float f)
{
    return {v.x * f, v.y * f, v.z * f};
}

// a + v * f.
inline SVec3 Add(const SVec3& a, const SVec3& v, float f)
{
    return {a.x + v.x * f, a.y + v.y * f, a.z + v.z * f};
}

inline float GetLength(const SVec3& v)
{
    return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
}

// The vector with a length of 1; it stays as it is when its length is (nearly) 0.
inline SVec3 Normalize(const SVec3& v)
{
    constexpr float MIN_LENGTH = 1.0e-6F;
    const float fLength = GetLength(v);
    return fLength > MIN_LENGTH ? Scale(v, 1.0F / fLength) : v;
}
