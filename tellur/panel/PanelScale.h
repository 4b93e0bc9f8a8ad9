#pragma once

class Terrain;

// The positions of the panel's sliders.
inline constexpr int EXTENT_POSITIONS = 32000; // of extent and fade distance
inline constexpr int SHARE_POSITIONS = 100;    // of power and hardness, hundredths
inline constexpr int DISTANCE_POSITIONS = 1000;

Terrain* GetPanelTerrain(); // null without a level

int GetSharePosition(float fShare);
float GetShareAt(int iPos);
