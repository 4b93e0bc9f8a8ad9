#pragma once

#include "engine/terrain/Relief.h"
#include "engine/terrain/SHeightField.h"

// A camera above a terrain: points in terrain units, x east, y up, z south.
struct SSceneOptions
{
    SVec3 eye;
    SVec3 target;        // not straight above or below the eye
    uint32_t uWidth = 0; // pixels
    uint32_t uHeight = 0;
    // Heights that tints go by; with fHigh at or below fLow those of the terrain.
    float fLow = 0.0F;
    float fHigh = 0.0F;
};

// What a camera sees of a terrain in the light of a low sun, with haze in the distance. Ground and
// sky have the colours that the views of the editor show; shadows are added. Throws std::bad_alloc.
SReliefPicture RenderScene(const SHeightField& field, const SSceneOptions& options);
