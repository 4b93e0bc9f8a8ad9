#pragma once

#include "engine/terrain/SVertexRect.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

// Remembers which vertices of a terrain changed at which revision, so that each reader fetches what
// is new to it, at the cost of what changed and not of the rectangle round it. The latest changes
// stay exact rectangles; of older ones the revision of each tile of TILE x TILE vertices stays,
// which can only make a late reader's regions larger. Owned by its terrain. UI thread.
class CDirtyRegions
{
public:
    static constexpr uint32_t TILE = 64;

    // Begins anew for a terrain of these vertices: everything is new to every reader. Revisions
    // only grow in the process, so that a reader which goes over to a terrain that began later
    // finds all of it new as well.
    void Reset(const SVertexRect& whole);

    void Add(const SVertexRect& rect); // an empty one is ignored

    uint64_t GetRevision() const { return m_Revision; }

    // Puts what changed after revision uSeen into rects, in place of what it has: rectangles
    // without a common vertex, by rows and columns, each of whole tiles where they touch. None when
    // nothing changed.
    void GetChangedSince(uint64_t uSeen, std::vector<SVertexRect>& rects) const;

    // The rectangle round all that changed after revision uSeen; empty when nothing did.
    SVertexRect GetBoxSince(uint64_t uSeen) const;

private:
    // Tiles a side of a group, which has the newest revision of its tiles: what a late reader looks
    // at first.
    static constexpr uint32_t GROUP = 16;

    struct SEntry
    {
        uint64_t uRevision = 0;
        SVertexRect rect;
    };

    // The part of a tile that changed, in vertices of the tile; empty while uEndX is 0.
    struct SPart
    {
        uint8_t uMinX = TILE;
        uint8_t uMinZ = TILE;
        uint8_t uEndX = 0;
        uint8_t uEndZ = 0;
    };

    // Tiles [uMinX, uEndX) x [uMinZ, uEndZ) as they are filled with parts.
    struct SGrid
    {
        SVertexRect tiles;
        std::vector<SPart> parts;  // row by row
        std::vector<size_t> above; // rectangles that reach to the row's upper border
        std::vector<size_t> below; // and to its lower one
    };

    const SEntry& GetNewest(uint32_t i) const // 0: the last one
    {
        return m_Entries[(m_First + m_Count - 1 - i) % m_Entries.size()];
    }

    uint32_t CountNew(uint64_t uSeen) const;
    void Forget();

    bool HasOld(uint64_t uSeen) const { return m_TileRevision > uSeen; }

    template <typename TVisit> void VisitOldGroups(uint64_t uSeen, TVisit visit) const;
    template <typename TVisit> void VisitOldTiles(uint64_t uSeen, TVisit visit) const;
    void AddParts(const SVertexRect& rect) const;
    SVertexRect TakeRun(uint32_t uRow, uint32_t& uColumn) const;
    void TakeRects(std::vector<SVertexRect>& rects) const;

    std::array<SEntry, 64> m_Entries; // a ring
    uint32_t m_First = 0;
    uint32_t m_Count = 0;
    std::vector<uint64_t> m_Tiles;  // revision of each tile, row by row; empty until one is needed
    std::vector<uint64_t> m_Groups; // and of each group
    uint32_t m_TilesX = 0;
    uint32_t m_TilesZ = 0;
    uint64_t m_FirstRevision = 0; // for readers from before it, everything is new
    uint64_t m_TileRevision = 0;  // the newest one in m_Tiles
    uint64_t m_Revision = 0;
    SVertexRect m_Whole;
    mutable SGrid m_Grid; // for the time of a call, kept for its memory
};
