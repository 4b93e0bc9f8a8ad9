#pragma once

#include "host/HostTypes.h"

#include <cstdint>

enum class EGround : uint32_t
{
    Size,    // another size in terrain units, the same vertices
    Extend,  // cells come or go at the four sides
    Shift,   // the ground moves under the level's frame
    Turn,    // clockwise by right angles, seen from above with z = 0 at the top
    MirrorX, // west becomes east
    MirrorZ, // north becomes south
    Raise,   // all heights by one number
};

// What a person does to the ground of a level as a whole.
struct SGroundAct
{
    EGround eKind = EGround::Size;

    SVec3 size = {};     // terrain units; components may be negative, as those of any size vector
    bool bScale = false; // heights go with the limit; else they stay, and the limit cuts them

    int32_t iWest = 0; // cells that come on each side of an extended level; below 0: that go
    int32_t iNorth = 0;
    int32_t iEast = 0;
    int32_t iSouth = 0;
    bool bAtZero = false; // new ground lies at 0; else at the height of the edge that it begins at

    int32_t iCellsX = 0; // of a shift, to the east
    int32_t iCellsZ = 0; // to the south
    bool bWrap = false;  // what leaves the level comes in opposite; else the edge is continued

    int32_t iTurns = 1; // 1 to 3
    float fBy = 0.0F;   // terrain units
};
