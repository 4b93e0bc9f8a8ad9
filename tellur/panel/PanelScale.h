#pragma once

#include "tellur/context/ShareStep.h"

// The positions of the panel's sliders.
inline constexpr int EXTENT_POSITIONS = 32000; // of extent and fade distance
inline constexpr int SHARE_POSITIONS = 100;    // of power and hardness
inline constexpr int DISTANCE_POSITIONS = 1000;

// More than the slider reaches, which then stays at its end.
inline constexpr float MOST_HARDNESS = 100.0F;

int GetSharePosition(float fShare);
float GetShareAt(int iPos);
