// Single heights of a block of cells: the inner loop of undo and redo.

#include "engine/terrain/CTerrain.h"
#include "host/TerrainSize.h"
#include "host/VectorLoop.h"

#include <algorithm>
#include <bit>
#include <cstdint>

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

// Entries of a block that are placed at a time: their places stay in the nearest cache.
constexpr size_t PLACED_ENTRIES = 128;

// What so many entries have touched, in places of the block; empty while iMaxX is below iMinX.
struct STouched
{
    int32_t iMinX = TERRAIN_BLOCK_CELLS + 1;
    int32_t iMinZ = TERRAIN_BLOCK_CELLS + 1;
    int32_t iMaxX = -1;
    int32_t iMaxZ = -1;
};

// The place of one axis that an entry names, halves away from 0; -1 for none in the block. On bits,
// whose order is that of the numbers from 0 on: the sign of a difference makes a mask.
inline int32_t GetBlockPlace(float fLocal)
{
    constexpr auto LAST = std::bit_cast<uint32_t>(static_cast<float>(TERRAIN_BLOCK_CELLS));
    constexpr auto NONE = std::bit_cast<uint32_t>(-1.0F);
    constexpr auto HALF = std::bit_cast<uint32_t>(0.5F);
    const auto uBits = std::bit_cast<uint32_t>(fLocal + 0.0F); // no -0
    const uint32_t uOutside = 0U - ((uBits | (LAST - uBits)) >> 31U);
    const auto fInside = std::bit_cast<float>((uBits & ~uOutside) | (NONE & uOutside));
    const auto iPlace = static_cast<int32_t>(fInside);
    const auto uRest = std::bit_cast<uint32_t>(fInside - static_cast<float>(iPlace));
    return iPlace + 1 - static_cast<int32_t>((uRest - HALF) >> 31U);
}

// How far behind place (0, 0) of the block each entry's vertex lies; -1 where the block or the
// terrain has none.
TELLUR_LOOP_BODY void PlaceEntries(const SBlockEntry* pEntries,
                                   size_t nCount,
                                   SBlockSide x,
                                   SBlockSide z,
                                   int32_t iPitch,
                                   int32_t* pPlaces,
                                   STouched& touched)
{
    // Copies, since as far as the compiler knows a write to the places could change touched.
    int32_t iMinX = touched.iMinX;
    int32_t iMinZ = touched.iMinZ;
    int32_t iMaxX = touched.iMaxX;
    int32_t iMaxZ = touched.iMaxZ;
    for (size_t i = 0; i < nCount; ++i)
    {
        const int32_t iX = GetBlockPlace(pEntries[i].fLocalX);
        const int32_t iZ = GetBlockPlace(pEntries[i].fLocalZ);
        const int32_t iNone =
            ((iX - x.iFirst) | (x.iLast - iX) | (iZ - z.iFirst) | (z.iLast - iZ)) >>
            31; // all bits where the terrain has none
        pPlaces[i] = (iZ * iPitch + iX) | iNone;
        const int32_t iLeastX = (iX & ~iNone) | (iNone & INT32_MAX);
        const int32_t iLeastZ = (iZ & ~iNone) | (iNone & INT32_MAX);
        iMinX = iLeastX < iMinX ? iLeastX : iMinX;
        iMinZ = iLeastZ < iMinZ ? iLeastZ : iMinZ;
        iMaxX = (iX | iNone) > iMaxX ? (iX | iNone) : iMaxX;
        iMaxZ = (iZ | iNone) > iMaxZ ? (iZ | iNone) : iMaxZ;
    }
    touched = {iMinX, iMinZ, iMaxX, iMaxZ};
}

// iPlace: of the vertex in the heights.
bool IsGuarded(const CVertexProtection& protection, int64_t iPlace, int32_t iPitch)
{
    return protection.IsProtected(static_cast<uint32_t>(iPlace % iPitch),
                                  static_cast<uint32_t>(iPlace / iPitch));
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
    // The whole block: which vertices the entries name is known only when they are placed.
    TellBefore(GetBlockRect(iBlockX, iBlockZ));
    const SBlockSide sideX = GetBlockSide(iBlockX, m_Field.uSizeX);
    const SBlockSide sideZ = GetBlockSide(iBlockZ, m_Field.uSizeZ);
    const auto iPitch = static_cast<int32_t>(m_Field.uSizeX);
    // May lie before the array; what is added to it does not.
    const int64_t iOrigin = sideZ.iVertex * iPitch + sideX.iVertex;
    float* pHeights = m_Field.pHeights.get();
    STouched touched;
    int32_t aPlaces[PLACED_ENTRIES];
    const CVertexProtection& protection = m_Field.protection;
    const bool bGuarded = !protection.IsEmpty();
    for (size_t nDone = 0; pEntries != nullptr && nDone < nCount; nDone += PLACED_ENTRIES)
    {
        const size_t nPart = std::min(nCount - nDone, PLACED_ENTRIES);
        const SBlockEntry* pPart = pEntries + nDone;
        CVectorLoop<PlaceEntries>::Run(pPart, nPart, sideX, sideZ, iPitch, aPlaces, touched);
        for (size_t i = 0; i < nPart; ++i)
        {
            if (aPlaces[i] >= 0 &&
                !(bGuarded && IsGuarded(protection, iOrigin + aPlaces[i], iPitch)))
            {
                pHeights[iOrigin + aPlaces[i]] = pPart[i].fHeight;
            }
        }
    }
    if (touched.iMaxX >= 0)
    {
        OnHeightsChanged({static_cast<uint32_t>(sideX.iVertex + touched.iMinX),
                          static_cast<uint32_t>(sideZ.iVertex + touched.iMinZ),
                          static_cast<uint32_t>(sideX.iVertex + touched.iMaxX + 1),
                          static_cast<uint32_t>(sideZ.iVertex + touched.iMaxZ + 1)});
    }
}
