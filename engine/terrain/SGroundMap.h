#pragma once

#include "engine/terrain/SGroundAct.h"
#include "host/Export.h"

#include <cstdint>
#include <vector>

// One axis of a SGroundMap. source: for each new column, or row, the one of before. Those outside
// uFirst to uEnd are new: their sources are the edge that they continue.
struct SGroundAxis
{
    std::vector<uint32_t> source;
    uint32_t uFirst = 0;
    uint32_t uEnd = 0;
};

// Where each vertex of a ground that was moved comes from, or each texel of a picture that lies
// over it. Column x and row z of the new grid come from column along[x] and row down[z] of the one
// before; when bSwapped from row along[x] and column down[z].
struct SGroundMap
{
    SGroundAxis along;
    SGroundAxis down;
    bool bSwapped = false;

    uint32_t GetSizeX() const { return static_cast<uint32_t>(along.source.size()); }

    uint32_t GetSizeZ() const { return static_cast<uint32_t>(down.source.size()); }
};

// Whether the act moves ground, so that pictures over it have to go along.
TELLUR_API bool IsGroundMoved(EGround eKind);

// For a grid of so many columns and rows, and an act that moves them and leaves some.
TELLUR_API SGroundMap MakeGroundMap(const SGroundAct& act, uint32_t uSizeX, uint32_t uSizeZ);

// The same act in texels of a picture of uWidth x uHeight over uCellsX x uCellsZ cells: whole
// texels, the nearest ones, at least one a side.
TELLUR_API SGroundAct MakeTexelAct(
    const SGroundAct& act, uint32_t uCellsX, uint32_t uCellsZ, uint32_t uWidth, uint32_t uHeight);
