#include "tellur/modification/CTerrainModification.h"

#include "host/Log.h"
#include "host/Terrain.h"
#include "tellur/modification/CVertDataSet.h"
#include "tellur/stroke/ITellurBrush.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <utility>

CTerrainModification::~CTerrainModification()
{
    FreeBuffers();
}

void CTerrainModification::FreeBuffers()
{
    GiveHeightBufferBack(std::exchange(m_Source, {}));
    GiveHeightBufferBack(std::exchange(m_Dest, {}));
    m_SizeX = 0;
    m_SizeZ = 0;
}

bool CTerrainModification::InitializeBuffers()
{
    FreeBuffers();
    if (m_Terrain == nullptr)
    {
        CrashLog("[CTerrainModification::InitializeBuffers] terrain set to NULL\n");
        return false;
    }
    m_SizeX = static_cast<int>(m_Terrain->GetCellsPerSide()) + 1;
    m_SizeZ = static_cast<int>(m_Terrain->GetCellsPerSideZ()) + 1;
    m_TouchedMinX = m_SizeX;
    m_TouchedMinZ = m_SizeZ;
    m_TouchedMaxX = -1;
    m_TouchedMaxZ = -1;
    m_GivenUp = false;
    if (m_SizeX < 1 || m_SizeZ < 1)
    {
        return true;
    }
    const size_t nCount = GetVertexCount();
    m_Source = TakeHeightBuffer(nCount);
    m_Dest = TakeHeightBuffer(nCount);
    if (m_Source.pHeights == nullptr || m_Dest.pHeights == nullptr)
    {
        FreeBuffers();
        FreeHeightBuffers(); // one of the two is no use, and memory is short
        NoteLost();
        return false;
    }
    m_Terrain->GetHeights(m_Source.pHeights.get(), nCount);
    std::memcpy(m_Dest.pHeights.get(), m_Source.pHeights.get(), nCount * sizeof(float));
    return true;
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
    if (m_Source.pHeights == nullptr)
    {
        CrashLog("[CTerrainModification::GetSrcHeight] invalid source buffer ptr\n");
        return -1.0F;
    }
    return m_Source.pHeights[static_cast<size_t>(iZ) * m_SizeX + iX];
}

float CTerrainModification::GetDstHeight(int iX, int iZ) const
{
    if (!AreValid(iX, iZ))
    {
        CrashLog("[CTerrainModification::GetDstHeight] invalid indices\n");
        return -1.0F;
    }
    if (m_Dest.pHeights == nullptr)
    {
        CrashLog("[CTerrainModification::GetDstHeight] invalid destination buffer ptr\n");
        return -1.0F;
    }
    return m_Dest.pHeights[static_cast<size_t>(iZ) * m_SizeX + iX];
}

void CTerrainModification::SetDstHeight(int iX, int iZ, float fHeight)
{
    if (!AreValid(iX, iZ))
    {
        CrashLog("[CTerrainModification::SetDstHeight] invalid indices\n");
        return;
    }
    if (m_Dest.pHeights == nullptr)
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
        static_cast<size_t>(m_SizeX) + static_cast<size_t>(iX) + static_cast<size_t>(iZ);
    if (nIndex < GetVertexCount())
    {
        m_Dest.pHeights[nIndex] = std::min(fHeight, m_Terrain->GetSize().y);
        Touch(static_cast<int>(nIndex % static_cast<size_t>(m_SizeX)),
              static_cast<int>(nIndex / static_cast<size_t>(m_SizeX)));
    }
}

void CTerrainModification::Touch(int iX, int iZ)
{
    m_TouchedMinX = std::min(m_TouchedMinX, iX);
    m_TouchedMaxX = std::max(m_TouchedMaxX, iX);
    m_TouchedMinZ = std::min(m_TouchedMinZ, iZ);
    m_TouchedMaxZ = std::max(m_TouchedMaxZ, iZ);
}
