#pragma once

#include <cstdint>

// What the last frame cost.
struct SRenderStatistics
{
    uint32_t uTriangles = 0; // of the ground
    uint32_t uPatches = 0;
    uint32_t uDrawCalls = 0;
    uint64_t uUploadedBytes = 0; // heights and textures
    bool bComplete = true;       // false: more of the terrain comes with the next frames
};
