#pragma once

#include <algorithm>

// Strokes of large brushes. A hand covers one length of a brush in some fifth of a second; what the
// points on it visit together must be done in that time, with the pictures between them. The limit
// is a number of vertices and not a time: the same drag gives the same ground on every machine.

// Vertices that the points over one length of a brush may visit.
constexpr double MOST_VISITS = 12.0e6;
// The widest that the points are set apart for it, a share of the brush.
constexpr double WIDEST_SHARE = 0.25;

// The least distance of two points that keeps to it, as a share of the brush. dVertices: under it.
inline float GetLeastShare(double dVertices)
{
    return static_cast<float>(std::min(dVertices / MOST_VISITS, WIDEST_SHARE));
}
