#include "modification/CTellurUndo.h"

#include "host/Terrain.h"
#include "plugin/PluginContext.h"

#include <unordered_map>

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

uint64_t GetBlockKey(int iBlockX, int iBlockZ)
{
    return (static_cast<uint64_t>(static_cast<uint32_t>(iBlockZ)) << 32U) |
           static_cast<uint32_t>(iBlockX);
}

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
    std::unordered_map<uint64_t, size_t> places;
    std::vector<size_t> counts;
    for (const SChangedVert& vert : verts)
    {
        ForEachBlock(vert,
                     [&](int iBlockX, int iBlockZ)
                     {
                         const auto [it, bNew] =
                             places.try_emplace(GetBlockKey(iBlockX, iBlockZ), m_Blocks.size());
                         if (bNew)
                         {
                             m_Blocks.emplace_back(iBlockX, iBlockZ);
                             counts.push_back(0);
                         }
                         ++counts[it->second];
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
                     { m_Blocks[places.find(GetBlockKey(iBlockX, iBlockZ))->second].Add(vert); });
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
