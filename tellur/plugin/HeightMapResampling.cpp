#include "tellur/plugin/HeightMapResampling.h"

#include "host/TerrainSize.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace
{

uint32_t GetRefinedSize(uint32_t uSize)
{
    return 2 * uSize - 1;
}

uint32_t GetCoarsenedSize(uint32_t uSize)
{
    return (uSize - 1) / 2 + 1;
}

// Null when there is no memory.
std::unique_ptr<SHeightMapData> MakeGrid(uint32_t uSize)
{
    auto pGrid = std::make_unique<SHeightMapData>(uSize);
    if (pGrid->heights == nullptr)
    {
        pGrid.reset();
    }
    return pGrid;
}

// A row that exists in the source, and the columns between its vertices.
void RefineKeptRow(const float* pSource, size_t nSize, float* pDest)
{
    for (size_t c = 0; c + 1 < nSize; ++c)
    {
        pDest[2 * c] = pSource[c];
        pDest[2 * c + 1] = (pSource[c] + pSource[c + 1]) / 2.0F;
    }
    pDest[2 * (nSize - 1)] = pSource[nSize - 1];
}

// The row between two rows of the source.
void RefineNewRow(const float* pUpper, const float* pLower, size_t nSize, float* pDest)
{
    for (size_t c = 0; c + 1 < nSize; ++c)
    {
        pDest[2 * c] = (pUpper[c] + pLower[c]) / 2.0F;
        pDest[2 * c + 1] = (pUpper[c] + pUpper[c + 1] + pLower[c] + pLower[c + 1]) / 4.0F;
    }
    pDest[2 * (nSize - 1)] = (pUpper[nSize - 1] + pLower[nSize - 1]) / 2.0F;
}

// Between which two source vertices of an axis a new one lies, and where.
struct SBetween
{
    uint32_t uFirst = 0;
    uint32_t uSecond = 0;
    float fFraction = 0.0F;
};

SBetween Locate(uint32_t uIndex, float fScale, uint32_t uSize)
{
    const float fAt = (static_cast<float>(uIndex) + 0.5F) * fScale;
    const uint32_t uFirst = std::min(static_cast<uint32_t>(fAt), uSize - 1);
    return {uFirst, std::min(uFirst + 1, uSize - 1), std::fmod(fAt, 1.0F)};
}

} // namespace

std::unique_ptr<SHeightMapData> Refine(const SHeightMapData& source)
{
    if (source.heights == nullptr)
    {
        return nullptr;
    }
    auto pResult = MakeGrid(GetRefinedSize(source.size));
    if (pResult == nullptr)
    {
        return nullptr;
    }
    for (uint32_t r = 0; r < source.size; ++r)
    {
        RefineKeptRow(source.GetRow(r), source.size, pResult->GetRow(2 * r));
        if (r + 1 < source.size)
        {
            RefineNewRow(
                source.GetRow(r), source.GetRow(r + 1), source.size, pResult->GetRow(2 * r + 1));
        }
    }
    return pResult;
}

std::unique_ptr<SHeightMapData> Coarsen(const SHeightMapData& source)
{
    const uint32_t uSize = source.heights != nullptr ? GetCoarsenedSize(source.size) : 0;
    if (uSize < TERRAIN_LEAST_CHOICE)
    {
        return nullptr;
    }
    auto pResult = MakeGrid(uSize);
    if (pResult == nullptr)
    {
        return nullptr;
    }
    const float fScale = static_cast<float>(source.size) / static_cast<float>(uSize);
    std::vector<SBetween> columns(uSize);
    for (uint32_t c = 0; c < uSize; ++c)
    {
        columns[c] = Locate(c, fScale, source.size);
    }
    for (uint32_t r = 0; r < uSize; ++r)
    {
        const SBetween row = Locate(r, fScale, source.size);
        const float fY = row.fFraction;
        const float* pUpper = source.GetRow(row.uFirst);
        const float* pLower = source.GetRow(row.uSecond);
        float* pDest = pResult->GetRow(r);
        for (uint32_t c = 0; c < uSize; ++c)
        {
            // The row's fraction weighs the column neighbour and the column's the row neighbour:
            // levels that were coarsened before must come out the same.
            const auto [x0, x1, fX] = columns[c];
            pDest[c] = (1.0F - fX) * (pUpper[x0] * (1.0F - fY) + pUpper[x1] * fY) +
                       fX * (pLower[x0] * (1.0F - fY) + pLower[x1] * fY);
        }
    }
    return pResult;
}

bool IsReachable(uint32_t uFrom, uint32_t uTo)
{
    uint32_t uSize = uFrom;
    if (uFrom < uTo)
    {
        while (uSize > 1 && uSize < uTo)
        {
            uSize = GetRefinedSize(uSize);
        }
        return uSize == uTo;
    }
    while (uSize > uTo && GetCoarsenedSize(uSize) >= TERRAIN_LEAST_CHOICE)
    {
        uSize = GetCoarsenedSize(uSize);
    }
    return uSize == uTo;
}
