#include "engine/terrain/GroundStatistics.h"

#include "engine/terrain/CTerrain.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace
{

// Three rows of heights, and how far the two outer ones and two columns are apart, inverted.
struct SRowSlopes
{
    const float* pUpper = nullptr;
    const float* pRow = nullptr;
    const float* pLower = nullptr;
    float fPerX = 0.0F;
    float fPerZ = 0.0F;
    double dSum = 0.0;
    float fSteepest = 0.0F;
};

// Columns uFirst to uEnd, whose neighbours lie nAway columns to the left and nBeyond to the right.
void AddSlopes(SRowSlopes& row, uint32_t uFirst, uint32_t uEnd, uint32_t nAway, uint32_t nBeyond)
{
    const float fPerX = row.fPerX / static_cast<float>(nAway + nBeyond);
    for (uint32_t x = uFirst; x < uEnd; ++x)
    {
        const float fX = (row.pRow[x + nBeyond] - row.pRow[x - nAway]) * fPerX;
        const float fZ = (row.pLower[x] - row.pUpper[x]) * row.fPerZ;
        const float fSlope = std::sqrt(fX * fX + fZ * fZ);
        row.dSum += static_cast<double>(fSlope);
        row.fSteepest = fSlope > row.fSteepest ? fSlope : row.fSteepest;
    }
}

void MeasureSlopes(const CTerrain& terrain, uint32_t uRow, SGroundStatistics& found)
{
    const SHeightView view = terrain.GetView();
    const uint32_t uUpper = uRow > 0 ? uRow - 1 : 0;
    const uint32_t uLower = std::min(uRow + 1, view.uSizeZ - 1);
    SRowSlopes row;
    row.pUpper = view.pHeights + size_t{uUpper} * view.uSizeX;
    row.pRow = view.pHeights + size_t{uRow} * view.uSizeX;
    row.pLower = view.pHeights + size_t{uLower} * view.uSizeX;
    row.fPerX = 1.0F / view.fStepX;
    row.fPerZ = 1.0F / (view.fStepZ * static_cast<float>(uLower - uUpper));
    const uint32_t uLast = view.uSizeX - 1;
    AddSlopes(row, 0, 1, 0, 1);
    AddSlopes(row, 1, uLast, 1, 1);
    AddSlopes(row, uLast, uLast + 1, 1, 0);
    found.dMeanSlope += row.dSum;
    found.dSteepest = std::max(found.dSteepest, static_cast<double>(row.fSteepest));
}

} // namespace

SGroundStatistics MeasureStatistics(const CTerrain& terrain)
{
    SGroundStatistics found;
    const uint32_t uSizeX = terrain.GetVerticesX();
    const uint32_t uSizeZ = terrain.GetVerticesZ();
    const float* pHeights = terrain.GetHeightData();
    found.nVertices = size_t{uSizeX} * uSizeZ;
    if (!terrain.GetHeightRange({0, 0, uSizeX, uSizeZ}, found.fLowest, found.fHighest))
    {
        const auto range = std::minmax_element(pHeights, pHeights + found.nVertices);
        found.fLowest = *range.first;
        found.fHighest = *range.second;
    }
    const float fRange = found.fHighest - found.fLowest;
    const float fPerHeight = fRange > 0.0F ? static_cast<float>(HISTOGRAM_BARS) / fRange : 0.0F;
    for (uint32_t z = 0; z < uSizeZ; ++z)
    {
        const float* pRow = pHeights + size_t{z} * uSizeX;
        for (uint32_t x = 0; x < uSizeX; ++x)
        {
            const auto nBar = static_cast<size_t>((pRow[x] - found.fLowest) * fPerHeight);
            ++found.bars[std::min(nBar, HISTOGRAM_BARS - 1)];
            found.nUneditable += pRow[x] < 0.0F ? 1U : 0U;
        }
        MeasureSlopes(terrain, z, found);
    }
    found.dMeanSlope /= static_cast<double>(found.nVertices);
    return found;
}
