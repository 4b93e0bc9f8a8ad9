#include "tellur/modification/CTellurUndo.h"

#include "host/Terrain.h"
#include "host/TerrainSize.h"
#include "tellur/context/PluginContext.h"

#include <algorithm>
#include <array>
#include <climits>
#include <cstdint>
#include <new>

namespace
{

constexpr size_t MOST_BLOCK_VERTS = size_t{TERRAIN_BLOCK_CELLS + 1} * (TERRAIN_BLOCK_CELLS + 1);

// Calls fn(block x, block z) for each block that holds the vertex: its own, and the ones before it
// when it lies on their far border.
template <class TFn> void ForEachBlock(const SChangedVert& vert, TFn fn)
{
    const int iBlockX = vert.iX / TERRAIN_BLOCK_CELLS;
    const int iBlockZ = vert.iZ / TERRAIN_BLOCK_CELLS;
    const bool bSharedX = vert.iX != 0 && vert.iX % TERRAIN_BLOCK_CELLS == 0;
    const bool bSharedZ = vert.iZ != 0 && vert.iZ % TERRAIN_BLOCK_CELLS == 0;
    fn(iBlockX, iBlockZ);
    if (bSharedX)
    {
        fn(iBlockX - 1, iBlockZ);
    }
    if (bSharedZ)
    {
        fn(iBlockX, iBlockZ - 1);
    }
    if (bSharedX && bSharedZ)
    {
        fn(iBlockX - 1, iBlockZ - 1);
    }
}

// What is known of a block before the record is made.
struct SBlockSlot
{
    int32_t iPlace = -1; // in the record's list
    uint32_t uVerts = 0;
};

// The blocks that a list of vertices may touch, by block coordinates relative to the first ones.
class CBlockTable
{
public:
    // False when there is no memory.
    bool Allocate(std::span<const SChangedVert> verts)
    {
        int iLastX = INT_MIN;
        int iLastZ = INT_MIN;
        for (const SChangedVert& vert : verts)
        {
            m_FirstX = std::min(m_FirstX, vert.iX / TERRAIN_BLOCK_CELLS - 1);
            m_FirstZ = std::min(m_FirstZ, vert.iZ / TERRAIN_BLOCK_CELLS - 1);
            iLastX = std::max(iLastX, vert.iX / TERRAIN_BLOCK_CELLS);
            iLastZ = std::max(iLastZ, vert.iZ / TERRAIN_BLOCK_CELLS);
        }
        m_Width = verts.empty() ? 0 : iLastX - m_FirstX + 1;
        const int iHeight = verts.empty() ? 0 : iLastZ - m_FirstZ + 1;
        const size_t nSlots = static_cast<size_t>(m_Width) * static_cast<size_t>(iHeight);
        if (!m_Slots.Resize(nSlots) || !m_Order.Reserve(nSlots))
        {
            return false;
        }
        std::fill(m_Slots.begin(), m_Slots.end(), SBlockSlot());
        return true;
    }

    SBlockSlot& operator()(int iBlockX, int iBlockZ)
    {
        return m_Slots
            .Get()[static_cast<size_t>(iBlockZ - m_FirstZ) * static_cast<size_t>(m_Width) +
                   static_cast<size_t>(iBlockX - m_FirstX)];
    }

    void Count(int iBlockX, int iBlockZ)
    {
        SBlockSlot& slot = (*this)(iBlockX, iBlockZ);
        if (slot.uVerts++ == 0)
        {
            slot.iPlace = static_cast<int32_t>(m_Order.GetCount());
            m_Order.Append({iBlockX, iBlockZ});
        }
    }

    const CPlainArray<std::array<int, 2>>& GetOrder() const { return m_Order; }

private:
    int m_FirstX = INT_MAX;
    int m_FirstZ = INT_MAX;
    int m_Width = 0;
    CPlainArray<SBlockSlot> m_Slots;
    CPlainArray<std::array<int, 2>> m_Order; // blocks x, z in order of first use
};

} // namespace

void CTellurUndo::CBlockInfo::Begin(int iBlockX, int iBlockZ, SVertRecord* pVerts)
{
    m_BlockX = iBlockX;
    m_BlockZ = iBlockZ;
    m_Verts = pVerts;
}

void CTellurUndo::CBlockInfo::Add(const SChangedVert& vert)
{
    m_Verts[m_Count++] = {vert.iX - m_BlockX * TERRAIN_BLOCK_CELLS,
                          vert.iZ - m_BlockZ * TERRAIN_BLOCK_CELLS,
                          vert.fOld,
                          vert.fNew};
}

bool CTellurUndo::Fill(std::span<const SChangedVert> verts)
{
    if (m_Terrain != nullptr)
    {
        m_RowWidth = static_cast<int>(m_Terrain->GetCellsPerSide()) + 1;
    }
    // Counted first, so that the record holds no more memory than its vertices need.
    CBlockTable table;
    if (!table.Allocate(verts))
    {
        return false;
    }
    size_t nVerts = 0;
    for (const SChangedVert& vert : verts)
    {
        ForEachBlock(vert,
                     [&](int iBlockX, int iBlockZ)
                     {
                         table.Count(iBlockX, iBlockZ);
                         ++nVerts;
                     });
    }
    const size_t nBlocks = table.GetOrder().GetCount();
    m_Blocks.reset(new (std::nothrow) CBlockInfo[nBlocks]);
    if (m_Blocks == nullptr || !m_Verts.Resize(nVerts))
    {
        return false;
    }
    m_BlockCount = nBlocks;
    CBlockInfo* pBlock = m_Blocks.get();
    CBlockInfo::SVertRecord* pNext = m_Verts.Get();
    for (const auto& [iBlockX, iBlockZ] : table.GetOrder())
    {
        (pBlock++)->Begin(iBlockX, iBlockZ, pNext);
        pNext += table(iBlockX, iBlockZ).uVerts;
    }
    for (const SChangedVert& vert : verts)
    {
        ForEachBlock(vert,
                     [&](int iBlockX, int iBlockZ)
                     { m_Blocks[static_cast<size_t>(table(iBlockX, iBlockZ).iPlace)].Add(vert); });
    }
    return true;
}

size_t CTellurUndo::GetByteCount() const
{
    return sizeof(*this) + m_BlockCount * sizeof(CBlockInfo) +
           m_Verts.GetCapacity() * sizeof(CBlockInfo::SVertRecord);
}

void CTellurUndo::Undo()
{
    Apply(EDirection::Back);
}

void CTellurUndo::Redo()
{
    Apply(EDirection::Forward);
}

void CTellurUndo::Apply(EDirection eDirection)
{
    if (m_Terrain == nullptr || static_cast<int>(m_Terrain->GetCellsPerSide()) + 1 != m_RowWidth)
    {
        return;
    }
    std::array<SBlockEntry, MOST_BLOCK_VERTS> entries; // a vertex is in a block once
    for (const CBlockInfo& block : GetBlocks())
    {
        size_t nEntries = 0;
        for (const CBlockInfo::SVertRecord& vert : block.GetVerts())
        {
            entries[nEntries++] = {static_cast<float>(vert.iLocalX),
                                   eDirection == EDirection::Back ? vert.fOld : vert.fNew,
                                   static_cast<float>(vert.iLocalZ)};
        }
        m_Terrain->SetBlockHeights(block.GetBlockX(), block.GetBlockZ(), entries.data(), nEntries);
    }
    const PluginContext* pContext = GetPluginContext();
    if (pContext != nullptr && pContext->IsAutoUpdateNormals())
    {
        m_Terrain->UpdateNormals();
    }
}
