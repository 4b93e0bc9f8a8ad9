// The terrain for those who read and write its heights where they lie, and for those who keep in
// mind what they were.

#include "engine/terrain/CTerrain.h"
#include "host/TerrainSize.h"

#include <algorithm>
#include <utility>

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

void CTerrain::OnRowsWritten(const SGridBox& box)
{
    if (!box.IsEmpty())
    {
        OnHeightsChanged({static_cast<uint32_t>(box.iMinX),
                          static_cast<uint32_t>(box.iMinZ),
                          static_cast<uint32_t>(box.iMaxX) + 1,
                          static_cast<uint32_t>(box.iMaxZ) + 1});
    }
}

void CTerrain::AddWatcher(ITerrainWatcher* pWatcher)
{
    if (std::find(m_Watchers.begin(), m_Watchers.end(), pWatcher) == m_Watchers.end())
    {
        m_Watchers.push_back(pWatcher);
    }
}

void CTerrain::RemoveWatcher(ITerrainWatcher* pWatcher)
{
    std::erase(m_Watchers, pWatcher);
}

void CTerrain::TellBefore(const SVertexRect& rect)
{
    for (ITerrainWatcher* pWatcher : m_Watchers)
    {
        pWatcher->OnBeforeHeightsChange({static_cast<int32_t>(rect.uMinX),
                                         static_cast<int32_t>(rect.uMinZ),
                                         static_cast<int32_t>(rect.uEndX) - 1,
                                         static_cast<int32_t>(rect.uEndZ) - 1});
    }
}

void CTerrain::TellGoing()
{
    const std::vector<ITerrainWatcher*> watchers = std::exchange(m_Watchers, {});
    for (ITerrainWatcher* pWatcher : watchers)
    {
        pWatcher->OnHeightsGo();
    }
}
