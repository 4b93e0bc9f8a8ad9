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
};

// What a camera sees of a terrain in the light of a low sun, with haze in the distance. Plants,
// rock and snow follow slope and height, so that a picture of a level is like the next one. Throws
// std::bad_alloc.
SReliefPicture RenderScene(const SHeightField& field, const SSceneOptions& options);
