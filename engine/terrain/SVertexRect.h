#pragma once

#include <algorithm>
#include <cstdint>

// A rectangle of terrain vertices, half open: columns [uMinX, uEndX), rows [uMinZ, uEndZ).
struct SVertexRect
{
    uint32_t uMinX = 0;
    uint32_t uMinZ = 0;
    uint32_t uEndX = 0;
    uint32_t uEndZ = 0;

    bool IsEmpty() const { return uMinX >= uEndX || uMinZ >= uEndZ; }

    bool operator==(const SVertexRect&) const = default;

    // The smallest rectangle that holds both; an empty one adds nothing.
    SVertexRect Union(const SVertexRect& other) const
    {
        if (IsEmpty() || other.IsEmpty())
        {
            return IsEmpty() ? other : *this;
        }
        return {std::min(uMinX, other.uMinX),
                std::min(uMinZ, other.uMinZ),
                std::max(uEndX, other.uEndX),
                std::max(uEndZ, other.uEndZ)};
    }

    // What both hold; empty when they do not meet.
    SVertexRect Intersection(const SVertexRect& other) const
    {
        return {std::max(uMinX, other.uMinX),
                std::max(uMinZ, other.uMinZ),
                std::min(uEndX, other.uEndX),
                std::min(uEndZ, other.uEndZ)};
    }

    // Grown by uBy vertices on every side, clipped to a terrain of uSizeX x uSizeZ vertices.
    SVertexRect Grown(uint32_t uBy, uint32_t uSizeX, uint32_t uSizeZ) const
    {
        return {uMinX > uBy ? uMinX - uBy : 0U,
                uMinZ > uBy ? uMinZ - uBy : 0U,
                std::min(uEndX + uBy, uSizeX),
                std::min(uEndZ + uBy, uSizeZ)};
    }
};
