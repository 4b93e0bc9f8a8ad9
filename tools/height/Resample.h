#pragma once

#include "tools/height/SSampleGrid.h"

// The supported sizes that editors and scripts choose from: 2^k + 1 vertices, 33 to 16385. Gives
// the one nearest to the longer side of the samples.
uint32_t GetNearestSize(uint32_t uColumns, uint32_t uRows);

// Lays uSizeX x uSizeZ vertices (at least 2 each) over the samples, bilinear between them; the
// corner vertices are the corner samples. pHeights: room for all, row-major.
void Resample(const SSampleGrid& grid, uint32_t uSizeX, uint32_t uSizeZ, float* pHeights);
