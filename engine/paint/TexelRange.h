#pragma once

#include "host/Export.h"
#include "host/IPaintLayer.h"

#include <cstdint>

// Texels [uFirst, uEnd).
struct STexelRange
{
    uint32_t uFirst = 0;
    uint32_t uEnd = 0;

    bool IsEmpty() const { return uFirst >= uEnd; }
};

// Where a texel lies along one side, in terrain units from the terrain's origin. nTexels: of that
// side, 1 at least. fSide: its length.
TELLUR_API float
GetTexelPosition(uint32_t uTexel, uint32_t nTexels, float fSide, ETexelMapping eMapping);

// The texels whose position is within [fMin, fMax].
TELLUR_API STexelRange
FindTexels(float fMin, float fMax, uint32_t nTexels, float fSide, ETexelMapping eMapping);
