#pragma once

#include "host/CUndo.h"

#include <cstddef>
#include <vector>

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
// vertex on a block's border is kept in every block that shares it. Owned by the host once handed
// over; dead, and harmless, when the terrain's resolution has changed since. pTerrain is borrowed:
// the host drops its records before it frees the terrain.
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

        CBlockInfo(int iBlockX, int iBlockZ);
        CBlockInfo(const CBlockInfo&) = delete;
        CBlockInfo(CBlockInfo&&) noexcept = default;
        CBlockInfo& operator=(const CBlockInfo&) = delete;
        CBlockInfo& operator=(CBlockInfo&&) noexcept = default;
        virtual ~CBlockInfo() = default;

        int GetBlockX() const { return m_BlockX; }

        int GetBlockZ() const { return m_BlockZ; }

        void Reserve(size_t nVerts) { m_Verts.reserve(nVerts); }

        void Add(const SChangedVert& vert); // grid position inside the block

        const std::vector<SVertRecord>& GetVerts() const { return m_Verts; }

    private:
        int m_BlockX;
        int m_BlockZ;
        std::vector<SVertRecord> m_Verts;
    };

    void SetTerrain(Terrain* pTerrain) { m_Terrain = pTerrain; }

    // verts: in scan order, rows of increasing z. Called once.
    void Fill(const std::vector<SChangedVert>& verts);

    const std::vector<CBlockInfo>& GetBlocks() const { return m_Blocks; } // in order of first use

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
    std::vector<CBlockInfo> m_Blocks;
};
