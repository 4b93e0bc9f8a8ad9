#include "engine/terrain/CDirtyRegions.h"

#include <algorithm>
#include <new>

namespace
{

uint64_t g_LastRevision = 0;

uint32_t DivideUp(uint32_t uCount, uint32_t uBy)
{
    return (uCount + uBy - 1) / uBy;
}

// What a rectangle touches, squares of uSide.
SVertexRect GetSquares(const SVertexRect& rect, uint32_t uSide)
{
    return {rect.uMinX / uSide,
            rect.uMinZ / uSide,
            DivideUp(rect.uEndX, uSide),
            DivideUp(rect.uEndZ, uSide)};
}

// And the other way round.
SVertexRect GetVertices(const SVertexRect& squares, uint32_t uSide)
{
    return {
        squares.uMinX * uSide, squares.uMinZ * uSide, squares.uEndX * uSide, squares.uEndZ * uSide};
}

} // namespace

void CDirtyRegions::Reset(const SVertexRect& whole)
{
    m_Whole = whole;
    m_Count = 0;
    m_Tiles.clear();
    m_TilesX = DivideUp(whole.uEndX, TILE);
    m_TilesZ = DivideUp(whole.uEndZ, TILE);
    m_TileRevision = 0;
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
        Forget();
    }
    m_Revision = ++g_LastRevision;
    m_Entries[(m_First + m_Count) % m_Entries.size()] = {m_Revision, rect};
    ++m_Count;
}

// The oldest rectangle goes on as a revision of its tiles.
void CDirtyRegions::Forget()
{
    const SEntry oldest = m_Entries[m_First];
    m_First = (m_First + 1) % static_cast<uint32_t>(m_Entries.size());
    --m_Count;
    const uint32_t uGroupsX = DivideUp(m_TilesX, GROUP);
    try
    {
        if (m_Tiles.empty())
        {
            // The tiles come last: that they are there says that the groups are there too.
            m_Groups.assign(size_t{uGroupsX} * DivideUp(m_TilesZ, GROUP), 0);
            m_Tiles.assign(size_t{m_TilesX} * m_TilesZ, 0);
        }
    }
    catch (const std::bad_alloc&)
    {
        // Without tiles the rectangle is lost, so whoever has not seen it takes everything for new.
        m_FirstRevision = oldest.uRevision;
        return;
    }
    // Rectangles are forgotten in the order of their revisions: this is the newest one in the
    // tiles.
    m_TileRevision = oldest.uRevision;
    const SVertexRect tiles = GetSquares(oldest.rect, TILE);
    for (uint32_t z = tiles.uMinZ; z < tiles.uEndZ; ++z)
    {
        uint64_t* pRow = m_Tiles.data() + size_t{z} * m_TilesX;
        std::fill(pRow + tiles.uMinX, pRow + tiles.uEndX, oldest.uRevision);
    }
    const SVertexRect groups = GetSquares(tiles, GROUP);
    for (uint32_t z = groups.uMinZ; z < groups.uEndZ; ++z)
    {
        uint64_t* pRow = m_Groups.data() + size_t{z} * uGroupsX;
        std::fill(pRow + groups.uMinX, pRow + groups.uEndX, oldest.uRevision);
    }
}

uint32_t CDirtyRegions::CountNew(uint64_t uSeen) const
{
    uint32_t uNew = 0;
    while (uNew < m_Count && GetNewest(uNew).uRevision > uSeen)
    {
        ++uNew;
    }
    return uNew;
}

// Calls visit with the tiles of each group that may have some.
template <typename TVisit> void CDirtyRegions::VisitOldGroups(uint64_t uSeen, TVisit visit) const
{
    const SVertexRect all = {0, 0, m_TilesX, m_TilesZ};
    const uint32_t uGroupsX = DivideUp(m_TilesX, GROUP);
    // After a Reset the groups are still there; HasOld is false until new ones are made.
    for (uint32_t i = 0; HasOld(uSeen) && i < m_Groups.size(); ++i)
    {
        if (m_Groups[i] > uSeen)
        {
            const uint32_t uX = i % uGroupsX;
            const uint32_t uZ = i / uGroupsX;
            visit(GetVertices({uX, uZ, uX + 1, uZ + 1}, GROUP).Intersection(all));
        }
    }
}

// Calls visit with each tile.
template <typename TVisit> void CDirtyRegions::VisitOldTiles(uint64_t uSeen, TVisit visit) const
{
    const auto visitGroup = [&](const SVertexRect& group)
    {
        const uint32_t uWidth = group.uEndX - group.uMinX;
        for (uint32_t i = 0; i < uWidth * (group.uEndZ - group.uMinZ); ++i)
        {
            const uint32_t uX = group.uMinX + i % uWidth;
            const uint32_t uZ = group.uMinZ + i / uWidth;
            if (m_Tiles[size_t{uZ} * m_TilesX + uX] > uSeen)
            {
                visit(SVertexRect{uX, uZ, uX + 1, uZ + 1});
            }
        }
    };
    VisitOldGroups(uSeen, visitGroup);
}

SVertexRect CDirtyRegions::GetBoxSince(uint64_t uSeen) const
{
    if (uSeen < m_FirstRevision)
    {
        return m_Whole;
    }
    SVertexRect box;
    for (uint32_t i = 0; i < CountNew(uSeen); ++i)
    {
        box = box.Union(GetNewest(i).rect);
    }
    // A tile counts as a whole, because which of its vertices changed has been forgotten.
    const auto addTile = [&](const SVertexRect& tile)
    {
        box = box.Union(GetVertices(tile, TILE).Intersection(m_Whole));
    };
    VisitOldTiles(uSeen, addTile);
    return box;
}

void CDirtyRegions::GetChangedSince(uint64_t uSeen, std::vector<SVertexRect>& rects) const
{
    rects.clear();
    const uint32_t uNew = CountNew(uSeen);
    if (uSeen < m_FirstRevision || (uNew == 1 && !HasOld(uSeen)))
    {
        // Everything, or a single exact rectangle: nothing can overlap, so no grid is needed.
        rects.push_back(uSeen < m_FirstRevision ? m_Whole : GetNewest(0).rect);
        return;
    }
    if (uNew == 0)
    {
        return; // the latest changes are newer than those that tiles know of
    }
    SVertexRect tiles;
    for (uint32_t i = 0; i < uNew; ++i)
    {
        tiles = tiles.Union(GetSquares(GetNewest(i).rect, TILE));
    }
    VisitOldGroups(uSeen, [&](const SVertexRect& group) { tiles = tiles.Union(group); });
    // One part a tile of the box round all changes. Changes in the same tile become one part, and
    // parts of different tiles share no vertex.
    m_Grid.tiles = tiles;
    m_Grid.parts.assign(size_t{tiles.uEndX - tiles.uMinX} * (tiles.uEndZ - tiles.uMinZ), {});
    for (uint32_t i = 0; i < uNew; ++i)
    {
        AddParts(GetNewest(i).rect);
    }
    const auto addTile = [&](const SVertexRect& tile)
    {
        AddParts(GetVertices(tile, TILE).Intersection(m_Whole));
    };
    VisitOldTiles(uSeen, addTile);
    TakeRects(rects);
}

// Widens the parts of all tiles under rect.
void CDirtyRegions::AddParts(const SVertexRect& rect) const
{
    const SVertexRect tiles = GetSquares(rect, TILE);
    const size_t nPitch = m_Grid.tiles.uEndX - m_Grid.tiles.uMinX;
    for (uint32_t z = tiles.uMinZ; z < tiles.uEndZ; ++z)
    {
        SPart* pRow = m_Grid.parts.data() + (z - m_Grid.tiles.uMinZ) * nPitch;
        for (uint32_t x = tiles.uMinX; x < tiles.uEndX; ++x)
        {
            const SVertexRect tile = GetVertices({x, z, x + 1, z + 1}, TILE);
            const SVertexRect in = rect.Intersection(tile);
            SPart& part = pRow[x - m_Grid.tiles.uMinX];
            part.uMinX = std::min(part.uMinX, static_cast<uint8_t>(in.uMinX - tile.uMinX));
            part.uMinZ = std::min(part.uMinZ, static_cast<uint8_t>(in.uMinZ - tile.uMinZ));
            part.uEndX = std::max(part.uEndX, static_cast<uint8_t>(in.uEndX - tile.uMinX));
            part.uEndZ = std::max(part.uEndZ, static_cast<uint8_t>(in.uEndZ - tile.uMinZ));
        }
    }
}

// The vertices of the part at uColumn, and of those after it that go on at its side; uColumn is
// then the last one's. Both count from the grid's corner.
SVertexRect CDirtyRegions::TakeRun(uint32_t uRow, uint32_t& uColumn) const
{
    const uint32_t uWidth = m_Grid.tiles.uEndX - m_Grid.tiles.uMinX;
    const SPart* pRow = m_Grid.parts.data() + size_t{uRow} * uWidth;
    const SPart& first = pRow[uColumn];
    const uint32_t uLeft = (m_Grid.tiles.uMinX + uColumn) * TILE;
    const uint32_t uTop = (m_Grid.tiles.uMinZ + uRow) * TILE;
    SVertexRect run = {
        uLeft + first.uMinX, uTop + first.uMinZ, uLeft + first.uEndX, uTop + first.uEndZ};
    while (uColumn + 1 < uWidth && pRow[uColumn].uEndX == TILE && pRow[uColumn + 1].uMinX == 0 &&
           pRow[uColumn + 1].uMinZ == first.uMinZ && pRow[uColumn + 1].uEndZ == first.uEndZ)
    {
        ++uColumn;
        run.uEndX = (m_Grid.tiles.uMinX + uColumn) * TILE + pRow[uColumn].uEndX;
    }
    return run;
}

// Runs that go on below one of the row before make that one taller.
void CDirtyRegions::TakeRects(std::vector<SVertexRect>& rects) const
{
    const uint32_t uWidth = m_Grid.tiles.uEndX - m_Grid.tiles.uMinX;
    const uint32_t uDepth = m_Grid.tiles.uEndZ - m_Grid.tiles.uMinZ;
    m_Grid.above.clear();
    for (uint32_t z = 0; z < uDepth; ++z)
    {
        m_Grid.below.clear();
        size_t nAbove = 0;
        for (uint32_t x = 0; x < uWidth; ++x)
        {
            if (m_Grid.parts[size_t{z} * uWidth + x].uEndX == 0)
            {
                continue;
            }
            const SVertexRect run = TakeRun(z, x);
            // Rectangles of the row above stand from left to right, as the runs do: one index goes
            // along.
            const auto isAt = [&](uint32_t uEdge)
            {
                return nAbove < m_Grid.above.size() && rects[m_Grid.above[nAbove]].uMinX < uEdge;
            };
            while (isAt(run.uMinX))
            {
                ++nAbove;
            }
            // Only a run with the same columns, right below, goes on with a rectangle.
            const bool bOn = isAt(run.uMinX + 1) &&
                             rects[m_Grid.above[nAbove]].uEndX == run.uEndX &&
                             rects[m_Grid.above[nAbove]].uEndZ == run.uMinZ;
            if (!bOn)
            {
                rects.push_back(run);
            }
            const size_t nRect = bOn ? m_Grid.above[nAbove] : rects.size() - 1;
            rects[nRect].uEndZ = run.uEndZ;
            m_Grid.below.push_back(nRect);
        }
        std::swap(m_Grid.above, m_Grid.below);
    }
}
