#include "editor/view/CTerrainCopies.h"

#include "engine/terrain/CTerrain.h"
#include "host/Log.h"

#include <algorithm>
#include <cmath>

namespace
{

// Rectangles that a tile keeps until its turn comes; more of them become the one round all.
constexpr size_t MOST_PENDING = 2048;

} // namespace

CTerrainCopies::CTerrainCopies(uint32_t uTileCells)
    : m_TileCells(uTileCells)
{
}

void CTerrainCopies::Leave(OpenGl& gl)
{
    --m_Users;
    if (m_Users == 0)
    {
        m_Tiles.Release(gl);
        m_States.clear();
        m_pTerrain = nullptr;
    }
}

void CTerrainCopies::Reset(OpenGl& gl, const CTerrain& terrain)
{
    m_pTerrain = &terrain;
    m_Seen = 0;
    m_VerticesX = terrain.GetVerticesX();
    m_VerticesZ = terrain.GetVerticesZ();
    m_Tree.Reset(m_VerticesX, m_VerticesZ, m_TileCells);
    m_CountX = m_Tree.GetCountX(m_Tree.GetTopLevel());
    m_Missing = m_CountX * m_Tree.GetCountZ(m_Tree.GetTopLevel());
    m_States.assign(m_Missing, {});
    for (uint32_t i = 0; i < m_Missing; ++i)
    {
        // Neighbours share the vertices of their border.
        const uint32_t uLeft = i % m_CountX * m_TileCells;
        const uint32_t uTop = i / m_CountX * m_TileCells;
        m_States[i].whole = {uLeft,
                             uTop,
                             std::min(uLeft + m_TileCells + 1, m_VerticesX),
                             std::min(uTop + m_TileCells + 1, m_VerticesZ)};
    }
    m_Tiles.Reset(gl, terrain, m_TileCells);
    m_bNoRoom = false;
}

bool CTerrainCopies::Follow(
    OpenGl& gl, CTerrain& terrain, const SVec3& eye, uint64_t uMostBytes, uint64_t& uSent)
{
    const bool bOther = m_pTerrain != &terrain || m_VerticesX != terrain.GetVerticesX() ||
                        m_VerticesZ != terrain.GetVerticesZ();
    if (bOther)
    {
        Reset(gl, terrain);
    }
    if (terrain.TakeDirtyRects(m_Seen, m_Changed))
    {
        AddPending();
    }
    const uint64_t uEnd = uSent + std::min(uMostBytes, ALL_BYTES - uSent);
    m_bPending = false;
    for (STileState& tile : m_States)
    {
        const bool bStale = tile.bThere && !tile.pending.empty();
        m_bPending = m_bPending || (bStale && uSent >= uEnd);
        if (bStale && uSent < uEnd)
        {
            uSent += BringIn(gl, terrain, tile);
        }
    }
    while (m_Missing > 0 && uSent < uEnd && !m_bNoRoom)
    {
        uSent += AddTile(gl, terrain, *FindNearestMissing(terrain, eye));
    }
    return !m_bNoRoom;
}

uint64_t CTerrainCopies::AddTile(OpenGl& gl, CTerrain& terrain, STileState& tile)
{
    m_bNoRoom =
        !m_Tiles.MakeTile(gl, tile.whole.uMinX / m_TileCells, tile.whole.uMinZ / m_TileCells);
    if (m_bNoRoom)
    {
        CrashLog("[CTerrainRenderer::Render] the graphics card has no room for a terrain of "
                 "%u x %u vertices\n",
                 m_VerticesX,
                 m_VerticesZ);
        return 0;
    }
    tile.bThere = true;
    --m_Missing;
    return BringIn(gl, terrain, tile);
}

void CTerrainCopies::AddPending()
{
    for (STileState& tile : m_States)
    {
        // Normals change one vertex further, also over the border.
        const SVertexRect reach = tile.whole.Grown(1, m_VerticesX, m_VerticesZ);
        for (const SVertexRect& rect : m_Changed)
        {
            const SVertexRect part = reach.Intersection(rect);
            if (!part.IsEmpty())
            {
                tile.pending.push_back(part);
            }
        }
        if (tile.pending.size() > MOST_PENDING)
        {
            SVertexRect all;
            for (const SVertexRect& rect : tile.pending)
            {
                all = all.Union(rect);
            }
            tile.pending = {all};
        }
    }
}

uint64_t CTerrainCopies::BringIn(OpenGl& gl, CTerrain& terrain, STileState& tile)
{
    uint64_t uBytes = 0;
    for (const SVertexRect& rect : tile.pending)
    {
        m_Tree.Update(terrain.GetHeightData(), tile.whole.Intersection(rect));
        uBytes += m_Tiles.Upload(gl, terrain, tile.whole, rect);
    }
    tile.pending.clear();
    return uBytes;
}

CTerrainCopies::STileState* CTerrainCopies::FindNearestMissing(const CTerrain& terrain,
                                                               const SVec3& eye)
{
    const SVec3 size = terrain.GetSize();
    const float fEyeX = eye.x / size.x * static_cast<float>(m_VerticesX - 1);
    const float fEyeZ = eye.z / size.z * static_cast<float>(m_VerticesZ - 1);
    STileState* pNearest = nullptr;
    float fNearest = 0.0F;
    for (STileState& tile : m_States)
    {
        const auto getGap = [](float fAt, uint32_t uFrom, uint32_t uTo)
        {
            return fAt - std::clamp(fAt, static_cast<float>(uFrom), static_cast<float>(uTo));
        };
        const float fDistance = std::hypot(getGap(fEyeX, tile.whole.uMinX, tile.whole.uEndX),
                                           getGap(fEyeZ, tile.whole.uMinZ, tile.whole.uEndZ));
        if (!tile.bThere && (pNearest == nullptr || fDistance < fNearest))
        {
            pNearest = &tile;
            fNearest = fDistance;
        }
    }
    return pNearest;
}
