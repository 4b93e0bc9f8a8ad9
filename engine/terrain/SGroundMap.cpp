#include "engine/terrain/SGroundMap.h"

#include <algorithm>
#include <cmath>
#include <numeric>

namespace
{

// uSize columns that begin iFirst columns before those of a grid of uBefore.
SGroundAxis MakeWindow(int64_t iFirst, int64_t iSize, uint32_t uBefore)
{
    SGroundAxis axis;
    axis.source.resize(static_cast<size_t>(iSize));
    const int64_t iLast = int64_t{uBefore} - 1;
    for (int64_t i = 0; i < iSize; ++i)
    {
        axis.source[static_cast<size_t>(i)] =
            static_cast<uint32_t>(std::clamp<int64_t>(i + iFirst, 0, iLast));
    }
    axis.uFirst = static_cast<uint32_t>(std::clamp<int64_t>(-iFirst, 0, iSize));
    axis.uEnd = static_cast<uint32_t>(std::clamp<int64_t>(uBefore - iFirst, axis.uFirst, iSize));
    return axis;
}

SGroundAxis MakeShifted(int32_t iBy, bool bWrap, uint32_t uSize)
{
    SGroundAxis axis = MakeWindow(-int64_t{iBy}, uSize, uSize);
    for (int64_t i = 0; i < int64_t{uSize} && bWrap; ++i)
    {
        const int64_t iFrom = (i - iBy) % int64_t{uSize};
        axis.source[static_cast<size_t>(i)] =
            static_cast<uint32_t>(iFrom < 0 ? iFrom + uSize : iFrom);
    }
    return bWrap ? SGroundAxis{std::move(axis.source), 0, uSize} : axis;
}

SGroundAxis MakeWhole(uint32_t uSize, bool bReversed)
{
    SGroundAxis axis = {std::vector<uint32_t>(uSize), 0, uSize};
    std::iota(axis.source.begin(), axis.source.end(), 0U);
    if (bReversed)
    {
        std::reverse(axis.source.begin(), axis.source.end());
    }
    return axis;
}

// So many cells as texels: those of the first side and of both sides of an extended picture.
struct STexels
{
    int32_t iFirst = 0;
    int32_t iLast = 0;
};

int32_t ScaleCells(int64_t iCells, uint32_t uCells, uint32_t uTexels)
{
    constexpr double MOST = 1e9;
    const double dTexels = std::round(static_cast<double>(iCells) * uTexels / uCells);
    return static_cast<int32_t>(std::clamp(dTexels, -MOST, MOST));
}

STexels ScaleSides(int32_t iFirst, int32_t iLast, uint32_t uCells, uint32_t uTexels)
{
    const int64_t iCells = int64_t{uCells} + iFirst + iLast;
    const int32_t iSide = std::max(ScaleCells(iCells, uCells, uTexels), 1);
    const int32_t iBefore = ScaleCells(iFirst, uCells, uTexels);
    return {iBefore, iSide - iBefore - static_cast<int32_t>(uTexels)};
}

} // namespace

bool IsGroundMoved(EGround eKind)
{
    return eKind != EGround::Size && eKind != EGround::Raise;
}

SGroundMap MakeGroundMap(const SGroundAct& act, uint32_t uSizeX, uint32_t uSizeZ)
{
    switch (act.eKind)
    {
    case EGround::Extend:
        return {MakeWindow(-int64_t{act.iWest}, int64_t{uSizeX} + act.iWest + act.iEast, uSizeX),
                MakeWindow(-int64_t{act.iNorth}, int64_t{uSizeZ} + act.iNorth + act.iSouth, uSizeZ),
                false};
    case EGround::Shift:
        return {MakeShifted(act.iCellsX, act.bWrap, uSizeX),
                MakeShifted(act.iCellsZ, act.bWrap, uSizeZ),
                false};
    case EGround::Turn:
        // Clockwise, the western edge becomes the northern one: its southern end comes first.
        return act.iTurns == 2 ? SGroundMap{MakeWhole(uSizeX, true), MakeWhole(uSizeZ, true), false}
                               : SGroundMap{MakeWhole(uSizeZ, act.iTurns == 1),
                                            MakeWhole(uSizeX, act.iTurns != 1),
                                            true};
    default:
        return {MakeWhole(uSizeX, act.eKind == EGround::MirrorX),
                MakeWhole(uSizeZ, act.eKind == EGround::MirrorZ),
                false};
    }
}

SGroundAct MakeTexelAct(
    const SGroundAct& act, uint32_t uCellsX, uint32_t uCellsZ, uint32_t uWidth, uint32_t uHeight)
{
    SGroundAct texels = act;
    const STexels x = ScaleSides(act.iWest, act.iEast, uCellsX, uWidth);
    const STexels z = ScaleSides(act.iNorth, act.iSouth, uCellsZ, uHeight);
    texels.iWest = x.iFirst;
    texels.iEast = x.iLast;
    texels.iNorth = z.iFirst;
    texels.iSouth = z.iLast;
    texels.iCellsX = ScaleCells(act.iCellsX, uCellsX, uWidth);
    texels.iCellsZ = ScaleCells(act.iCellsZ, uCellsZ, uHeight);
    return texels;
}
