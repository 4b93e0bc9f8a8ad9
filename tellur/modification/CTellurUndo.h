#pragma once

#include "host/CUndo.h"
#include "tellur/modification/CPlainArray.h"

#include <cstddef>
#include <memory>
#include <span>

class Terrain;

// One changed vertex of a drag: grid position, height before and after.
struct SChangedVert
{
    int iX = 0;
    int iZ = 0;
    float fOld = 0.0F;
    float fNew = 0.0F;
};

// The undo record of one drag: only the changed vertices, grouped in blocks of 32 x 32 cells. A
// vertex on a block's border is kept in every block that shares it. All vertices lie in one array,
// block after block, so that undo and redo need no memory. Owned by the host once handed over;
// dead, and harmless, when the terrain's resolution has changed since. pTerrain is borrowed: the
// host drops its records before it frees the terrain.
class CTellurUndo : public CUndo
{
public:
    class CBlockInfo
    {
    public:
        struct SVertRecord // 16 bytes
        {
            int iLocalX; // 0 to 32
            int iLocalZ;
            float fOld;
            float fNew;
        };

        CBlockInfo() = default;
        CBlockInfo(const CBlockInfo&) = delete;
        CBlockInfo& operator=(const CBlockInfo&) = delete;
        virtual ~CBlockInfo() = default;

        // pVerts: where the block's vertices begin in the record's array, borrowed.
        void Begin(int iBlockX, int iBlockZ, SVertRecord* pVerts);

        int GetBlockX() const { return m_BlockX; }

        int GetBlockZ() const { return m_BlockZ; }

        void Add(const SChangedVert& vert); // grid position inside the block

        std::span<const SVertRecord> GetVerts() const { return {m_Verts, m_Count}; }

    private:
        SVertRecord* m_Verts = nullptr;
        size_t m_Count = 0;
        int m_BlockX = 0;
        int m_BlockZ = 0;
    };

    void SetTerrain(Terrain* pTerrain) { m_Terrain = pTerrain; }

    // verts: in scan order, rows of increasing z. Called once. False, and the record is of no use,
    // when there is no memory for it.
    bool Fill(std::span<const SChangedVert> verts);

    // In order of first use.
    std::span<const CBlockInfo> GetBlocks() const { return {m_Blocks.get(), m_BlockCount}; }

    size_t GetByteCount() const; // memory the record takes

    bool IsTransient() const override { return false; }

    void Undo() override;
    void Redo() override;

    void OnNotify(uintptr_t /*uCode*/) override {}

private:
    enum class EDirection
    {
        Back,
        Forward,
    };

    void Apply(EDirection eDirection);

    Terrain* m_Terrain = nullptr;
    int m_RowWidth = 0; // vertices of a row when the record was filled
    std::unique_ptr<CBlockInfo[]> m_Blocks;
    size_t m_BlockCount = 0;
    CPlainArray<CBlockInfo::SVertRecord> m_Verts; // of all blocks
};
