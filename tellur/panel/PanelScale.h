#pragma once

struct SExtentLimits;

// How the positions of one of the panel's sliders, 0 to iPositions, stand for values of a brush.
// The limits are those of the brush extent; a scale that does not go by them ignores them.
struct SPanelScale
{
    int iPositions;
    float (*pGetValue)(const SExtentLimits& limits, int iPos);
    // Truncated towards zero. It may lie beyond the ends, where the slider then stays.
    int (*pGetPosition)(const SExtentLimits& limits, float fValue);
};

float GetExtentAt(const SExtentLimits& limits, int iPos);
int GetExtentPosition(const SExtentLimits& limits, float fExtent);
float GetShareAt(const SExtentLimits& limits, int iPos);
int GetSharePosition(const SExtentLimits& limits, float fShare);
float GetDistanceAt(const SExtentLimits& limits, int iPos);
int GetDistancePosition(const SExtentLimits& limits, float fDistance);

// The scale of extent and fade distance, terrain units: from one limit to the other, where a
// negative one counts as 0. Without a terrain all is 0.
inline constexpr SPanelScale EXTENT_SCALE = {32000, &GetExtentAt, &GetExtentPosition};
// The scale of power and hardness, 0 to 1.
inline constexpr SPanelScale SHARE_SCALE = {100, &GetShareAt, &GetSharePosition};
// The scale of the vertical distance, terrain units: from 0 to the terrain's height. Without a
// terrain all is 0.
inline constexpr SPanelScale DISTANCE_SCALE = {1000, &GetDistanceAt, &GetDistancePosition};

// The hardness that may be set at most. Kept as it always was: the slider reaches only 1 and stays
// at its end beyond it.
inline constexpr float MOST_HARDNESS = 100.0F;
