#include "editor/view/CTerrainCopies.h"

#include "engine/terrain/CTerrain.h"
#include "host/Log.h"

#include <algorithm>
#include <cmath>

namespace
{

// Rectangles that a tile keeps until its turn comes; more of them become the one round all.
constexpr size_t MOST_PENDING = 2048;
// Changes of so many times what a frame sends do not wait: a stroke must not run away from its
// ground, nor an undo be seen half.
constexpr uint64_t AT_ONCE = 4;
constexpr uint32_t LEAST_ROWS = 32; // that are sent at a time: each part costs calls of its own

} // namespace

CTerrainCopies::CTerrainCopies(uint32_t uTileCells, uint32_t uCoarseCells)
    : m_TileCells(uTileCells)
    , m_CoarseCells(uCoarseCells)
{
}

void CTerrainCopies::Leave(OpenGl& gl)
{
    --m_Users;
    if (m_Users == 0)
    {
        m_Tiles.Release(gl);
        m_Coarse.Release(gl);
        m_States.clear();
        m_pTerrain = nullptr;
        gl.glDeleteSync(m_Fence);
        m_Fence = nullptr;
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
    m_Tiles.Reset(gl, terrain.GetView(), m_TileCells);
    m_Coarse.Release(gl);
    m_bNoRoom = false;
}

bool CTerrainCopies::Follow(
    OpenGl& gl, CTerrain& terrain, const SVec3& eye, uint64_t uMostBytes, uint64_t& uSent)
{
    const uint64_t uBefore = uSent;
    const bool bOther = m_pTerrain != &terrain || m_VerticesX != terrain.GetVerticesX() ||
                        m_VerticesZ != terrain.GetVerticesZ();
    if (bOther)
    {
        Reset(gl, terrain);
    }
    if (m_Fence != nullptr)
    {
        gl.glWaitSync(m_Fence, 0, GL_TIMEOUT_IGNORED); // another context may have changed them
    }
    const bool bChanged = terrain.TakeDirtyRects(m_Seen, m_Changed);
    if (bChanged)
    {
        AddPending();
    }
    // ALL_BYTES is the largest number there is, and the sum must not run over.
    const uint64_t uEnd = uBefore + std::min(uMostBytes, ALL_BYTES - uBefore);
    const bool bMuch = CountPending() / AT_ONCE > uMostBytes;
    const bool bAside = bMuch && PutAside(gl, terrain, uMostBytes * AT_ONCE);
    const bool bAtOnce = !bMuch || bAside;
    if (bChanged || bAside)
    {
        uSent += FollowCoarse(gl, terrain);
    }
    m_bPending = false;
    for (STileState& tile : m_States)
    {
        if (tile.bThere && !tile.pending.empty() && (bAtOnce || uSent < uEnd))
        {
            uSent += BringIn(gl, terrain, tile, bAtOnce ? ALL_BYTES : uEnd - uSent);
        }
        m_bPending = m_bPending || (tile.bThere && !tile.pending.empty());
    }
    // Tiles that are there come first, since they show the stroke; those that are missing take what
    // is left of the frame's bytes.
    const bool bFirst = uSent < uEnd && BringInCoarse(gl, terrain, uEnd - uSent, uSent);
    while (m_Missing > 0 && uSent < uEnd && !m_bNoRoom && !bFirst)
    {
        STileState& tile = *FindNearestMissing(terrain, eye);
        Begin(gl, tile);
        uSent += m_bNoRoom ? 0 : BringIn(gl, terrain, tile, uEnd - uSent);
    }
    if (m_Missing == 0)
    {
        m_Coarse.Release(gl);
    }
    if (uSent > uBefore)
    {
        LetOthersSee(gl);
    }
    return !m_bNoRoom;
}

// Tiles that would show half of a large change give way to the coarse ground until they have all of
// it; what the others wait for is uRest bytes at most. False where there is no coarse ground; they
// then show what they have.
bool CTerrainCopies::PutAside(OpenGl& gl, const CTerrain& terrain, uint64_t uRest)
{
    if (!m_Coarse.IsMade())
    {
        if (!m_Coarse.Make(gl, terrain.GetView(), m_TileCells, m_CoarseCells))
        {
            return false;
        }
        // Nothing is in the copy yet, so all of the ground counts as changed.
        m_Changed = {{0, 0, m_VerticesX, m_VerticesZ}};
    }
    const auto nWaiting =
        std::count_if(m_States.begin(),
                      m_States.end(),
                      [](const STileState& tile) { return CountPending(tile) > 0; });
    for (STileState& tile : m_States)
    {
        if (CountPending(tile) > uRest / std::max<uint64_t>(nWaiting, 1))
        {
            tile.bThere = false;
            ++m_Missing;
        }
    }
    return true;
}

// The whole ground at once, where the terrain will not be there with this frame. True when it was
// made: that is enough for the first frame.
bool CTerrainCopies::BringInCoarse(OpenGl& gl,
                                   const CTerrain& terrain,
                                   uint64_t uMostBytes,
                                   uint64_t& uSent)
{
    const uint64_t uAll = uint64_t{m_VerticesX} * m_VerticesZ * sizeof(float);
    if (m_Missing == 0 || uAll <= uMostBytes || m_Coarse.IsMade() ||
        !m_Coarse.Make(gl, terrain.GetView(), m_TileCells, m_CoarseCells))
    {
        return false;
    }
    m_Changed = {{0, 0, m_VerticesX, m_VerticesZ}};
    uSent += FollowCoarse(gl, terrain);
    return true;
}

// Contexts of other views take from the textures what was sent before this.
void CTerrainCopies::LetOthersSee(OpenGl& gl)
{
    gl.glDeleteSync(m_Fence);
    m_Fence = gl.glFenceSync(GL_SYNC_GPU_COMMANDS_COMPLETE, 0);
    gl.glFlush();
}

void CTerrainCopies::Begin(OpenGl& gl, STileState& tile)
{
    if (tile.bBegun)
    {
        return;
    }
    m_bNoRoom =
        !m_Tiles.MakeTile(gl, tile.whole.uMinX / m_TileCells, tile.whole.uMinZ / m_TileCells);
    if (m_bNoRoom)
    {
        CrashLog("[CTerrainRenderer::Render] the graphics card has no room for a terrain of "
                 "%u x %u vertices\n",
                 m_VerticesX,
                 m_VerticesZ);
        return;
    }
    tile.bBegun = true;
    // With a row of the neighbours' vertices all round, from which the normals at the border are
    // made.
    tile.pending = {tile.whole.Grown(1, m_VerticesX, m_VerticesZ)};
}

// Bytes of heights that a tile waits for which is there.
uint64_t CTerrainCopies::CountPending(const STileState& tile)
{
    uint64_t uBytes = 0;
    for (size_t i = 0; tile.bThere && i < tile.pending.size(); ++i)
    {
        const SVertexRect& rect = tile.pending[i];
        uBytes += uint64_t{rect.uEndX - rect.uMinX} * (rect.uEndZ - rect.uMinZ) * sizeof(float);
    }
    return uBytes;
}

uint64_t CTerrainCopies::CountPending() const
{
    uint64_t uBytes = 0;
    for (const STileState& tile : m_States)
    {
        uBytes += CountPending(tile);
    }
    return uBytes;
}

// What changed in tiles that have textures; all of the others is new anyway.
void CTerrainCopies::AddPending()
{
    for (STileState& tile : m_States)
    {
        if (!tile.bBegun)
        {
            continue;
        }
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

// Moves pending rectangles of a tile, or rows of the last one, to the parts that are sent.
void CTerrainCopies::TakePending(STileState& tile, uint64_t uMostBytes)
{
    m_Parts.clear();
    uint64_t uBytes = 0;
    while (!tile.pending.empty() && uBytes < uMostBytes)
    {
        SVertexRect& rect = tile.pending.back();
        const uint64_t uRowBytes = uint64_t{rect.uEndX - rect.uMinX} * sizeof(float);
        const uint64_t uRows = std::max<uint64_t>((uMostBytes - uBytes) / uRowBytes, LEAST_ROWS);
        SVertexRect part = rect;
        if (uRows < rect.uEndZ - rect.uMinZ)
        {
            part.uEndZ = part.uMinZ + static_cast<uint32_t>(uRows);
            rect.uMinZ = part.uEndZ;
        }
        else
        {
            tile.pending.pop_back();
        }
        uBytes += uRowBytes * (part.uEndZ - part.uMinZ);
        m_Parts.push_back(part);
    }
}

uint64_t
CTerrainCopies::BringIn(OpenGl& gl, const CTerrain& terrain, STileState& tile, uint64_t uMostBytes)
{
    TakePending(tile, uMostBytes);
    const uint64_t uBytes = m_Tiles.Upload(gl,
                                           terrain.GetView(),
                                           tile.whole.uMinX / m_TileCells,
                                           tile.whole.uMinZ / m_TileCells,
                                           m_Parts);
    // A tile that is still coming in is drawn from coarse ground and measured once, when all is
    // there.
    if (tile.bThere)
    {
        for (SVertexRect& part : m_Parts)
        {
            part = tile.whole.Intersection(part);
        }
        m_Tree.Update(terrain.GetHeightData(), m_Parts);
    }
    else if (tile.pending.empty())
    {
        Complete(terrain, tile);
    }
    return uBytes;
}

// The tile takes the place of the coarse ground.
void CTerrainCopies::Complete(const CTerrain& terrain, STileState& tile)
{
    tile.bThere = true;
    --m_Missing;
    m_Tree.SetFloor(tile.whole.uMinX / m_TileCells, tile.whole.uMinZ / m_TileCells, 0);
    m_Tree.Update(terrain.GetHeightData(), {tile.whole});
}

uint64_t CTerrainCopies::FollowCoarse(OpenGl& gl, const CTerrain& terrain)
{
    if (!m_Coarse.IsMade())
    {
        return 0;
    }
    const uint64_t uBytes = m_Coarse.Follow(gl, terrain.GetView(), m_Changed);
    for (const STileState& tile : m_States)
    {
        if (!tile.bThere)
        {
            // What is drawn from the coarse ground must not be split further than that ground goes.
            m_Tree.TakeCoarse(m_Coarse.GetTree(),
                              m_Coarse.GetShift(),
                              tile.whole.uMinX / m_TileCells,
                              tile.whole.uMinZ / m_TileCells);
        }
    }
    return uBytes;
}

// Those that have textures before all others.
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
        const bool bSooner = pNearest == nullptr || (tile.bBegun && !pNearest->bBegun) ||
                             (tile.bBegun == pNearest->bBegun && fDistance < fNearest);
        if (!tile.bThere && bSooner)
        {
            pNearest = &tile;
            fNearest = fDistance;
        }
    }
    return pNearest;
}
