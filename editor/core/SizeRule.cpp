#include "editor/core/SizeRule.h"

#include "engine/terrain/CTerrain.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

// Of the limit. The first hills on flat ground are no measure for the next ones yet.
constexpr float FLAT_SHARE = 0.05F;
constexpr float FEWEST_LEVELS = 2.0F;
constexpr float MOST_LEVELS = 1000.0F;

// Of the corners of one block of the first level.
void AddEditable(const CTerrain& terrain, uint32_t uBlockX, uint32_t uBlockZ, SHeightRange& range)
{
    const uint32_t uX = uBlockX * CHeightPyramid::BLOCK;
    const uint32_t uZ = uBlockZ * CHeightPyramid::BLOCK;
    const uint32_t uEndX = std::min(uX + CHeightPyramid::BLOCK + 1, terrain.GetVerticesX());
    const uint32_t uEndZ = std::min(uZ + CHeightPyramid::BLOCK + 1, terrain.GetVerticesZ());
    for (uint32_t z = uZ; z < uEndZ; ++z)
    {
        const float* pRow = terrain.GetHeightData() + size_t{z} * terrain.GetVerticesX();
        for (uint32_t x = uX; x < uEndX; ++x)
        {
            if (pRow[x] >= 0.0F)
            {
                range.Add(pRow[x]);
            }
        }
    }
}

// Of all that are not below 0; empty without one. Only blocks that hold such a vertex are looked
// into.
SHeightRange FindEditableRange(const CTerrain& terrain)
{
    SHeightRange range;
    const SVertexRect whole = {0, 0, terrain.GetVerticesX(), terrain.GetVerticesZ()};
    const CHeightPyramid* pPyramid = terrain.GetPyramid();
    if (!terrain.GetHeightRange(whole, range.fMin, range.fMax) || range.fMin >= 0.0F ||
        pPyramid == nullptr)
    {
        range.fMin = std::max(range.fMin, 0.0F);
        return range;
    }
    range = {};
    for (uint32_t uZ = 0; uZ < pPyramid->GetBlocksZ(0); ++uZ)
    {
        for (uint32_t uX = 0; uX < pPyramid->GetBlocksX(0); ++uX)
        {
            const SHeightRange& block = pPyramid->GetBlock(0, uX, uZ);
            if (block.fMin >= 0.0F)
            {
                range.Add(block);
                continue;
            }
            AddEditable(terrain, uX, uZ, range);
        }
    }
    return range;
}

// fScale: of what the digits are three.
float RoundToDigits(float fValue, float fScale)
{
    constexpr double DIGITS = 3.0;
    if (!(fScale > 0.0F))
    {
        return fValue;
    }
    const double fUnit =
        std::pow(10.0, std::floor(std::log10(static_cast<double>(fScale))) + 1.0 - DIGITS);
    return static_cast<float>(std::round(static_cast<double>(fValue) / fUnit) * fUnit);
}

} // namespace

SGroundSize MeasureGround(const CTerrain& terrain)
{
    const SVec3 size = terrain.GetSize();
    const SHeightRange range = FindEditableRange(terrain);
    SGroundSize ground;
    ground.fSide = std::min(size.x, size.z);
    ground.fLimit = size.y;
    ground.fLowest = range.IsEmpty() ? 0.0F : range.fMin;
    ground.fRange = range.IsEmpty() ? 0.0F : range.fMax - range.fMin;
    ground.bFlat = ground.fRange < ground.fLimit * FLAT_SHARE || ground.fRange <= 0.0F;
    if (ground.bFlat)
    {
        ground.fRange = ground.fLimit;
    }
    return ground;
}

SToolSizes FitSizes(const SSizeShare& share, const SGroundSize& ground)
{
    const float fAmount = share.fAmount * ground.fRange;
    SToolSizes sizes;
    sizes.fExtent = RoundToDigits(share.fExtent * ground.fSide, share.fExtent * ground.fSide);
    sizes.fAmount = std::numeric_limits<float>::quiet_NaN();
    switch (share.eKind)
    {
    case EAmountKind::None:
        break;
    case EAmountKind::Step:
        sizes.fAmount = RoundToDigits(fAmount, std::fabs(fAmount));
        break;
    case EAmountKind::Height:
    case EAmountKind::Pick:
    case EAmountKind::Plateau:
        sizes.fAmount =
            std::min(RoundToDigits(ground.fLowest + fAmount, ground.fRange), ground.fLimit);
        sizes.bPicksHeight = share.eKind == EAmountKind::Pick ||
                             (share.eKind == EAmountKind::Plateau && !ground.bFlat);
        break;
    case EAmountKind::Levels:
        sizes.fAmount =
            fAmount > 0.0F
                ? std::clamp(std::round(ground.fLimit / fAmount), FEWEST_LEVELS, MOST_LEVELS)
                : FEWEST_LEVELS;
        break;
    }
    return sizes;
}
