#pragma once

#include "engine/elevation/SSampleGrid.h"
#include "host/Export.h"

#include <cstddef>

// Replaces the voids of a grid by the means of the samples around them, from the rim of each hole
// inward, ring by ring. Gives their number. A grid without a single sample stays as it is.
TELLUR_API size_t FillVoids(SSampleGrid& grid);
