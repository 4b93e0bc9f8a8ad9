#include "tellur/modification/CTerrainModification.h"

#include "host/EditorHost.h"
#include "host/IPluginStrokes.h"
#include "host/Log.h"
#include "host/Terrain.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modification/CTellurUndo.h"
#include "tellur/modification/CVertDataSet.h"
#include "tellur/modification/GridRange.h"
#include "tellur/modification/HeightChanges.h"
#include "tellur/modification/HeightMerge.h"
#include "tellur/stroke/ITellurBrush.h"
#include "tellur/stroke/ITellurFunction.h"

#include <algorithm>
#include <memory>
#include <new>

bool CTerrainModification::InitializeBuffers(Terrain* pTerrain)
{
    m_GivenUp = false;
    if (pTerrain == nullptr)
    {
        m_Heights.Close();
        CrashLog("[CTerrainModification::InitializeBuffers] terrain set to NULL\n");
        return false;
    }
    if (!m_Heights.Open(*pTerrain, *this))
    {
        NoteLost();
        return false;
    }
    return true;
}

void CTerrainModification::OnBeforeHeightsChange(const SGridBox& box)
{
    // The heights are still those of the press, so the tiles that the drag lacks are taken now.
    m_Heights.SetShared();
    if (!m_GivenUp && !m_Heights.GetTiles().Take(box) && m_InProgress)
    {
        GiveUp();
    }
}

// What they were is gone, too: nothing can be put back or recorded.
void CTerrainModification::OnHeightsGo()
{
    m_Heights.LoseGround();
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
    if (!InitializeBuffers(pTerrain))
    {
        // The drag goes on without buffers; each later step says what it misses.
        CrashLog("[CTerrainModification::Start] failed to initialize buffers\n");
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
    m_Heights.Leave();
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
    if (GetTerrain() == nullptr)
    {
        CrashLog("[CTerrainModification::GetTerrainExtents] terrain set to NULL\n");
        return extents;
    }
    const SVec3 size = GetTerrain()->GetSizeVector();
    extents.min = {std::min(0.0F, size.x), std::min(0.0F, size.y), std::min(0.0F, size.z)};
    extents.max = {std::max(0.0F, size.x), std::max(0.0F, size.y), std::max(0.0F, size.z)};
    return extents;
}

float CTerrainModification::GetXSize() const
{
    return GetSide("GetXSize", &SVec3::x);
}

float CTerrainModification::GetYSize() const
{
    return GetSide("GetYSize", &SVec3::y);
}

float CTerrainModification::GetZSize() const
{
    return GetSide("GetZSize", &SVec3::z);
}

float CTerrainModification::GetSide(const char* pszOperation, float SVec3::*pSide) const
{
    if (GetTerrain() == nullptr)
    {
        CrashLog("[CTerrainModification::%s] terrain set to NULL\n", pszOperation);
        return -1.0F;
    }
    return GetTerrain()->GetSize().*pSide;
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
    if (!m_Heights.HasGround())
    {
        CrashLog("[CTerrainModification::GetSrcHeight] invalid source buffer ptr\n");
        return -1.0F;
    }
    return m_Heights.GetTiles().GetSource(iX, iZ);
}

float CTerrainModification::GetDstHeight(int iX, int iZ) const
{
    if (!AreValid(iX, iZ))
    {
        CrashLog("[CTerrainModification::GetDstHeight] invalid indices\n");
        return -1.0F;
    }
    if (!m_Heights.HasGround())
    {
        CrashLog("[CTerrainModification::GetDstHeight] invalid destination buffer ptr\n");
        return -1.0F;
    }
    return m_Heights.GetTiles().GetDest(iX, iZ);
}

void CTerrainModification::SetDstHeight(int iX, int iZ, float fHeight)
{
    if (!AreValid(iX, iZ))
    {
        CrashLog("[CTerrainModification::SetDstHeight] invalid indices\n");
        return;
    }
    if (!m_Heights.HasGround())
    {
        CrashLog("[CTerrainModification::SetDstHeight] invalid destination buffer ptr\n");
        return;
    }
    if (GetTerrain() == nullptr)
    {
        CrashLog("[CTerrainModification::SetDstHeight] invalid terrain ptr\n");
        return;
    }
    // Kept as it always was: not the element at (x, z), limited only upward. Tools use SetVerts.
    const size_t nIndex =
        static_cast<size_t>(GetBufferSizeX()) + static_cast<size_t>(iX) + static_cast<size_t>(iZ);
    const auto iWrittenX = static_cast<int>(nIndex % static_cast<size_t>(GetBufferSizeX()));
    const auto iWrittenZ = static_cast<int>(nIndex / static_cast<size_t>(GetBufferSizeX()));
    if (nIndex >= m_Heights.GetVertexCount() || m_GivenUp || IsProtected(iWrittenX, iWrittenZ))
    {
        return;
    }
    if (!m_Heights.GetTiles().Take({iWrittenX, iWrittenZ, iWrittenX, iWrittenZ}))
    {
        GiveUp();
        return;
    }
    m_Heights.SetShared(); // the terrain does not show it
    m_Heights.GetTiles().SetDest(
        iWrittenX, iWrittenZ, std::min(fHeight, GetTerrain()->GetSize().y));
}

void CTerrainModification::FillSet(const SExtents& box, CVertDataSet& set, const IHeightRows* pRows)
{
    if (GetTerrain() == nullptr)
    {
        CrashLog("[CTerrainModification::GetVerts] no terrain interface\n");
        return;
    }
    if (!set.IsInitialized() && !set.Initialize(GetTerrain(), box))
    {
        CrashLog("[CTerrainModification::GetVerts] could not initialize verts set\n");
        return;
    }
    if (!m_GivenUp && !set.SetRows(pRows, GetBufferSizeX(), GetBufferSizeZ()))
    {
        GiveUp();
    }
}

void CTerrainModification::GetVerts(const SExtents& box, CVertDataSet& set)
{
    FillSet(box, set, GetSrcRows());
}

void CTerrainModification::GetDstVerts(const SExtents& box, CVertDataSet& set)
{
    FillSet(box, set, GetDstRows());
}

std::optional<SMergeResult> CTerrainModification::SetVerts(CVertDataSet& set,
                                                           ITellurFunction* pFunction)
{
    if (GetTerrain() == nullptr)
    {
        CrashLog("[CTerrainModification::SetVerts] no terrain interface\n");
        return std::nullopt;
    }
    if (pFunction == nullptr)
    {
        CrashLog("[CTerrainModification::SetVerts] no function\n");
        return std::nullopt;
    }
    if (m_GivenUp)
    {
        return std::nullopt;
    }
    SPointChange changed;
    const float fMaxHeight = GetTerrain()->GetSize().y;
    if (!MergeSet(set.GetVerts(), *pFunction, fMaxHeight, m_Heights.GetTiles(), changed))
    {
        GiveUp();
        return std::nullopt;
    }
    m_Heights.PutOnGround(changed);
    return m_Heights.Announce(changed);
}

std::optional<SMergeResult> CTerrainModification::RunPoint(const SPointInNumbers& point)
{
    const bool bReady = GetTerrain() != nullptr && m_Heights.HasGround() && !m_GivenUp;
    if (!bReady || point.rule.eMerge == EMergeRule::ByCall)
    {
        return std::nullopt;
    }
    const SVec3 size = GetTerrain()->GetSize();
    const float fStepX = size.x / static_cast<float>(GetTerrain()->GetCellsPerSide());
    const float fStepZ = size.z / static_cast<float>(GetTerrain()->GetCellsPerSideZ());
    SGridBox box;
    if (!GetGridRange(point.box.min.x, point.box.max.x, fStepX, box.iMinX, box.iMaxX) ||
        !GetGridRange(point.box.min.z, point.box.max.z, fStepZ, box.iMinZ, box.iMaxZ))
    {
        return SMergeResult();
    }
    if (box.iMinX < 0 || box.iMinZ < 0 || box.iMaxX >= GetBufferSizeX() ||
        box.iMaxZ >= GetBufferSizeZ())
    {
        return std::nullopt; // a set says so in its lines
    }
    SPointChange changed;
    const ETargets eTargets =
        point.pTargets != nullptr ? point.pTargets->Begin(box) : ETargets::Ready;
    if (eTargets == ETargets::Refused)
    {
        return std::nullopt;
    }
    if (eTargets == ETargets::NoMemory ||
        !m_Pass.Run(point,
                    box,
                    {m_Heights.GetTiles(), m_Heights.GetShownGround(), fStepX, fStepZ, size.y},
                    changed))
    {
        GiveUp();
        return std::nullopt;
    }
    m_Heights.CatchUp(changed);
    return m_Heights.Announce(changed);
}

void CTerrainModification::NoteLost()
{
    if (PluginContext* pContext = GetPluginContext())
    {
        pContext->GetDragStatistics().bLost = true;
    }
}

void CTerrainModification::GiveUp()
{
    if (!m_GivenUp)
    {
        m_GivenUp = true;
        m_Heights.Restore();
        NoteLost();
        CrashLog("[CTerrainModification::GiveUp] not enough memory; the stroke is taken back\n");
    }
}

void CTerrainModification::StoreUndoInformation()
{
    if (m_GivenUp || !m_Heights.IsTerrainAsAtStart())
    {
        return; // with another resolution the drag's heights are those of no terrain
    }
    if (!m_Heights.HasGround())
    {
        CrashLog("[CTerrainModification::StoreUndoInformation] no src buffer\n");
        return;
    }
    // Traces are in no record: taken back, so that undoing all of them brings back every bit.
    const size_t nChanged =
        FindChanges(m_Heights.GetTiles(),
                    [this](int iTileX, int iTileZ)
                    {
                        if (GetTerrain() != nullptr)
                        {
                            m_Heights.ShowDest(m_Heights.GetTiles().GetTileBox(iTileX, iTileZ));
                        }
                    });
    const PluginContext* pContext = GetPluginContext();
    EditorHost* pHost = pContext != nullptr ? pContext->GetEditorHost() : nullptr;
    if (nChanged == 0 || pHost == nullptr)
    {
        return;
    }
    auto pUndo = std::unique_ptr<CTellurUndo>(new (std::nothrow) CTellurUndo);
    if (pUndo == nullptr)
    {
        GiveUp(); // what cannot be undone must not stay
        return;
    }
    pUndo->SetTerrain(GetTerrain());
    if (!pUndo->Fill(m_Heights.GetTiles()))
    {
        GiveUp();
        return;
    }
    pHost->AddUndo(pUndo.release());
}
