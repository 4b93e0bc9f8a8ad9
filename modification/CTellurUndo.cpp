#include "modification/CTellurUndo.h"

#include "host/Terrain.h"
#include "plugin/PluginContext.h"

#include <algorithm>
#include <climits>
#include <cstdint>

namespace
{

constexpr int BLOCK_CELLS = 32;

// Calls fn(block x, block z) for each block that holds the vertex: its own, and the ones before it
// when it lies on their far border.
template <class TFn> void ForEachBlock(const SChangedVert& vert, TFn fn)
{
    const int iBlockX = vert.iX / BLOCK_CELLS;
    const int iBlockZ = vert.iZ / BLOCK_CELLS;
    const bool bSharedX = vert.iX != 0 && vert.iX % BLOCK_CELLS == 0;
    const bool bSharedZ = vert.iZ != 0 && vert.iZ % BLOCK_CELLS == 0;
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

// Where each block stands in the record's list, by block coordinates relative to the first ones.
class CBlockTable
{
public:
    explicit CBlockTable(const std::vector<SChangedVert>& verts)
    {
        int iLastX = INT_MIN;
        int iLastZ = INT_MIN;
        for (const SChangedVert& vert : verts)
        {
            m_FirstX = std::min(m_FirstX, vert.iX / BLOCK_CELLS - 1);
            m_FirstZ = std::min(m_FirstZ, vert.iZ / BLOCK_CELLS - 1);
            iLastX = std::max(iLastX, vert.iX / BLOCK_CELLS);
            iLastZ = std::max(iLastZ, vert.iZ / BLOCK_CELLS);
        }
        if (!verts.empty())
        {
            m_Width = iLastX - m_FirstX + 1;
            m_Places.resize(
                static_cast<size_t>(m_Width) * static_cast<size_t>(iLastZ - m_FirstZ + 1), NONE);
        }
    }

    static constexpr int32_t NONE = -1;

    int32_t& operator()(int iBlockX, int iBlockZ)
    {
        return m_Places[static_cast<size_t>(iBlockZ - m_FirstZ) * static_cast<size_t>(m_Width) +
                        static_cast<size_t>(iBlockX - m_FirstX)];
    }

private:
    int m_FirstX = INT_MAX;
    int m_FirstZ = INT_MAX;
    int m_Width = 0;
    std::vector<int32_t> m_Places;
};

} // namespace

CTellurUndo::CBlockInfo::CBlockInfo(int iBlockX, int iBlockZ)
    : m_BlockX(iBlockX)
    , m_BlockZ(iBlockZ)
{
}

void CTellurUndo::CBlockInfo::Add(const SChangedVert& vert)
{
    m_Verts.push_back(
        {vert.iX - m_BlockX * BLOCK_CELLS, vert.iZ - m_BlockZ * BLOCK_CELLS, vert.fOld, vert.fNew});
}

void CTellurUndo::Fill(const std::vector<SChangedVert>& verts)
{
    if (m_Terrain != nullptr)
    {
        m_RowWidth = static_cast<int>(m_Terrain->GetCellsPerSide()) + 1;
    }
    // Counted first, so that the record holds no more memory than its vertices need.
    CBlockTable places(verts);
    std::vector<size_t> counts;
    for (const SChangedVert& vert : verts)
    {
        ForEachBlock(vert,
                     [&](int iBlockX, int iBlockZ)
                     {
                         int32_t& iPlace = places(iBlockX, iBlockZ);
                         if (iPlace == CBlockTable::NONE)
                         {
                             iPlace = static_cast<int32_t>(m_Blocks.size());
                             m_Blocks.emplace_back(iBlockX, iBlockZ);
                             counts.push_back(0);
                         }
                         ++counts[static_cast<size_t>(iPlace)];
                     });
    }
    m_Blocks.shrink_to_fit();
    for (size_t i = 0; i < m_Blocks.size(); ++i)
    {
        m_Blocks[i].Reserve(counts[i]);
    }
    for (const SChangedVert& vert : verts)
    {
        ForEachBlock(vert,
                     [&](int iBlockX, int iBlockZ)
                     { m_Blocks[static_cast<size_t>(places(iBlockX, iBlockZ))].Add(vert); });
    }
}

size_t CTellurUndo::GetByteCount() const
{
    size_t nBytes = sizeof(*this) + m_Blocks.capacity() * sizeof(CBlockInfo);
    for (const CBlockInfo& block : m_Blocks)
    {
        nBytes += block.GetVerts().capacity() * sizeof(CBlockInfo::SVertRecord);
    }
    return nBytes;
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
    std::vector<SBlockEntry> entries;
    for (const CBlockInfo& block : m_Blocks)
    {
        entries.clear();
        entries.reserve(block.GetVerts().size());
        for (const CBlockInfo::SVertRecord& vert : block.GetVerts())
        {
            entries.push_back({static_cast<float>(vert.iLocalX),
                               eDirection == EDirection::Back ? vert.fOld : vert.fNew,
                               static_cast<float>(vert.iLocalZ)});
        }
        if (!entries.empty())
        {
            m_Terrain->SetBlockHeights(
                block.GetBlockX(), block.GetBlockZ(), entries.data(), entries.size());
        }
    }
    const PluginContext* pContext = GetPluginContext();
    if (pContext != nullptr && pContext->IsAutoUpdateNormals())
    {
        m_Terrain->UpdateNormals();
    }
}
