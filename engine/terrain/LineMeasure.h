#pragma once

#include "host/Export.h"
#include "host/HostTypes.h"

#include <cstddef>
#include <vector>

class CTerrain;

// What lies between two places of the ground. Lengths in terrain units, angles in degrees.
struct SLineMeasure
{
    float fDistance = 0.0F; // on the map
    float fGround = 0.0F;   // along the ground, up and down included
    float fRise = 0.0F;     // height at the end less height at the beginning
    float fClimb = 0.0F;    // all that goes up on the way
    float fDrop = 0.0F;     // all that goes down, positive
    float fSlope = 0.0F;    // from end to end, 0 to 90
    float fSteepest = 0.0F; // of the way between two samples
};

// Samples the ground on the straight line from one place to another; y counts nowhere. Places
// beside the terrain count as its edge. heights: evenly spaced, half a cell apart or nMost of them
// where that is fewer, at least two; kept for its memory.
TELLUR_API SLineMeasure MeasureLine(const CTerrain& terrain,
                                    const SVec3& from,
                                    const SVec3& to,
                                    size_t nMost,
                                    std::vector<float>& heights);

// How steep the ground is at a place, in degrees: of the cell around it.
TELLUR_API float MeasureSlope(const CTerrain& terrain, const SVec3& at);
