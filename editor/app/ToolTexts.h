#pragma once

#include "editor/core/Words.h"

#include <QString>

#include <cmath>

// How notes at the cursor say the values of a tool, and which numbers a key or the mouse gives
// them: ones that a person would type.

constexpr const char* NO_TOOL = TextKey("no tool");
constexpr const char* NO_AMOUNT = TextKey("this tool has no number");

inline QString GetExtentText(float fExtent)
{
    return QString::number(static_cast<double>(fExtent), 'f', 1);
}

inline QString GetShareText(float fShare)
{
    return QString::number(static_cast<double>(fShare), 'f', 2);
}

inline float RoundShare(float fShare)
{
    constexpr float PARTS = 100.0F;
    return std::round(fShare * PARTS) / PARTS;
}

// The nearest extent of four digits; what is no extent stays as it is.
inline float RoundExtent(float fExtent)
{
    if (!(fExtent > 0.0F) || !std::isfinite(fExtent))
    {
        return fExtent;
    }
    constexpr double DIGITS = 3.0;
    const double fPower =
        std::pow(10.0, DIGITS - std::floor(std::log10(static_cast<double>(fExtent))));
    return static_cast<float>(std::round(static_cast<double>(fExtent) * fPower) / fPower);
}
