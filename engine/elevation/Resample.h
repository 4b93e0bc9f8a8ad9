#pragma once

#include "engine/elevation/SSampleView.h"
#include "host/Export.h"

// Editors and scripts choose from the supported sizes of 2^k + 1 vertices, 33 to 16385. This gives
// the one nearest to the longer side of the samples, and the larger one of two equally near.
TELLUR_API uint32_t GetNearestSize(uint32_t uColumns, uint32_t uRows);

// Gives the largest of these sizes that is not above uSamples; 0 when there is none.
TELLUR_API uint32_t GetLargestSize(uint32_t uSamples);

// Lays uSizeX x uSizeZ vertices (at least 2 each) over the samples, bilinear between them; the
// corner vertices are the corner samples. pHeights: room for all, row-major. False when the user
// cancelled.
TELLUR_API bool
Resample(const SSampleView& grid, uint32_t uSizeX, uint32_t uSizeZ, float* pHeights);

// Copies the window of uSizeX x uSizeZ samples whose first is at the column and row given; it lies
// inside the grid.
void CopyWindow(const SSampleView& grid,
                uint32_t uColumn,
                uint32_t uRow,
                uint32_t uSizeX,
                uint32_t uSizeZ,
                float* pHeights);
