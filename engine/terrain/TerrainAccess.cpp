// The terrain for those who read and write its heights where they lie, and for those who keep in
// mind what they were.

#include "engine/terrain/CTerrain.h"

#include <algorithm>
#include <utility>

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
    // The list is taken away first: a watcher that is told may ask to be removed.
    const std::vector<ITerrainWatcher*> watchers = std::exchange(m_Watchers, {});
    for (ITerrainWatcher* pWatcher : watchers)
    {
        pWatcher->OnHeightsGo();
    }
}
