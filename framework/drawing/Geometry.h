#pragma once

#include <algorithm>

// Device pixels, x to the right, y down.
struct SPoint
{
    int x = 0;
    int y = 0;

    bool operator==(const SPoint&) const = default;
};

struct SSize
{
    int cx = 0;
    int cy = 0;

    bool operator==(const SSize&) const = default;
};

// Right and bottom are the first column and row outside. An inverted rectangle is empty.
struct SRect
{
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    constexpr int GetWidth() const { return right - left; }

    constexpr int GetHeight() const { return bottom - top; }

    constexpr bool IsEmpty() const { return right <= left || bottom <= top; }

    constexpr bool Contains(SPoint point) const
    {
        return point.x >= left && point.x < right && point.y >= top && point.y < bottom;
    }

    // The rectangle that is smaller by cx on the left and on the right and by cy above and below;
    // negative numbers make it larger.
    [[nodiscard]] constexpr SRect Deflate(int cx, int cy) const
    {
        return {left + cx, top + cy, right - cx, bottom - cy};
    }

    [[nodiscard]] constexpr SRect Offset(int dx, int dy) const
    {
        return {left + dx, top + dy, right + dx, bottom + dy};
    }

    // What both cover; empty when they do not meet.
    [[nodiscard]] constexpr SRect Intersect(const SRect& other) const
    {
        return {std::max(left, other.left),
                std::max(top, other.top),
                std::min(right, other.right),
                std::min(bottom, other.bottom)};
    }

    bool operator==(const SRect&) const = default;
};
