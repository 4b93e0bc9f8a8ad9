#pragma once

#include "host/CUndo.h"
#include "host/TerrainSize.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

class CHeightTiles;
template <typename T> class CPlainArray;
class Terrain;
struct SBlockEntry;
struct SHeightTile;

// The undo record of one drag: only the changed vertices. They are kept by the tiles of the drag:
// one that changed nearly everywhere is taken over as it is, of the others a copy holds the changed
// heights side by side. Undo and redo write them in blocks of 32 x 32 cells and need no memory; a
// vertex on a block's border belongs to every block that shares it. Owned by the host once handed
// over; dead, and harmless, when the terrain's resolution has changed since. pTerrain is borrowed:
// the host drops its records before it frees the terrain.
class CTellurUndo : public CUndo
{
public:
    struct SVertRecord
    {
        int iLocalX; // 0 to 32
        int iLocalZ;
        float fOld;
        float fNew;
    };

    class CBlockInfo
    {
    public:
        static constexpr size_t MOST_VERTS =
            size_t{TERRAIN_BLOCK_CELLS + 1} * (TERRAIN_BLOCK_CELLS + 1);

        CBlockInfo() = default;
        CBlockInfo(const CBlockInfo&) = delete;
        CBlockInfo& operator=(const CBlockInfo&) = delete;
        virtual ~CBlockInfo() = default;

        void Begin(const CTellurUndo& record, int iBlockX, int iBlockZ);

        int GetBlockX() const { return m_BlockX; }

        int GetBlockZ() const { return m_BlockZ; }

        // Writes the changed vertices of the block in scan order, rows of increasing z, and returns
        // their number. pVerts: room for MOST_VERTS.
        size_t GetVerts(SVertRecord* pVerts) const;
        // Writes the heights of one side, the new or the old ones, as the terrain takes them, and
        // returns their number. pEntries: room for MOST_VERTS.
        size_t GetEntries(bool bNew, SBlockEntry* pEntries) const;

    private:
        const CTellurUndo* m_Record = nullptr;
        int m_BlockX = 0;
        int m_BlockZ = 0;
    };

    CTellurUndo() = default;
    CTellurUndo(const CTellurUndo&) = delete;
    CTellurUndo& operator=(const CTellurUndo&) = delete;
    ~CTellurUndo() override;

    void SetTerrain(Terrain* pTerrain) { m_Terrain = pTerrain; }

    // Takes over what changed in a drag's tiles, after FindChanges has noted it there. Called once.
    // False, and the record is of no use, when there is no memory for it.
    bool Fill(const CHeightTiles& tiles);

    // The blocks in the order in which a scan over the changed vertices first meets them.
    std::span<const CBlockInfo> GetBlocks() const { return {m_Blocks.get(), m_BlockCount}; }

    size_t GetByteCount() const; // memory the record takes

    bool IsTransient() const override { return false; }

    void Undo() override;
    void Redo() override;

    void OnNotify(uintptr_t /*uCode*/) override {}

private:
    // The changed heights of a tile that changed in part, in scan order: first the old ones, then
    // the new ones, behind the header.
    struct SPacked
    {
        uint64_t aChanged[64];
        uint16_t aStart[64]; // of each row
        uint32_t uCount;

        const float* GetHeights(bool bNew) const
        {
            return reinterpret_cast<const float*>(this + 1) + (bNew ? uCount : 0);
        }
    };

    struct STile
    {
        int iX = 0; // in tiles
        int iZ = 0;
        SHeightTile* pWhole = nullptr; // one of the two
        SPacked* pPacked = nullptr;
    };

    // The up to four tiles under a block, its own first; null: nothing changed there.
    struct SBlockTiles
    {
        const STile* aTiles[2][2];
    };

    struct SFirstUse; // where the scan over the changed vertices first meets a block

    void Apply(bool bNew);
    bool AddTile(SHeightTile& tile, int iTileX, int iTileZ);
    bool ListBlocks();
    const STile* FindTile(int iTileX, int iTileZ) const;
    SBlockTiles FindBlockTiles(int iBlockX, int iBlockZ) const;
    static uint64_t GetRowBits(const STile* pTile, int iRow);
    // A bit for each vertex of row 0 to 32 of a block.
    static uint64_t GetBlockRow(const SBlockTiles& tiles, int iBlockX, int iBlockZ, int iRow);
    static const float* FindHeights(const STile& tile, int iColumn, int iRow, bool bNew);
    void AddFirstUse(int iBlockX, int iBlockZ, CPlainArray<SFirstUse>& uses) const;
    template <class TFn> void VisitBlock(int iBlockX, int iBlockZ, TFn fn) const;

    Terrain* m_Terrain = nullptr;
    int m_RowWidth = 0;               // vertices of a row when the record was filled
    std::unique_ptr<STile[]> m_Tiles; // by rows of tiles
    size_t m_TileCount = 0;
    size_t m_PackedBytes = 0;
    std::unique_ptr<CBlockInfo[]> m_Blocks;
    size_t m_BlockCount = 0;
};
