#pragma once

#include "engine/elevation/ImportPlan.h"
#include "engine/terrain/Relief.h"
#include "host/Export.h"

// How a file looks from above as the terrain of a plan, for a window that shows it before it is
// made.

// Takes means of the samples, at most uMost a side, out of a grid of any size; where whole blocks
// are void it fills them. False when the user cancelled.
TELLUR_API bool ThinGrid(const SSampleGrid& grid, uint32_t uMost, SSampleGrid& thin);

// Draws thinned samples, which lie as in the file, as the plan's terrain lies: x = 0, z = 0 is at
// the top left, in the terrain's true proportions, uPixels along the longer side. bShaded: as
// RenderRelief, else the lowest height is black and the highest white. False when there is no
// memory for it.
TELLUR_API bool DrawImport(const SSampleGrid& thin,
                           const SOrientation& orientation,
                           const SImportPlan& plan,
                           uint32_t uPixels,
                           bool bShaded,
                           SReliefPicture& picture);
