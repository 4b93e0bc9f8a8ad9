// Single heights of a block of cells: the inner loop of undo and redo.

#include "engine/terrain/CTerrain.h"
#include "host/TerrainSize.h"

#include <algorithm>

namespace
{

// The vertices of one axis that a block's entries may name, as places in the block.
struct SBlockSide
{
    int64_t iVertex = 0; // of place 0, which may lie outside
    int32_t iFirst = 0;
    int32_t iLast = -1;
};

SBlockSide GetBlockSide(int iBlock, uint32_t uVertices)
{
    const int64_t iVertex = int64_t{iBlock} * TERRAIN_BLOCK_CELLS;
    const int64_t iLast = static_cast<int64_t>(uVertices) - 1 - iVertex;
    const int64_t iFirst = std::max<int64_t>(-iVertex, 0);
    if (iFirst > TERRAIN_BLOCK_CELLS || iLast < 0)
    {
        return {};
    }
    return {iVertex,
            static_cast<int32_t>(iFirst),
            static_cast<int32_t>(std::min<int64_t>(iLast, TERRAIN_BLOCK_CELLS))};
}

// The place that a block entry names, halves away from 0; -1 when it is outside the block.
int32_t GetBlockPlace(float fLocal)
{
    const bool bInside = fLocal >= 0.0F && fLocal <= static_cast<float>(TERRAIN_BLOCK_CELLS);
    const auto iPlace = static_cast<int32_t>(bInside ? fLocal : -1.0F);
    return iPlace + (fLocal - static_cast<float>(iPlace) >= 0.5F && bInside ? 1 : 0);
}

} // namespace

SVertexRect CTerrain::GetBlockRect(int iBlockX, int iBlockZ) const
{
    const auto clip = [](int64_t iVertex, uint32_t uSize)
    {
        return static_cast<uint32_t>(std::clamp(iVertex, int64_t{0}, int64_t{uSize}));
    };
    const int64_t iMinX = int64_t{iBlockX} * TERRAIN_BLOCK_CELLS;
    const int64_t iMinZ = int64_t{iBlockZ} * TERRAIN_BLOCK_CELLS;
    return {clip(iMinX, m_Field.uSizeX),
            clip(iMinZ, m_Field.uSizeZ),
            clip(iMinX + TERRAIN_BLOCK_CELLS + 1, m_Field.uSizeX),
            clip(iMinZ + TERRAIN_BLOCK_CELLS + 1, m_Field.uSizeZ)};
}

void CTerrain::SetBlockHeights(int iBlockX, int iBlockZ, const SBlockEntry* pEntries, size_t nCount)
{
    TellBefore(GetBlockRect(iBlockX, iBlockZ));
    const SBlockSide sideX = GetBlockSide(iBlockX, m_Field.uSizeX);
    const SBlockSide sideZ = GetBlockSide(iBlockZ, m_Field.uSizeZ);
    const auto iPitch = static_cast<int64_t>(m_Field.uSizeX);
    float* pHeights = m_Field.pHeights.get();
    const int64_t iOrigin = sideZ.iVertex * iPitch + sideX.iVertex; // may lie before the array
    int32_t iMinX = TERRAIN_BLOCK_CELLS + 1;
    int32_t iMinZ = TERRAIN_BLOCK_CELLS + 1;
    int32_t iMaxX = -1;
    int32_t iMaxZ = -1;
    for (size_t i = 0; pEntries != nullptr && i < nCount; ++i)
    {
        const int32_t iX = GetBlockPlace(pEntries[i].fLocalX);
        const int32_t iZ = GetBlockPlace(pEntries[i].fLocalZ);
        if (iX < sideX.iFirst || iX > sideX.iLast || iZ < sideZ.iFirst || iZ > sideZ.iLast)
        {
            continue;
        }
        pHeights[iOrigin + iZ * iPitch + iX] = pEntries[i].fHeight;
        iMinX = std::min(iMinX, iX);
        iMinZ = std::min(iMinZ, iZ);
        iMaxX = std::max(iMaxX, iX);
        iMaxZ = std::max(iMaxZ, iZ);
    }
    if (iMaxX >= 0)
    {
        OnHeightsChanged({static_cast<uint32_t>(sideX.iVertex + iMinX),
                          static_cast<uint32_t>(sideZ.iVertex + iMinZ),
                          static_cast<uint32_t>(sideX.iVertex + iMaxX + 1),
                          static_cast<uint32_t>(sideZ.iVertex + iMaxZ + 1)});
    }
}
