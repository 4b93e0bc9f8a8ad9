#pragma once

#include "tellur/modification/CHeightTiles.h"

#include <cstddef>
#include <functional>

// Finds the vertices of a drag that changed, notes them in their tiles and returns their number.
// Traces of a change, too small to count, are taken back: onTraces is told the tile that has some.
// Needs no memory.
size_t FindChanges(const CHeightTiles& tiles,
                   const std::function<void(int iTileX, int iTileZ)>& onTraces);
