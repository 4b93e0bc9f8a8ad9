#pragma once

#include "engine/terrain/SVertexRect.h"

#include <array>
#include <cstdint>

// Remembers which vertices of a terrain changed at which revision, so that each reader fetches what
// is new to it. Holds a bounded number of rectangles: the two oldest merge when it is full, which
// can only make a late reader's region larger. Owned by its terrain.
class CDirtyRegions
{
public:
    // Everything is dirty for a reader that saw no revision of this object. Revisions are unique in
    // the process: a reader that goes over to another terrain finds all of it new.
    void Reset(const SVertexRect& whole);

    void Add(const SVertexRect& rect); // an empty one is ignored

    uint64_t GetRevision() const { return m_Revision; }

    // What changed after revision uSeen. An empty rectangle when nothing did.
    SVertexRect GetChangedSince(uint64_t uSeen) const;

private:
    struct SEntry
    {
        uint64_t uRevision = 0;
        SVertexRect rect;
    };

    std::array<SEntry, 32> m_Entries; // oldest first
    uint32_t m_Count = 0;
    uint64_t m_FirstRevision = 0;
    uint64_t m_Revision = 0;
    SVertexRect m_Whole;
};
