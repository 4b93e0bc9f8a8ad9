#include "engine/terrain/CDirtyRegions.h"

namespace
{

uint64_t g_LastRevision = 0;

} // namespace

void CDirtyRegions::Reset(const SVertexRect& whole)
{
    m_Whole = whole;
    m_Count = 0;
    m_Revision = ++g_LastRevision;
    m_FirstRevision = m_Revision;
}

void CDirtyRegions::Add(const SVertexRect& rect)
{
    if (rect.IsEmpty())
    {
        return;
    }
    if (m_Count == m_Entries.size())
    {
        m_Entries[1].rect = m_Entries[1].rect.Union(m_Entries[0].rect);
        std::move(m_Entries.begin() + 1, m_Entries.end(), m_Entries.begin());
        --m_Count;
    }
    m_Revision = ++g_LastRevision;
    m_Entries[m_Count++] = {m_Revision, rect};
}

SVertexRect CDirtyRegions::GetChangedSince(uint64_t uSeen) const
{
    if (uSeen < m_FirstRevision)
    {
        return m_Whole;
    }
    SVertexRect changed;
    for (uint32_t i = m_Count; i > 0 && m_Entries[i - 1].uRevision > uSeen; --i)
    {
        changed = changed.Union(m_Entries[i - 1].rect);
    }
    return changed;
}
