#pragma once

#include "engine/terrain/GroundLook.h"
#include "engine/terrain/SHeightField.h"

#include <vector>

// A terrain as a scene draws it: a finer grid that bends smoothly between the vertices, with the
// light that every point sends out, as squares of what is shown.
struct SSceneGround
{
    uint32_t uSizeX = 0;
    uint32_t uSizeZ = 0;
    float fStepX = 0.0F; // terrain units between points, above 0
    float fStepZ = 0.0F;
    std::vector<float> heights; // row-major
    std::vector<SVec3> colors;

    SVec3 GetPoint(uint32_t uX, uint32_t uZ) const
    {
        return {static_cast<float>(uX) * fStepX,
                heights[static_cast<size_t>(uZ) * uSizeX + uX],
                static_cast<float>(uZ) * fStepZ};
    }
};

// Makes and lights the ground. uMost: a side is refined or thinned out to at most so many cells.
// range: of the heights that tints go by, that of the field where it is none. Throws
// std::bad_alloc.
SSceneGround MakeSceneGround(const SHeightField& field,
                             const SDayLight& day,
                             const SLookEdge& range,
                             uint32_t uMost);
