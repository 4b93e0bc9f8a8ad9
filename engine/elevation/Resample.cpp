#include "engine/elevation/Resample.h"

#include "host/Progress.h"
#include "host/TerrainSize.h"

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace
{

constexpr uint32_t SMALLEST_CELLS = TERRAIN_LEAST_CHOICE - 1;

// Between which two samples of an axis a vertex lies, and where.
struct SBetween
{
    uint32_t uFirst = 0;
    float fFraction = 0.0F;
};

SBetween Locate(uint32_t uVertex, uint32_t uVertices, uint32_t uSamples)
{
    const double dAt = static_cast<double>(uVertex) * (uSamples - 1) / (uVertices - 1);
    // The last vertex lies at the end of the last pair of samples.
    const uint32_t uFirst = std::min(static_cast<uint32_t>(dAt), uSamples - 2);
    return {uFirst, static_cast<float>(dAt - uFirst)};
}

float Mix(float fFirst, float fSecond, float fFraction)
{
    // In this form a vertex on a sample gets that sample to the last bit.
    return fFirst * (1.0F - fFraction) + fSecond * fFraction;
}

} // namespace

uint32_t GetNearestSize(uint32_t uColumns, uint32_t uRows)
{
    const int64_t iWanted = int64_t{std::max(uColumns, uRows)} - 1;
    int64_t iBest = SMALLEST_CELLS;
    for (int64_t iCells = SMALLEST_CELLS; iCells <= TERRAIN_MAX_CELLS; iCells *= 2)
    {
        iBest = std::abs(iCells - iWanted) <= std::abs(iBest - iWanted) ? iCells : iBest;
    }
    return static_cast<uint32_t>(iBest + 1);
}

uint32_t GetLargestSize(uint32_t uSamples)
{
    uint32_t uBest = 0;
    for (uint32_t uCells = SMALLEST_CELLS; uCells <= TERRAIN_MAX_CELLS && uCells < uSamples;
         uCells *= 2)
    {
        uBest = uCells + 1;
    }
    return uBest;
}

bool Resample(const SSampleView& grid, uint32_t uSizeX, uint32_t uSizeZ, float* pHeights)
{
    if (uSizeX == grid.uColumns && uSizeZ == grid.uRows)
    {
        std::copy_n(grid.pSamples, grid.GetCount(), pHeights); // every bit, -0 too
        return true;
    }
    // Where columns lie between samples is the same in every row.
    std::vector<SBetween> columns(uSizeX);
    for (uint32_t x = 0; x < uSizeX; ++x)
    {
        columns[x] = Locate(x, uSizeX, grid.uColumns);
    }
    CProgressSteps progress("Making the terrain", uSizeZ);
    for (uint32_t z = 0; z < uSizeZ; ++z)
    {
        if (!progress.Reach(z))
        {
            return false;
        }
        const SBetween row = Locate(z, uSizeZ, grid.uRows);
        const float* pUpper = grid.pSamples + static_cast<size_t>(row.uFirst) * grid.uColumns;
        const float* pLower = pUpper + grid.uColumns;
        float* pOut = pHeights + static_cast<size_t>(z) * uSizeX;
        for (uint32_t x = 0; x < uSizeX; ++x)
        {
            const auto [uFirst, fFraction] = columns[x];
            pOut[x] = Mix(Mix(pUpper[uFirst], pUpper[uFirst + 1], fFraction),
                          Mix(pLower[uFirst], pLower[uFirst + 1], fFraction),
                          row.fFraction);
        }
    }
    return true;
}

void CopyWindow(const SSampleView& grid,
                uint32_t uColumn,
                uint32_t uRow,
                uint32_t uSizeX,
                uint32_t uSizeZ,
                float* pHeights)
{
    const float* pRow = grid.pSamples + static_cast<size_t>(uRow) * grid.uColumns + uColumn;
    for (uint32_t z = 0; z < uSizeZ; ++z)
    {
        pHeights = std::copy_n(pRow, uSizeX, pHeights);
        pRow += grid.uColumns;
    }
}
