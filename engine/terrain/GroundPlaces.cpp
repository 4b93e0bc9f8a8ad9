// Where a place of the ground goes with an act, and the act that leads back.

#include "engine/terrain/GroundChange.h"

#include <cmath>
#include <utility>

SVec3 MovePlace(const SGroundMeasures& before, const SGroundAct& act, const SVec3& place)
{
    const auto dWidth = std::fabs(static_cast<double>(before.size.x));
    const auto dDepth = std::fabs(static_cast<double>(before.size.z));
    const double dStepX = dWidth / (before.uSizeX - 1.0);
    const double dStepZ = dDepth / (before.uSizeZ - 1.0);
    double dX = place.x;
    double dZ = place.z;
    switch (act.eKind)
    {
    case EGround::Size:
        dX *= std::fabs(static_cast<double>(act.size.x)) / dWidth;
        dZ *= std::fabs(static_cast<double>(act.size.z)) / dDepth;
        break;
    case EGround::Extend:
        dX += act.iWest * dStepX;
        dZ += act.iNorth * dStepZ;
        break;
    case EGround::Shift:
        dX += act.iCellsX * dStepX;
        dZ += act.iCellsZ * dStepZ;
        if (act.bWrap) // the first column comes one step behind the last one
        {
            const double dRoundX = dWidth + dStepX;
            const double dRoundZ = dDepth + dStepZ;
            dX -= std::floor(dX / dRoundX) * dRoundX;
            dZ -= std::floor(dZ / dRoundZ) * dRoundZ;
        }
        break;
    case EGround::Turn:
        for (int32_t i = 0; i < act.iTurns; ++i)
        {
            dX = std::exchange(dZ, dX);
            dX = (i % 2 == 0 ? dDepth : dWidth) - dX;
        }
        break;
    case EGround::MirrorX:
        dX = dWidth - dX;
        break;
    case EGround::MirrorZ:
        dZ = dDepth - dZ;
        break;
    case EGround::Raise:
        break;
    }
    return {static_cast<float>(dX), place.y, static_cast<float>(dZ)};
}

SGroundAct GetWayBack(const SGroundMeasures& before, const SGroundAct& act)
{
    constexpr int32_t RIGHT_ANGLES = 4;
    SGroundAct back = act;
    back.size = before.size;
    back.iWest = -act.iWest;
    back.iNorth = -act.iNorth;
    back.iEast = -act.iEast;
    back.iSouth = -act.iSouth;
    back.iCellsX = -act.iCellsX;
    back.iCellsZ = -act.iCellsZ;
    back.iTurns = RIGHT_ANGLES - act.iTurns;
    back.fBy = -act.fBy;
    return back;
}
