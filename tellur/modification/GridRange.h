#pragma once

#include <algorithm>
#include <cmath>

// Grid lines from ceil(min / step) to trunc(max / step). False when there are none.
inline bool GetGridRange(float fMin, float fMax, float fStep, int& iFirst, int& iLast)
{
    constexpr float LIMIT = 1.0e6F; // far beyond any grid, within an int
    const float fFirst = std::ceil(fMin / fStep);
    const float fLast = std::trunc(fMax / fStep);
    if (!(fFirst <= fLast) || fFirst > LIMIT || fLast < -LIMIT)
    {
        return false;
    }
    iFirst = static_cast<int>(std::max(fFirst, -LIMIT));
    iLast = static_cast<int>(std::min(fLast, LIMIT));
    return true;
}
