#pragma once

#include "host/Export.h"

#include <array>
#include <cstddef>

class CTerrain;

constexpr size_t HISTOGRAM_BARS = 128;

// What the ground of a level is like. Heights in terrain units; slopes as rise over run, at each
// vertex from its neighbours on both sides.
struct SGroundStatistics
{
    size_t nVertices = 0;
    size_t nUneditable = 0; // vertices below 0
    float fLowest = 0.0F;
    float fHighest = 0.0F;
    double dMeanSlope = 0.0;
    double dSteepest = 0.0;
    // Vertices by height: even parts of the range from the lowest to the highest place; all in the
    // first one where the ground is flat.
    std::array<size_t, HISTOGRAM_BARS> bars = {};
};

// Looks at every vertex once: about a tenth of a second for 4097 x 4097.
TELLUR_API SGroundStatistics MeasureStatistics(const CTerrain& terrain);
