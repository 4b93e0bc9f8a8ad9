#include "tellur/modification/CTerrainModification.h"

#include "host/Log.h"
#include "host/Terrain.h"
#include "tellur/stroke/ITellurBrush.h"

#include <algorithm>
#include <new>

CTerrainModification::~CTerrainModification()
{
    FreeBuffers();
}

void CTerrainModification::FreeBuffers()
{
    if (m_Access != nullptr)
    {
        m_Access->RemoveWatcher(this);
        m_Access = nullptr;
    }
    m_Tiles.Clear();
    m_Whole.reset();
}

bool CTerrainModification::InitializeBuffers()
{
    FreeBuffers();
    m_GivenUp = false;
    m_bShared = false;
    if (m_Terrain == nullptr)
    {
        CrashLog("[CTerrainModification::InitializeBuffers] terrain set to NULL\n");
        return false;
    }
    bool bMemory = m_Tiles.Reset(static_cast<int>(m_Terrain->GetCellsPerSide()) + 1,
                                 static_cast<int>(m_Terrain->GetCellsPerSideZ()) + 1);
    m_Access = dynamic_cast<ITerrainAccess*>(m_Terrain);
    if (bMemory && m_Access != nullptr)
    {
        m_Access->AddWatcher(this);
    }
    else if (bMemory)
    {
        m_Whole.reset(new (std::nothrow) float[GetVertexCount()]);
        bMemory = m_Whole != nullptr;
    }
    if (!bMemory)
    {
        FreeBuffers();
        FreeKeptTiles(); // memory is short
        NoteLost();
        return false;
    }
    if (m_Whole != nullptr)
    {
        m_Terrain->GetHeights(m_Whole.get(), GetVertexCount());
    }
    m_Tiles.SetGround(GetGround());
    return true;
}

float* CTerrainModification::GetGround() const
{
    return m_Access != nullptr ? m_Access->GetHeightRows() : m_Whole.get();
}

void CTerrainModification::OnBeforeHeightsChange(const SGridBox& box)
{
    m_bShared = true;
    if (!m_GivenUp && !m_Tiles.Take(box) && m_InProgress)
    {
        GiveUp();
    }
}

// What they were is gone, too: nothing can be put back or recorded.
void CTerrainModification::OnHeightsGo()
{
    m_Access = nullptr;
    m_Tiles.SetGround(nullptr);
    if (m_InProgress && !m_GivenUp)
    {
        CrashLog("[CTerrainModification::OnHeightsGo] other heights have come; the rest of the "
                 "stroke does nothing\n");
    }
    m_GivenUp = true;
}

bool CTerrainModification::Start(
    ViewId view, uint32_t uFlags, ViewPoint point, Terrain* pTerrain, ITellurBrush* pBrush)
{
    if (pTerrain == nullptr)
    {
        CrashLog("[CTerrainModification::Start] terrain set to NULL\n");
    }
    if (pBrush == nullptr)
    {
        CrashLog("[CTerrainModification::Start] brush set to NULL\n");
        return false;
    }
    if (m_InProgress)
    {
        CrashLog("[CTerrainModification::Start] already in progress\n");
        return false;
    }
    m_Terrain = pTerrain;
    if (!InitializeBuffers())
    {
        // The drag goes on without buffers; each later step says what it misses.
        CrashLog("[CTerrainModification::Start] failed to initialize buffers\n");
        m_Terrain = nullptr;
    }
    m_Brush = pBrush;
    m_Brush->Start(this, view, uFlags, point);
    m_InProgress = true;
    return true;
}

int CTerrainModification::OnMouseMove(
    ViewId view, uint32_t uFlags, ViewPoint point, uintptr_t uExtra1, uintptr_t uExtra2)
{
    if (!m_InProgress)
    {
        CrashLog("[CTerrainModification::OnMouseMove] not in progress\n");
        return 0;
    }
    if (m_Brush == nullptr)
    {
        CrashLog("[CTerrainModification::OnMouseMove] no brush\n");
        return 0;
    }
    return m_Brush->OnMouseMove(this, view, uFlags, point, uExtra1, uExtra2);
}

void CTerrainModification::End(ViewId view, uint32_t uFlags, ViewPoint point)
{
    if (!m_InProgress)
    {
        CrashLog("[CTerrainModification::End] modification not in progress\n");
        return;
    }
    if (m_Brush != nullptr)
    {
        m_Brush->End(this, view, uFlags, point);
    }
    else
    {
        CrashLog("[CTerrainModification::End] no brush\n");
    }
    StoreUndoInformation();
    m_Terrain = nullptr;
    m_Brush = nullptr;
    m_InProgress = false;
}

bool CTerrainModification::Render(const SVec3* pPickedPoint)
{
    return m_InProgress && m_Brush != nullptr && m_Brush->Render(this, pPickedPoint);
}

SExtents& CTerrainModification::GetExtents(SExtents& extents) const
{
    extents = m_Extents;
    return extents;
}

SExtents& CTerrainModification::GetTerrainExtents(SExtents& extents) const
{
    if (m_Terrain == nullptr)
    {
        CrashLog("[CTerrainModification::GetTerrainExtents] terrain set to NULL\n");
        return extents;
    }
    const SVec3 size = m_Terrain->GetSizeVector();
    extents.min = {std::min(0.0F, size.x), std::min(0.0F, size.y), std::min(0.0F, size.z)};
    extents.max = {std::max(0.0F, size.x), std::max(0.0F, size.y), std::max(0.0F, size.z)};
    return extents;
}

float CTerrainModification::GetXSize() const
{
    if (m_Terrain == nullptr)
    {
        CrashLog("[CTerrainModification::GetXSize] terrain set to NULL\n");
        return -1.0F;
    }
    return m_Terrain->GetSize().x;
}

float CTerrainModification::GetYSize() const
{
    if (m_Terrain == nullptr)
    {
        CrashLog("[CTerrainModification::GetYSize] terrain set to NULL\n");
        return -1.0F;
    }
    return m_Terrain->GetSize().y;
}

float CTerrainModification::GetZSize() const
{
    if (m_Terrain == nullptr)
    {
        CrashLog("[CTerrainModification::GetZSize] terrain set to NULL\n");
        return -1.0F;
    }
    return m_Terrain->GetSize().z;
}

bool CTerrainModification::AreValid(int iX, int iZ) const
{
    return iX >= 0 && iX < GetBufferSizeX() && iZ >= 0 && iZ < GetBufferSizeZ();
}

float CTerrainModification::GetSrcHeight(int iX, int iZ) const
{
    if (!AreValid(iX, iZ))
    {
        CrashLog("[CTerrainModification::GetSrcHeight] invalid indices\n");
        return -1.0F;
    }
    if (!m_Tiles.HasGround())
    {
        CrashLog("[CTerrainModification::GetSrcHeight] invalid source buffer ptr\n");
        return -1.0F;
    }
    return m_Tiles.GetSource(iX, iZ);
}

float CTerrainModification::GetDstHeight(int iX, int iZ) const
{
    if (!AreValid(iX, iZ))
    {
        CrashLog("[CTerrainModification::GetDstHeight] invalid indices\n");
        return -1.0F;
    }
    if (!m_Tiles.HasGround())
    {
        CrashLog("[CTerrainModification::GetDstHeight] invalid destination buffer ptr\n");
        return -1.0F;
    }
    return m_Tiles.GetDest(iX, iZ);
}

void CTerrainModification::SetDstHeight(int iX, int iZ, float fHeight)
{
    if (!AreValid(iX, iZ))
    {
        CrashLog("[CTerrainModification::SetDstHeight] invalid indices\n");
        return;
    }
    if (!m_Tiles.HasGround())
    {
        CrashLog("[CTerrainModification::SetDstHeight] invalid destination buffer ptr\n");
        return;
    }
    if (m_Terrain == nullptr)
    {
        CrashLog("[CTerrainModification::SetDstHeight] invalid terrain ptr\n");
        return;
    }
    // Kept as it always was: the element is not the one at (x, z), and heights are only limited
    // upward. Tools write through SetVerts.
    const size_t nIndex =
        static_cast<size_t>(GetBufferSizeX()) + static_cast<size_t>(iX) + static_cast<size_t>(iZ);
    if (nIndex >= GetVertexCount() || m_GivenUp)
    {
        return;
    }
    const auto iWrittenX = static_cast<int>(nIndex % static_cast<size_t>(GetBufferSizeX()));
    const auto iWrittenZ = static_cast<int>(nIndex / static_cast<size_t>(GetBufferSizeX()));
    if (!m_Tiles.Take({iWrittenX, iWrittenZ, iWrittenX, iWrittenZ}))
    {
        GiveUp();
        return;
    }
    m_bShared = true; // the terrain does not show it
    m_Tiles.SetDest(iWrittenX, iWrittenZ, std::min(fHeight, m_Terrain->GetSize().y));
}

const float* CTerrainModification::GetPressTile(uint32_t uTileX, uint32_t uTileZ) const
{
    const bool bInside = m_Tiles.HasGround() &&
                         uTileX < static_cast<uint32_t>(m_Tiles.GetTilesX()) &&
                         uTileZ < static_cast<uint32_t>(m_Tiles.GetTilesZ());
    const SHeightTile* pTile =
        bInside ? m_Tiles.Find(static_cast<int>(uTileX), static_cast<int>(uTileZ)) : nullptr;
    return pTile != nullptr ? pTile->aSource.data() : nullptr;
}

const float* CTerrainModification::CRows::GetRow(int iX, int iZ, int iCount, float* pScratch) const
{
    const CHeightTiles& tiles = m_Session.m_Tiles;
    if (m_bDest && !m_Session.m_bShared) // then the ground shows the destination
    {
        return tiles.GetGround() + static_cast<size_t>(iZ) * static_cast<size_t>(tiles.GetSizeX()) +
               static_cast<size_t>(iX);
    }
    return m_bDest ? tiles.GetDestRow(iX, iZ, iCount, pScratch)
                   : tiles.GetSourceRow(iX, iZ, iCount, pScratch);
}
