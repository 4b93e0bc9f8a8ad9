#pragma once

#include "engine/terrain/CNormalField.h"

// Writes the cells wholly inside pBox (all of them when it is null) as a binary STL file, two
// triangles a cell, split from the cell's corner (x + 1, z) to (x, z + 1). STL's z axis points up:
// the terrain point (x, y, z) is written as (x, -z, y), normals upward. Memory does not grow with
// the terrain. Reports its progress about a hundred times. False with one logged line when no cell
// is inside, the file cannot be written or the work was cancelled; the old file then stays.
bool WriteStlFile(const char* pszPath, const SHeightView& view, const SExtents* pBox);
