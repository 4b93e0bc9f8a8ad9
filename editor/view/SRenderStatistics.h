#pragma once

#include <cstdint>

// What the last frame cost.
struct SRenderStatistics
{
    uint32_t uTriangles = 0; // of the ground
    uint32_t uPatches = 0;
    uint32_t uDrawCalls = 0;
    uint64_t uUploadedBytes = 0; // heights, normals and textures
    bool bComplete = true;       // false: tiles of the terrain come with the next frames
};
