#include "engine/terrain/GroundChange.h"

#include "engine/terrain/CTerrain.h"
#include "engine/terrain/SGroundMap.h"
#include "host/Log.h"
#include "host/Progress.h"
#include "host/TerrainSize.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr uint32_t SIDE = CVertexProtection::SIDE; // of the blocks in which ground is moved, too

// A height as the act wants it: fFactor * height + fBy, cut at fLimit.
struct SHeightRule
{
    double fFactor = 1.0;
    double fBy = 0.0;
    double fLimit = 0.0;

    double GetWanted(float fHeight) const { return fFactor * static_cast<double>(fHeight) + fBy; }

    float GetHeight(float fHeight) const
    {
        return fHeight < 0.0F ? static_cast<float>(fHeight)
                              : static_cast<float>(std::clamp(GetWanted(fHeight), 0.0, fLimit));
    }
};

SHeightRule MakeRule(const SVec3& before, const SGroundAct& act)
{
    SHeightRule rule;
    rule.fLimit = std::fabs(static_cast<double>(before.y));
    if (act.eKind == EGround::Size)
    {
        const double fLimit = std::fabs(static_cast<double>(act.size.y));
        rule.fFactor = act.bScale ? fLimit / rule.fLimit : 1.0;
        rule.fLimit = fLimit;
    }
    rule.fBy = act.eKind == EGround::Raise ? static_cast<double>(act.fBy) : 0.0;
    return rule;
}

constexpr uint32_t CUT_TILE = 64; // vertices a side

// Heights below 0 are left alone. The rule never falls where heights rise, so that the ends of a
// range speak for what is between.
size_t CountCutInTile(const CTerrain& terrain, const SHeightRule& rule, const SVertexRect& tile)
{
    const auto isCut = [&rule](float fHeight)
    {
        const double fWanted = rule.GetWanted(fHeight);
        return fHeight >= 0.0F && (fWanted < 0.0 || fWanted > rule.fLimit);
    };
    SHeightRange range;
    if (terrain.GetHeightRange(tile, range.fMin, range.fMax))
    {
        const double fLowest = rule.GetWanted(std::max(range.fMin, 0.0F));
        const double fHighest = rule.GetWanted(range.fMax);
        if (fLowest >= 0.0 && fHighest <= rule.fLimit)
        {
            return 0;
        }
        if (range.fMin >= 0.0F && (fHighest < 0.0 || fLowest > rule.fLimit))
        {
            return size_t{tile.uEndX - tile.uMinX} * (tile.uEndZ - tile.uMinZ);
        }
    }
    size_t nCut = 0;
    for (uint32_t z = tile.uMinZ; z < tile.uEndZ; ++z)
    {
        const float* pRow = terrain.GetHeightData() + size_t{z} * terrain.GetVerticesX();
        nCut += static_cast<size_t>(std::count_if(pRow + tile.uMinX, pRow + tile.uEndX, isCut));
    }
    return nCut;
}

bool AdjustHeights(const CTerrain& terrain, const SHeightRule& rule, SHeightField& field)
{
    CProgressSteps progress("Changing the ground", field.uSizeZ);
    for (uint32_t z = 0; z < field.uSizeZ; ++z)
    {
        if (!progress.Reach(z))
        {
            return false;
        }
        const float* pFrom = terrain.GetHeightData() + size_t{z} * field.uSizeX;
        std::transform(pFrom,
                       pFrom + field.uSizeX,
                       field.pHeights.get() + size_t{z} * field.uSizeX,
                       [&rule](float fHeight) { return rule.GetHeight(fHeight); });
    }
    field.protection = terrain.GetProtection();
    return true;
}

// One block of rows. A turned terrain in blocks of columns, too, so that rows are read and written
// in short runs; others in whole rows.
void MoveRows(const CTerrain& terrain,
              const SGroundMap& map,
              bool bAtZero,
              uint32_t uRow,
              SHeightField& field)
{
    const size_t nStepAlong = map.bSwapped ? terrain.GetVerticesX() : 1;
    const size_t nStepDown = map.bSwapped ? 1 : terrain.GetVerticesX();
    const uint32_t uEndZ = std::min(uRow + SIDE, field.uSizeZ);
    const uint32_t uWidth = map.bSwapped ? SIDE : field.uSizeX;
    for (uint32_t uColumn = 0; uColumn < field.uSizeX; uColumn += uWidth)
    {
        const uint32_t uEndX = std::min(uColumn + uWidth, field.uSizeX);
        for (uint32_t z = uRow; z < uEndZ; ++z)
        {
            const float* pFrom = terrain.GetHeightData() + map.down.source[z] * nStepDown;
            float* pTo = field.pHeights.get() + size_t{z} * field.uSizeX;
            for (uint32_t x = uColumn; x < uEndX; ++x)
            {
                pTo[x] = pFrom[map.along.source[x] * nStepAlong];
            }
        }
    }
    for (uint32_t z = uRow; z < uEndZ && bAtZero; ++z)
    {
        float* pTo = field.pHeights.get() + size_t{z} * field.uSizeX;
        const bool bNew = z < map.down.uFirst || z >= map.down.uEnd;
        std::fill(pTo, pTo + (bNew ? field.uSizeX : map.along.uFirst), 0.0F);
        std::fill(pTo + (bNew ? field.uSizeX : map.along.uEnd), pTo + field.uSizeX, 0.0F);
    }
}

uint64_t GetMovedBits(const CVertexProtection& before,
                      const SGroundMap& map,
                      uint32_t uColumn,
                      uint32_t uRow)
{
    const uint32_t uFirst = std::max(uColumn, map.along.uFirst);
    const uint32_t uEnd = std::min(uColumn + SIDE, map.along.uEnd);
    const bool bNew = uRow < map.down.uFirst || uRow >= map.down.uEnd;
    uint64_t uBits = 0;
    for (uint32_t x = uFirst; x < uEnd && !bNew; ++x)
    {
        const uint32_t uAlong = map.along.source[x];
        const uint32_t uDown = map.down.source[uRow];
        const bool bProtected =
            map.bSwapped ? before.IsProtected(uDown, uAlong) : before.IsProtected(uAlong, uDown);
        uBits |= uint64_t{bProtected} << (x - uColumn);
    }
    return uBits;
}

CVertexProtection MoveProtection(const CVertexProtection& before, const SGroundMap& map)
{
    CVertexProtection moved(map.GetSizeX(), map.GetSizeZ());
    const uint32_t uSquares = before.IsEmpty() ? 0 : moved.GetSquaresX() * moved.GetSquaresZ();
    for (uint32_t i = 0; i < uSquares; ++i)
    {
        const uint32_t uSquareX = i % moved.GetSquaresX();
        const uint32_t uSquareZ = i / moved.GetSquaresX();
        const uint32_t uEnd = std::min((uSquareZ + 1) * SIDE, map.GetSizeZ());
        CVertexProtection::Square bits = {};
        for (uint32_t z = uSquareZ * SIDE; z < uEnd; ++z)
        {
            bits[z % SIDE] = GetMovedBits(before, map, uSquareX * SIDE, z);
        }
        moved.SetSquare(uSquareX, uSquareZ, moved.MakeSquare(uSquareX, uSquareZ, bits));
    }
    return moved;
}

bool MoveGround(const CTerrain& terrain, const SGroundAct& act, SHeightField& field)
{
    const SGroundMap map = MakeGroundMap(act, terrain.GetVerticesX(), terrain.GetVerticesZ());
    const bool bAtZero = act.eKind == EGround::Extend && act.bAtZero;
    CProgressSteps progress("Moving the ground", field.uSizeZ);
    for (uint32_t z = 0; z < field.uSizeZ; z += SIDE)
    {
        if (!progress.Reach(z))
        {
            return false;
        }
        MoveRows(terrain, map, bAtZero, z, field);
    }
    field.protection = MoveProtection(terrain.GetProtection(), map);
    return true;
}

bool IsCount(int64_t iVertices)
{
    return iVertices >= TERRAIN_MIN_VERTICES && iVertices <= TERRAIN_MAX_VERTICES;
}

// The place on the map goes with the ground. What comes in opposite has none that a frame could
// say.
SGeoTags MoveTags(const CTerrain& terrain, const SGroundAct& act)
{
    SGeoTags tags = terrain.GetGeoTags();
    const auto dCellsX = static_cast<double>(terrain.GetVerticesX() - 1);
    const auto dCellsZ = static_cast<double>(terrain.GetVerticesZ() - 1);
    switch (act.eKind)
    {
    case EGround::Size:
    case EGround::Raise:
        break;
    case EGround::Extend:
        tags.Crop(-static_cast<double>(act.iWest) / dCellsX,
                  1.0 + act.iEast / dCellsX,
                  -static_cast<double>(act.iNorth) / dCellsZ,
                  1.0 + act.iSouth / dCellsZ);
        break;
    case EGround::Shift:
        if (act.bWrap)
        {
            return {};
        }
        tags.Crop(-static_cast<double>(act.iCellsX) / dCellsX,
                  1.0 - act.iCellsX / dCellsX,
                  -static_cast<double>(act.iCellsZ) / dCellsZ,
                  1.0 - act.iCellsZ / dCellsZ);
        break;
    case EGround::Turn:
        tags.Turn(static_cast<uint32_t>(act.iTurns), false, false);
        break;
    case EGround::MirrorX:
        tags.Turn(0, true, false);
        break;
    case EGround::MirrorZ:
        tags.Turn(0, false, true);
        break;
    }
    return tags;
}

} // namespace

SGroundMeasures GetGroundMeasures(const CTerrain& terrain)
{
    return {terrain.GetVerticesX(), terrain.GetVerticesZ(), terrain.GetSizeVector()};
}

const char* FindGroundFault(const SGroundMeasures& before, const SGroundAct& act)
{
    const bool bExtend = act.eKind == EGround::Extend;
    if (bExtend && (!IsCount(int64_t{before.uSizeX} + act.iWest + act.iEast) ||
                    !IsCount(int64_t{before.uSizeZ} + act.iNorth + act.iSouth)))
    {
        return "a level has 2 to 16385 vertices per side";
    }
    if (act.eKind == EGround::Turn && (act.iTurns < 1 || act.iTurns > 3))
    {
        return "a level is turned by 1 to 3 right angles";
    }
    if (act.eKind == EGround::Raise && !std::isfinite(act.fBy))
    {
        return "the height is not finite";
    }
    return IsSizeVectorValid(GetMeasuresAfter(before, act).size)
               ? nullptr
               : "a component of the size is 0 or not finite";
}

SGroundMeasures GetMeasuresAfter(const SGroundMeasures& before, const SGroundAct& act)
{
    const auto scale = [](float fSize, uint32_t uFrom, uint32_t uTo)
    {
        return static_cast<float>(static_cast<double>(fSize) / (uFrom - 1.0) * (uTo - 1.0));
    };
    SGroundMeasures after = before;
    if (act.eKind == EGround::Size)
    {
        after.size = act.size;
    }
    else if (act.eKind == EGround::Extend)
    {
        after.uSizeX = static_cast<uint32_t>(int64_t{before.uSizeX} + act.iWest + act.iEast);
        after.uSizeZ = static_cast<uint32_t>(int64_t{before.uSizeZ} + act.iNorth + act.iSouth);
        after.size.x = scale(before.size.x, before.uSizeX, after.uSizeX);
        after.size.z = scale(before.size.z, before.uSizeZ, after.uSizeZ);
    }
    else if (act.eKind == EGround::Turn && act.iTurns != 2)
    {
        std::swap(after.uSizeX, after.uSizeZ);
        std::swap(after.size.x, after.size.z);
    }
    return after;
}

bool MakeChangedGround(const CTerrain& terrain, const SGroundAct& act, SHeightField& field)
{
    const SGroundMeasures after = GetMeasuresAfter(GetGroundMeasures(terrain), act);
    SHeightField made;
    if (!made.Allocate(after.uSizeX, after.uSizeZ))
    {
        CrashLog(
            "[MakeChangedGround] no memory for %u x %u vertices\n", after.uSizeX, after.uSizeZ);
        return false;
    }
    made.size = after.size;
    made.geo = MoveTags(terrain, act);
    const bool bMade = IsGroundMoved(act.eKind)
                           ? MoveGround(terrain, act, made)
                           : AdjustHeights(terrain, MakeRule(terrain.GetSizeVector(), act), made);
    if (!bMade)
    {
        LogR("[MakeChangedGround] cancelled\n");
        return false;
    }
    field = std::move(made);
    return true;
}

size_t CountCutVertices(const CTerrain& terrain, const SGroundAct& act)
{
    const SHeightRule rule = MakeRule(terrain.GetSizeVector(), act);
    SHeightRange range;
    const SVertexRect whole = {0, 0, terrain.GetVerticesX(), terrain.GetVerticesZ()};
    // Mostly none, which the highest and the lowest place tell.
    if (IsGroundMoved(act.eKind) || (terrain.GetHeightRange(whole, range.fMin, range.fMax) &&
                                     rule.GetWanted(std::max(range.fMin, 0.0F)) >= 0.0 &&
                                     rule.GetWanted(range.fMax) <= rule.fLimit))
    {
        return 0;
    }
    // By tiles, whose ranges mostly tell of all their vertices at once: this follows every key.
    size_t nCut = 0;
    for (uint32_t z = 0; z < whole.uEndZ; z += CUT_TILE)
    {
        for (uint32_t x = 0; x < whole.uEndX; x += CUT_TILE)
        {
            nCut += CountCutInTile(
                terrain,
                rule,
                {x, z, std::min(x + CUT_TILE, whole.uEndX), std::min(z + CUT_TILE, whole.uEndZ)});
        }
    }
    return nCut;
}
