#include "tellur/modification/CDragHeights.h"

#include "host/Terrain.h"
#include "tellur/modification/CVertDataSet.h"

#include <algorithm>
#include <cstring>
#include <new>

namespace
{

constexpr int SIDE = SHeightTile::SIDE;

} // namespace

CDragHeights::~CDragHeights()
{
    Close();
}

bool CDragHeights::Open(Terrain& terrain, ITerrainWatcher& watcher)
{
    Close();
    m_bShared = false;
    m_pTerrain = &terrain;
    bool bMemory = m_Tiles.Reset(static_cast<int>(terrain.GetCellsPerSide()) + 1,
                                 static_cast<int>(terrain.GetCellsPerSideZ()) + 1);
    m_pAccess = dynamic_cast<ITerrainAccess*>(&terrain);
    // The watcher is added before the first height is read, so no change by others is missed.
    if (bMemory && m_pAccess != nullptr)
    {
        m_pWatcher = &watcher;
        m_pAccess->AddWatcher(m_pWatcher);
    }
    else if (bMemory)
    {
        // Without direct access all heights are read once, and handed over with each change.
        m_Whole.reset(new (std::nothrow) float[GetVertexCount()]);
        bMemory = m_Whole != nullptr;
    }
    if (!bMemory)
    {
        Close();
        FreeKeptTiles(); // memory is short
        return false;
    }
    if (m_Whole != nullptr)
    {
        terrain.GetHeights(m_Whole.get(), GetVertexCount());
    }
    m_Tiles.SetGround(GetGround());
    m_Tiles.SetGuard(dynamic_cast<const ITerrainProtection*>(&terrain));
    return true;
}

void CDragHeights::Close()
{
    if (m_pAccess != nullptr && m_pWatcher != nullptr)
    {
        m_pAccess->RemoveWatcher(m_pWatcher);
    }
    m_pAccess = nullptr;
    m_pWatcher = nullptr;
    m_pTerrain = nullptr;
    m_Tiles.Clear();
    m_Whole.reset();
}

void CDragHeights::LoseGround()
{
    // The terrain has removed the watcher by itself, and the address of its rows is dead.
    m_pAccess = nullptr;
    m_Tiles.SetGround(nullptr);
    m_Tiles.SetGuard(nullptr);
}

bool CDragHeights::IsTerrainAsAtStart() const
{
    return m_pTerrain == nullptr ||
           (static_cast<int>(m_pTerrain->GetCellsPerSide()) + 1 == GetSizeX() &&
            static_cast<int>(m_pTerrain->GetCellsPerSideZ()) + 1 == GetSizeZ());
}

float* CDragHeights::GetGround() const
{
    return m_pAccess != nullptr ? m_pAccess->GetHeightRows() : m_Whole.get();
}

const float* CDragHeights::GetPressTile(uint32_t uTileX, uint32_t uTileZ) const
{
    const bool bInside = m_Tiles.HasGround() &&
                         uTileX < static_cast<uint32_t>(m_Tiles.GetTilesX()) &&
                         uTileZ < static_cast<uint32_t>(m_Tiles.GetTilesZ());
    const SHeightTile* pTile =
        bInside ? m_Tiles.Find(static_cast<int>(uTileX), static_cast<int>(uTileZ)) : nullptr;
    return pTile != nullptr ? pTile->aSource.data() : nullptr;
}

const float* CDragHeights::CRows::GetRow(int iX, int iZ, int iCount, float* pScratch) const
{
    const CHeightTiles& tiles = m_Heights.m_Tiles;
    if (m_bDest && !m_Heights.m_bShared) // then the ground shows the destination
    {
        return tiles.GetGround() + static_cast<size_t>(iZ) * static_cast<size_t>(tiles.GetSizeX()) +
               static_cast<size_t>(iX);
    }
    return m_bDest ? tiles.GetDestRow(iX, iZ, iCount, pScratch)
                   : tiles.GetSourceRow(iX, iZ, iCount, pScratch);
}

// A pass has written the ground along with the tiles unless it is shared. Then the whole box is
// copied, and what others wrote inside it goes, as it does with a set.
void CDragHeights::CatchUp(SPointChange& changed)
{
    if (m_bShared)
    {
        changed.bDiffers = changed.bDiffers || !IsDestShown(changed.box);
        CopyDest(changed.box);
    }
}

void CDragHeights::PutOnGround(SPointChange& changed)
{
    // Looking for a difference costs as much as writing, so only where it may matter: all that
    // changed is at a limit.
    const bool bTop = changed.fMin >= m_pTerrain->GetSize().y;
    changed.bDiffers = changed.nChanged > 0 && !((bTop || changed.fMax <= 0.0F) &&
                                                 m_pAccess != nullptr && IsDestShown(changed.box));
    CopyDest(changed.box);
}

// All heights that were written lie at a limit when the lowest is at the top or the highest is 0.
// If none of them differs from before, the point wanted to go beyond and could not.
SMergeResult CDragHeights::Announce(const SPointChange& changed)
{
    SMergeResult result = {changed.nChanged, changed.nVisited};
    if (changed.nChanged == 0)
    {
        return result;
    }
    const float fTop = m_pTerrain->GetSize().y;
    const bool bTop = changed.fMin >= fTop;
    const bool bLimit = bTop || changed.fMax <= 0.0F;
    result.fLimit = bTop ? fTop : 0.0F;
    if (m_pAccess != nullptr)
    {
        result.bAtLimit = bLimit && !changed.bDiffers;
        m_pAccess->OnRowsWritten(changed.box);
        return result;
    }
    const SExtents corners = GetBox(changed.box);
    SExtents box = CVertDataSet::GetStartExtents(); // with its limits, as always
    CVertDataSet::Widen(box, {corners.min.x, changed.fMin, corners.min.z});
    CVertDataSet::Widen(box, {corners.max.x, changed.fMax, corners.max.z});
    result.bAtLimit = bLimit && m_pTerrain->HasHeights(m_Whole.get(), GetVertexCount(), box);
    m_pTerrain->SetHeights(m_Whole.get(), GetVertexCount(), box);
    return result;
}

void CDragHeights::CopyDest(const SGridBox& box)
{
    float* pGround = GetGround();
    const auto nPitch = static_cast<size_t>(GetSizeX());
    for (int iZ = box.iMinZ; iZ <= box.iMaxZ; ++iZ)
    {
        for (int iX = box.iMinX; iX <= box.iMaxX;)
        {
            const int iPart = std::min(SIDE - iX % SIDE, box.iMaxX + 1 - iX);
            // A box may reach over tiles that were never taken; the ground there is the
            // destination.
            if (const SHeightTile* pTile = m_Tiles.Find(iX / SIDE, iZ / SIDE))
            {
                std::memcpy(pGround + static_cast<size_t>(iZ) * nPitch + static_cast<size_t>(iX),
                            pTile->aDest.data() + SHeightTile::GetPlace(iX, iZ),
                            static_cast<size_t>(iPart) * sizeof(float));
            }
            iX += iPart;
        }
    }
}

bool CDragHeights::IsDestShown(const SGridBox& box) const
{
    const float* pGround = GetGround();
    const auto nPitch = static_cast<size_t>(GetSizeX());
    bool bShown = true;
    for (int iZ = box.iMinZ; iZ <= box.iMaxZ && bShown; ++iZ)
    {
        for (int iX = box.iMinX; iX <= box.iMaxX && bShown; ++iX)
        {
            bShown = m_Tiles.GetDest(iX, iZ) ==
                     pGround[static_cast<size_t>(iZ) * nPitch + static_cast<size_t>(iX)];
        }
    }
    return bShown;
}

SExtents CDragHeights::GetBox(const SGridBox& box) const
{
    const SVec3 size = m_pTerrain->GetSize();
    const float fStepX = size.x / static_cast<float>(GetSizeX() - 1);
    const float fStepZ = size.z / static_cast<float>(GetSizeZ() - 1);
    return {
        {static_cast<float>(box.iMinX) * fStepX, 0.0F, static_cast<float>(box.iMinZ) * fStepZ},
        {static_cast<float>(box.iMaxX) * fStepX, size.y, static_cast<float>(box.iMaxZ) * fStepZ}};
}

void CDragHeights::ShowDest(const SGridBox& box)
{
    CopyDest(box);
    if (m_pAccess != nullptr)
    {
        m_pAccess->OnRowsWritten(box);
    }
    else
    {
        m_pTerrain->SetHeights(m_Whole.get(), GetVertexCount(), GetBox(box));
    }
}

void CDragHeights::Restore()
{
    if (!HasGround() || m_pTerrain == nullptr || !IsTerrainAsAtStart())
    {
        return;
    }
    m_Tiles.ForEach(
        [this](SHeightTile& tile, int iTileX, int iTileZ)
        {
            // Tiles that were not written show what they had at the press and cost nothing.
            if (tile.bWritten)
            {
                tile.aDest = tile.aSource;
                tile.bWritten = false;
                ShowDest(m_Tiles.GetTileBox(iTileX, iTileZ));
            }
        });
}
