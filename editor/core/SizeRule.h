#pragma once

#include "host/IPluginTools.h"

class CTerrain;

// How large a brush is on a level: shares of what the level measures, so that a first stroke fits
// the ground, whatever its unit is.

// What the amount of a tool follows.
enum class EAmountKind
{
    None,    // nothing, it stays as it is
    Step,    // is added to heights: a share of the ground's range
    Height,  // is set: that share of the range above the lowest ground
    Pick,    // as before, but the height where a stroke begins counts
    Plateau, // picks where there is relief; on flat ground, which has nothing to pick, as Height
    Levels,  // a number of terraces that are that share of the range apart
};

struct SSizeShare
{
    EAmountKind eKind = EAmountKind::None;
    float fExtent = 0.0F; // of the shorter side, 0 to 1
    float fAmount = 0.0F; // of the range, -1 to 1
};

// What brushes are measured by; terrain units.
struct SGroundSize
{
    float fSide = 0.0F;   // the shorter one
    float fLimit = 0.0F;  // of heights
    float fLowest = 0.0F; // of the vertices that can be edited
    float fRange = 0.0F;  // lowest to highest of these; the limit on flat ground
    bool bFlat = true;    // the range is less than a twentieth of the limit
};

// Costs what changed since the terrain was asked for ranges last; where some vertices cannot be
// edited, a look at the ranges of its blocks.
SGroundSize MeasureGround(const CTerrain& terrain);

// Sizes are rounded to three digits, as a person would type them; the amount of EAmountKind::None
// is no number.
SToolSizes FitSizes(const SSizeShare& share, const SGroundSize& ground);
