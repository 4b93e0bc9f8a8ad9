#pragma once

#include <cstdint>

class CEnumInfo;

// Which vertices a function may change. Stored as the reflected field m_Mode.
enum ETerrainFunctionMode : int32_t
{
    mode_default = 0, // all
    mode_min = 1,     // only raise
    mode_max = 2,     // only lower
};

// Names and display texts of the modes.
const CEnumInfo* GetTerrainFunctionModes();

// The mode of an operation that runs now: Ctrl forces min, Alt forces max and wins over Ctrl. The
// stored mode is not changed.
int32_t GetEffectiveMode(int32_t iStoredMode);
