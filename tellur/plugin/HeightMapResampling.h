#pragma once

#include "tellur/plugin/SHeightMapData.h"

#include <memory>

// One step between the sizes 32 * 2^k + 1 that a terrain is offered in. Both read every source row
// once and give null for a source without heights and when there is no memory.

// n to 2n - 1 vertices per side: the old vertices keep their heights, those between are the means
// of their two or four neighbours.
std::unique_ptr<SHeightMapData> Refine(const SHeightMapData& source);

// n to (n - 1) / 2 + 1 vertices per side, each sampled between four source vertices at
// (i + 0.5) * n / m. Null too when the result would have fewer than 33.
std::unique_ptr<SHeightMapData> Coarsen(const SHeightMapData& source);

// Whether repeated steps in one direction lead from the one size to the other.
bool IsReachable(uint32_t uFrom, uint32_t uTo);
