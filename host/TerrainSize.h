#pragma once

#include <cstdint>

// Vertices per side that a terrain may have, and cells per side of the largest.
constexpr uint32_t TERRAIN_MIN_VERTICES = 2;
constexpr uint32_t TERRAIN_MAX_VERTICES = 16385;
constexpr uint32_t TERRAIN_MAX_CELLS = TERRAIN_MAX_VERTICES - 1;

// The sizes that people choose from are 2^k + 1 vertices per side: from this one to the largest.
constexpr uint32_t TERRAIN_LEAST_CHOICE = 33;

// Cells per side of a block of Terrain::SetBlockHeights.
constexpr int32_t TERRAIN_BLOCK_CELLS = 32;
