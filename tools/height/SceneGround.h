#pragma once

#include "engine/terrain/SHeightField.h"

#include <vector>

// Where the light of a scene comes from: a direction towards the sun, of any length.
using FSun = SVec3;

// A terrain as a scene draws it: a finer grid that bends smoothly between the vertices, with the
// light that every point sends out. Colours are linear, 1 is the brightest that is shown plainly.
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
// Throws std::bad_alloc.
SSceneGround MakeSceneGround(const SHeightField& field, const FSun& sun, uint32_t uMost);
