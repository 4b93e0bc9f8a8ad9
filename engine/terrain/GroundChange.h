#pragma once

#include "engine/terrain/SGroundAct.h"
#include "host/Export.h"

#include <cstddef>
#include <cstdint>

class CTerrain;
struct SHeightField;

// The ground of a level changed as a whole, as a person asks for it.

// What a terrain measures: vertices and the size vector.
struct SGroundMeasures
{
    uint32_t uSizeX = 0;
    uint32_t uSizeZ = 0;
    SVec3 size;
};

TELLUR_API SGroundMeasures GetGroundMeasures(const CTerrain& terrain);

// Why a terrain cannot take the act, for a person; null when it can.
TELLUR_API const char* FindGroundFault(const SGroundMeasures& before, const SGroundAct& act);

// What a terrain measures after an act without a fault. The spacing of the vertices stays, also of
// a cropped one; only EGround::Size changes it.
TELLUR_API SGroundMeasures GetMeasuresAfter(const SGroundMeasures& before, const SGroundAct& act);

// Makes the ground that an act without a fault leads to, with the protection, which moves along;
// new ground is not protected. Heights are kept from 0 to the limit; those below 0, which nobody
// may edit, stay below. False, after one logged line or when the user cancels: the memory is not
// there.
TELLUR_API bool
MakeChangedGround(const CTerrain& terrain, const SGroundAct& act, SHeightField& field);

// How many vertices the limit, or 0, would keep from what the act wants of them.
TELLUR_API size_t CountCutVertices(const CTerrain& terrain, const SGroundAct& act);

// Where a place of the ground is after an act without a fault, in terrain units; y stays.
TELLUR_API SVec3 MovePlace(const SGroundMeasures& before,
                           const SGroundAct& act,
                           const SVec3& place);

// The act that brings each place back. What was cut off does not come back with it.
TELLUR_API SGroundAct GetWayBack(const SGroundMeasures& before, const SGroundAct& act);
