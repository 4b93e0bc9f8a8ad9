#include "tellur/modification/CTellurUndo.h"

#include "host/Terrain.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modification/CHeightTiles.h"
#include "tellur/modification/CPlainArray.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstdlib>
#include <cstring>
#include <new>
#include <tuple>

namespace
{

constexpr int SIDE = SHeightTile::SIDE;
constexpr int CELLS = TERRAIN_BLOCK_CELLS;
// A record is kept by tiles of 64 x 64 vertices, as the drag has them, and written by blocks of 33
// x 33, as the terrain takes them. The vertices of a block lie in up to four tiles.
static_assert(SIDE == 2 * CELLS, "a tile has two blocks a side");
// A tile with more changes is taken over whole: copying them would save too little.
constexpr uint32_t LEAST_WHOLE = 3900;

} // namespace

// Where the scan over the changed vertices first meets a block.
struct CTellurUndo::SFirstUse
{
    int iZ;
    int iX;
    int iShare; // of the up to four blocks of a vertex: its own, the ones before it along x, z,
                // both
    int iBlockX;
    int iBlockZ;

    auto GetKey() const { return std::tie(iZ, iX, iShare); }

    bool operator<(const SFirstUse& other) const { return GetKey() < other.GetKey(); }

    bool operator==(const SFirstUse& other) const { return GetKey() == other.GetKey(); }
};

CTellurUndo::~CTellurUndo()
{
    for (size_t i = 0; i < m_TileCount; ++i)
    {
        ReleaseTile(m_Tiles[i].pWhole);
        std::free(m_Tiles[i].pPacked);
    }
}

void CTellurUndo::CBlockInfo::Begin(const CTellurUndo& record, int iBlockX, int iBlockZ)
{
    m_Record = &record;
    m_BlockX = iBlockX;
    m_BlockZ = iBlockZ;
}

bool CTellurUndo::Fill(const CHeightTiles& tiles)
{
    if (m_Terrain != nullptr)
    {
        m_RowWidth = static_cast<int>(m_Terrain->GetCellsPerSide()) + 1;
    }
    size_t nTiles = 0;
    tiles.ForEach([&](const SHeightTile& tile, int, int) { nTiles += tile.uChanged > 0 ? 1 : 0; });
    // The tiles come row by row, which is the order that FindTile searches in.
    m_Tiles.reset(new (std::nothrow) STile[nTiles]);
    bool bMemory = m_Tiles != nullptr;
    tiles.ForEach([&](SHeightTile& tile, int iTileX, int iTileZ)
                  { bMemory = bMemory && (tile.uChanged == 0 || AddTile(tile, iTileX, iTileZ)); });
    return bMemory && ListBlocks();
}

bool CTellurUndo::AddTile(SHeightTile& tile, int iTileX, int iTileZ)
{
    STile& added = m_Tiles[m_TileCount];
    added.iX = iTileX;
    added.iZ = iTileZ;
    if (tile.uChanged >= LEAST_WHOLE)
    {
        added.pWhole = &tile;
        ++tile.uUsers;
        ++m_TileCount;
        return true;
    }
    const size_t nBytes = sizeof(SPacked) + size_t{2} * tile.uChanged * sizeof(float);
    added.pPacked = static_cast<SPacked*>(std::malloc(nBytes));
    if (added.pPacked == nullptr)
    {
        return false;
    }
    ++m_TileCount;
    m_PackedBytes += nBytes;
    SPacked& packed = *added.pPacked;
    packed.uCount = tile.uChanged;
    auto* pOld = reinterpret_cast<float*>(&packed + 1);
    float* pNew = pOld + packed.uCount;
    uint16_t uNext = 0;
    for (int z = 0; z < SIDE; ++z)
    {
        packed.aChanged[z] = tile.aChanged[z];
        packed.aStart[z] = uNext;
        uint64_t uBits = tile.aChanged[z];
        while (uBits != 0) // runs of vertices side by side
        {
            const int iFirst = std::countr_zero(uBits);
            const int iCount = std::countr_one(uBits >> iFirst);
            const int iPlace = z * SIDE + iFirst;
            std::copy_n(tile.aSource.data() + iPlace, iCount, pOld + uNext);
            std::copy_n(tile.aDest.data() + iPlace, iCount, pNew + uNext);
            uNext = static_cast<uint16_t>(uNext + iCount);
            // A shift by all 64 bits is undefined, so a row that changed as a whole ends here.
            uBits = iCount == SIDE ? 0 : uBits & ~(((uint64_t{1} << iCount) - 1) << iFirst);
        }
    }
    return true;
}

const CTellurUndo::STile* CTellurUndo::FindTile(int iTileX, int iTileZ) const
{
    const STile* pEnd = m_Tiles.get() + m_TileCount;
    const STile* pFound = std::lower_bound(static_cast<const STile*>(m_Tiles.get()),
                                           pEnd,
                                           std::pair(iTileZ, iTileX),
                                           [](const STile& tile, const std::pair<int, int>& place)
                                           { return std::pair(tile.iZ, tile.iX) < place; });
    return pFound != pEnd && pFound->iX == iTileX && pFound->iZ == iTileZ ? pFound : nullptr;
}

CTellurUndo::SBlockTiles CTellurUndo::FindBlockTiles(int iBlockX, int iBlockZ) const
{
    const int iX = iBlockX / 2;
    const int iZ = iBlockZ / 2;
    // The far border of every second block lies in the next tile.
    const bool bRight = iBlockX % 2 != 0;
    const bool bBelow = iBlockZ % 2 != 0;
    return {{{FindTile(iX, iZ), bRight ? FindTile(iX + 1, iZ) : nullptr},
             {bBelow ? FindTile(iX, iZ + 1) : nullptr,
              bRight && bBelow ? FindTile(iX + 1, iZ + 1) : nullptr}}};
}

uint64_t CTellurUndo::GetRowBits(const STile* pTile, int iRow)
{
    return pTile == nullptr           ? 0
           : pTile->pWhole != nullptr ? pTile->pWhole->aChanged[iRow]
                                      : pTile->pPacked->aChanged[iRow];
}

uint64_t CTellurUndo::GetBlockRow(const SBlockTiles& tiles, int iBlockX, int iBlockZ, int iRow)
{
    const int iInTile = iBlockZ % 2 * CELLS + iRow; // 0 to 64
    const auto& row = tiles.aTiles[iInTile / SIDE];
    const uint64_t uOwn = GetRowBits(row[0], iInTile % SIDE);
    // A block has 33 vertices a row. The last one of a block at the right of its tile lies in the
    // next tile, as its first.
    constexpr uint64_t BLOCK_BITS = (uint64_t{1} << (CELLS + 1)) - 1;
    return iBlockX % 2 == 0
               ? uOwn & BLOCK_BITS
               : (uOwn >> CELLS) | ((GetRowBits(row[1], iInTile % SIDE) & 1U) << CELLS);
}

// Calls fn(local x, number, local z, old heights, new heights) for each run of changed vertices of
// a block that lie side by side, row by row. A run ends where its tile does.
template <class TFn> void CTellurUndo::VisitBlock(int iBlockX, int iBlockZ, TFn fn) const
{
    const SBlockTiles tiles = FindBlockTiles(iBlockX, iBlockZ);
    for (int iRow = 0; iRow <= CELLS; ++iRow)
    {
        const int iInTileZ = iBlockZ % 2 * CELLS + iRow;
        uint64_t uBits = GetBlockRow(tiles, iBlockX, iBlockZ, iRow);
        while (uBits != 0)
        {
            const int iLocalX = std::countr_zero(uBits);
            const int iInTileX = iBlockX % 2 * CELLS + iLocalX;
            const int iMost = SIDE - iInTileX % SIDE; // to the end of its tile
            const int iCount = std::min(std::countr_one(uBits >> iLocalX), iMost);
            const STile& tile = *tiles.aTiles[iInTileZ / SIDE][iInTileX / SIDE];
            fn(iLocalX,
               iCount,
               iRow,
               FindHeights(tile, iInTileX % SIDE, iInTileZ % SIDE, false),
               FindHeights(tile, iInTileX % SIDE, iInTileZ % SIDE, true));
            uBits &= ~(((uint64_t{1} << iCount) - 1) << iLocalX);
        }
    }
}

// Of a vertex that changed; those beside it that changed, too, follow.
const float* CTellurUndo::FindHeights(const STile& tile, int iColumn, int iRow, bool bNew)
{
    if (tile.pWhole != nullptr)
    {
        return (bNew ? tile.pWhole->aDest : tile.pWhole->aSource).data() +
               SHeightTile::GetPlace(iColumn, iRow);
    }
    // How many vertices of its row changed before it is its place among the packed heights.
    const uint64_t uBefore = tile.pPacked->aChanged[iRow] & ((uint64_t{1} << iColumn) - 1);
    return tile.pPacked->GetHeights(bNew) + tile.pPacked->aStart[iRow] + std::popcount(uBefore);
}

// The blocks of the tiles' vertices: two a side of each tile, and those before it that share its
// first column or row.
bool CTellurUndo::ListBlocks()
{
    CPlainArray<SFirstUse> uses;
    if (!uses.Reserve(9 * m_TileCount))
    {
        return false;
    }
    for (size_t i = 0; i < m_TileCount; ++i)
    {
        for (int n = 0; n < 9; ++n)
        {
            const int iX = n % 3 - 1;
            const int iZ = n / 3 - 1;
            const int iBlockX = m_Tiles[i].iX * 2 + iX;
            const int iBlockZ = m_Tiles[i].iZ * 2 + iZ;
            const bool bOwn = iX >= 0 && iZ >= 0;
            // Those of a tile that is here, too, come with it.
            if (iBlockX >= 0 && iBlockZ >= 0 &&
                (bOwn || FindTile(iBlockX / 2, iBlockZ / 2) == nullptr))
            {
                AddFirstUse(iBlockX, iBlockZ, uses);
            }
        }
    }
    // Two tiles may have listed the same block before them. Equal keys are the same vertex and the
    // same share of it, so they are the same block.
    std::sort(uses.begin(), uses.end());
    const auto nBlocks = static_cast<size_t>(std::unique(uses.begin(), uses.end()) - uses.begin());
    m_Blocks.reset(new (std::nothrow) CBlockInfo[nBlocks]);
    if (m_Blocks == nullptr)
    {
        return false;
    }
    m_BlockCount = nBlocks;
    for (size_t i = 0; i < nBlocks; ++i)
    {
        m_Blocks[i].Begin(*this, uses.Get()[i].iBlockX, uses.Get()[i].iBlockZ);
    }
    return true;
}

void CTellurUndo::AddFirstUse(int iBlockX, int iBlockZ, CPlainArray<SFirstUse>& uses) const
{
    const SBlockTiles tiles = FindBlockTiles(iBlockX, iBlockZ);
    for (int iRow = 0; iRow <= CELLS; ++iRow)
    {
        const uint64_t uBits = GetBlockRow(tiles, iBlockX, iBlockZ, iRow);
        if (uBits != 0)
        {
            const int iLocalX = std::countr_zero(uBits);
            uses.Append({iBlockZ * CELLS + iRow,
                         iBlockX * CELLS + iLocalX,
                         (iLocalX == CELLS ? 1 : 0) + (iRow == CELLS ? 2 : 0),
                         iBlockX,
                         iBlockZ});
            return;
        }
    }
}

size_t CTellurUndo::CBlockInfo::GetVerts(SVertRecord* pVerts) const
{
    size_t nVerts = 0;
    m_Record->VisitBlock(
        m_BlockX,
        m_BlockZ,
        [&](int iLocalX, int iCount, int iLocalZ, const float* pOld, const float* pNew)
        {
            for (int i = 0; i < iCount; ++i)
            {
                pVerts[nVerts++] = {iLocalX + i, iLocalZ, pOld[i], pNew[i]};
            }
        });
    return nVerts;
}

size_t CTellurUndo::CBlockInfo::GetEntries(bool bNew, SBlockEntry* pEntries) const
{
    SBlockEntry* pNext = pEntries;
    m_Record->VisitBlock(
        m_BlockX,
        m_BlockZ,
        [&](int iLocalX, int iCount, int iLocalZ, const float* pOld, const float* pNew)
        {
            const float* pHeights = bNew ? pNew : pOld;
            const auto fLocalZ = static_cast<float>(iLocalZ);
            for (int i = 0; i < iCount; ++i)
            {
                pNext[i] = {static_cast<float>(iLocalX + i), pHeights[i], fLocalZ};
            }
            pNext += iCount;
        });
    return static_cast<size_t>(pNext - pEntries);
}

size_t CTellurUndo::GetByteCount() const
{
    size_t nWhole = 0;
    for (size_t i = 0; i < m_TileCount; ++i)
    {
        nWhole += m_Tiles[i].pWhole != nullptr ? 1 : 0;
    }
    return sizeof(*this) + m_BlockCount * sizeof(CBlockInfo) + m_TileCount * sizeof(STile) +
           m_PackedBytes + nWhole * sizeof(SHeightTile);
}

void CTellurUndo::Undo()
{
    Apply(false);
}

void CTellurUndo::Redo()
{
    Apply(true);
}

void CTellurUndo::Apply(bool bNew)
{
    if (m_Terrain == nullptr || static_cast<int>(m_Terrain->GetCellsPerSide()) + 1 != m_RowWidth)
    {
        return;
    }
    // On the stack, so that undo needs no memory and cannot fail halfway.
    std::array<SBlockEntry, CBlockInfo::MOST_VERTS> entries;
    for (const CBlockInfo& block : GetBlocks())
    {
        const size_t nEntries = block.GetEntries(bNew, entries.data());
        m_Terrain->SetBlockHeights(block.GetBlockX(), block.GetBlockZ(), entries.data(), nEntries);
    }
    const PluginContext* pContext = GetPluginContext();
    if (pContext != nullptr && pContext->IsAutoUpdateNormals())
    {
        m_Terrain->UpdateNormals();
    }
}
