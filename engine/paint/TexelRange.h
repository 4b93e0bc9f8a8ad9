#pragma once

#include "host/Export.h"

#include <cstdint>

// Where the texels of a bitmap lie along one side of the terrain.
enum class ETexelMapping : uint32_t
{
    Centers = 0,  // texel i covers a share of the side, its position is the middle of that
    Vertices = 1, // the first and the last texel lie on the terrain's edges
};

// Texels [uFirst, uEnd).
struct STexelRange
{
    uint32_t uFirst = 0;
    uint32_t uEnd = 0;

    bool IsEmpty() const { return uFirst >= uEnd; }
};

// Terrain units from the terrain's origin. nTexels: along that side, 1 at least. fSide: its length.
TELLUR_API float
GetTexelPosition(uint32_t uTexel, uint32_t nTexels, float fSide, ETexelMapping eMapping);

// The texels whose position is within [fMin, fMax].
TELLUR_API STexelRange
FindTexels(float fMin, float fMax, uint32_t nTexels, float fSide, ETexelMapping eMapping);
