#pragma once

#include <cstddef>
#include <cstdint>

struct SPatchBounds;

// The loops under CPatchTree: what it wants to know of whole patches that stand side by side. They
// run along the rows of all of them at once. pHeights: the corner of the first patch in an array
// with nPitch heights a row.

constexpr uint32_t PATCH_STRIP = 16; // patches at a time, at most

// Lowest and highest height of patches of level 0 with so many rows of vertices; both are written.
void MeasureRanges(
    const float* pHeights, size_t nPitch, uint32_t uRows, uint32_t uPatches, SPatchBounds* pBounds);

// How far the vertices that a level drops lie from the triangles that it keeps, at most. uHalf:
// vertices between those of the level below.
void MeasureSteps(
    const float* pHeights, size_t nPitch, uint32_t uHalf, uint32_t uPatches, float* pErrors);
