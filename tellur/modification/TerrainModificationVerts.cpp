// The heights of a drag: taking vertices out, merging them back, and finding what changed.

#include "host/EditorHost.h"
#include "host/IPluginStrokes.h"
#include "host/Log.h"
#include "host/Terrain.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modification/CTellurUndo.h"
#include "tellur/modification/CTerrainModification.h"
#include "tellur/modification/CVertDataSet.h"
#include "tellur/modification/HeightMerge.h"
#include "tellur/stroke/ITellurFunction.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>
#include <new>

void CTerrainModification::FillSet(const SExtents& box, CVertDataSet& set, const float* pBuffer)
{
    if (m_Terrain == nullptr)
    {
        CrashLog("[CTerrainModification::GetVerts] no terrain interface\n");
        return;
    }
    if (!set.IsInitialized() && !set.Initialize(m_Terrain, box))
    {
        CrashLog("[CTerrainModification::GetVerts] could not initialize verts set\n");
        return;
    }
    if (!m_GivenUp && !set.SetData(pBuffer, m_SizeX, m_SizeZ))
    {
        GiveUp();
    }
}

void CTerrainModification::GetVerts(const SExtents& box, CVertDataSet& set)
{
    FillSet(box, set, m_Source.pHeights.get());
}

void CTerrainModification::GetDstVerts(const SExtents& box, CVertDataSet& set)
{
    FillSet(box, set, m_Dest.pHeights.get());
}

std::optional<SMergeResult> CTerrainModification::SetVerts(CVertDataSet& set,
                                                           ITellurFunction* pFunction)
{
    if (m_Terrain == nullptr)
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
    SExtents changed = CVertDataSet::GetStartExtents();
    const size_t nChanged = MergeSet(set, *pFunction, changed);
    const SMergeResult result = GetResult(changed, nChanged);
    if (nChanged > 0)
    {
        m_Terrain->SetHeights(m_Dest.pHeights.get(), GetVertexCount(), changed);
    }
    return result;
}

size_t CTerrainModification::MergeSet(const CVertDataSet& set,
                                      const ITellurFunction& function,
                                      SExtents& changed)
{
    const float fMaxHeight = m_Terrain->GetSize().y;
    const CVertList& verts = set.GetVerts();
    size_t nChanged = 0;
    for (const SVertRun& run : verts.GetRuns())
    {
        const size_t nFirst = static_cast<size_t>(run.iz) * m_SizeX + run.ixFirst;
        const SMergeSpan span = MergeHeights(function,
                                             m_Source.pHeights.get() + nFirst,
                                             m_Dest.pHeights.get() + nFirst,
                                             verts.GetHeights() + run.nFirst,
                                             run.nCount,
                                             fMaxHeight);
        if (span.nChanged == 0)
        {
            continue;
        }
        nChanged += static_cast<size_t>(span.nChanged);
        const int iFirstX = run.ixFirst + span.iFirst;
        const int iLastX = run.ixFirst + span.iLast;
        const float fZ = static_cast<float>(run.iz) * verts.GetStepZ();
        CVertDataSet::Widen(changed,
                            {static_cast<float>(iFirstX) * verts.GetStepX(), span.fMin, fZ});
        CVertDataSet::Widen(changed,
                            {static_cast<float>(iLastX) * verts.GetStepX(), span.fMax, fZ});
        Touch(iFirstX, run.iz);
        Touch(iLastX, run.iz);
    }
    return nChanged;
}

// Asked before the terrain has the heights: those that would go beyond a limit are written where
// they are at it already.
SMergeResult CTerrainModification::GetResult(const SExtents& changed, size_t nChanged) const
{
    SMergeResult result = {nChanged};
    const float fTop = m_Terrain->GetSize().y;
    const bool bTop = changed.min.y >= fTop;
    if (nChanged > 0 && (bTop || changed.max.y <= 0.0F))
    {
        result.bAtLimit = m_Terrain->HasHeights(m_Dest.pHeights.get(), GetVertexCount(), changed);
        result.fLimit = bTop ? fTop : 0.0F;
    }
    return result;
}

// Calls visit(column, source height, destination height) for each vertex of a row that is not the
// same in both.
template <typename TVisit> void CTerrainModification::VisitDifferences(int iZ, TVisit visit)
{
    constexpr int CHUNK = 256;
    const size_t nRow = static_cast<size_t>(iZ) * m_SizeX;
    const float* pSource = m_Source.pHeights.get() + nRow;
    float* pDest = m_Dest.pHeights.get() + nRow;
    for (int iStart = m_TouchedMinX; iStart <= m_TouchedMaxX; iStart += CHUNK)
    {
        const int iEnd = std::min(iStart + CHUNK, m_TouchedMaxX + 1);
        const auto nCount = static_cast<size_t>(iEnd - iStart);
        if (std::memcmp(pSource + iStart, pDest + iStart, nCount * sizeof(float)) == 0)
        {
            continue;
        }
        for (int iX = iStart; iX < iEnd; ++iX)
        {
            visit(iX, pSource[iX], pDest[iX]);
        }
    }
}

// Counted first: growing would need the memory of twice as many.
bool CTerrainModification::CollectChanges(CPlainArray<SChangedVert>& verts)
{
    const SExtents none = CVertDataSet::GetStartExtents();
    SExtents traces = none; // in vertices
    size_t nChanges = 0;
    for (int iZ = m_TouchedMinZ; iZ <= m_TouchedMaxZ; ++iZ)
    {
        VisitDifferences(iZ,
                         [&](int iX, float fSource, float& fDest)
                         {
                             if (IsChange(fSource, fDest))
                             {
                                 ++nChanges;
                             }
                             else if (fSource != fDest && std::fabs(fSource - fDest) <= MIN_CHANGE)
                             {
                                 fDest = fSource;
                                 CVertDataSet::Widen(
                                     traces,
                                     {static_cast<float>(iX), fSource, static_cast<float>(iZ)});
                             }
                         });
    }
    if (m_Terrain != nullptr && traces.min.x != none.min.x)
    {
        // They are in no record: taken back, so that undoing all of them brings back every bit.
        ShowDest(traces);
    }
    if (!verts.Reserve(nChanges))
    {
        return false;
    }
    for (int iZ = m_TouchedMinZ; iZ <= m_TouchedMaxZ; ++iZ)
    {
        VisitDifferences(iZ,
                         [&](int iX, float fSource, float fDest)
                         {
                             if (IsChange(fSource, fDest))
                             {
                                 verts.Append({iX, iZ, fSource, fDest});
                             }
                         });
    }
    return true;
}

// Shows the terrain the destination buffer under a box that counts in vertices.
void CTerrainModification::ShowDest(const SExtents& verts)
{
    const SVec3 size = m_Terrain->GetSize();
    const float fStepX = size.x / static_cast<float>(m_SizeX - 1);
    const float fStepZ = size.z / static_cast<float>(m_SizeZ - 1);
    const SExtents box = {{verts.min.x * fStepX, verts.min.y, verts.min.z * fStepZ},
                          {verts.max.x * fStepX, verts.max.y, verts.max.z * fStepZ}};
    m_Terrain->SetHeights(m_Dest.pHeights.get(), GetVertexCount(), box);
}

bool CTerrainModification::IsTerrainAsAtStart() const
{
    return m_Terrain == nullptr || (static_cast<int>(m_Terrain->GetCellsPerSide()) + 1 == m_SizeX &&
                                    static_cast<int>(m_Terrain->GetCellsPerSideZ()) + 1 == m_SizeZ);
}

void CTerrainModification::RestoreHeights()
{
    if (m_Source.pHeights == nullptr || m_Dest.pHeights == nullptr || m_TouchedMaxX < 0 ||
        m_Terrain == nullptr || !IsTerrainAsAtStart())
    {
        return;
    }
    const float fY = m_Terrain->GetSize().y;
    const SExtents touched = {
        {static_cast<float>(m_TouchedMinX), 0.0F, static_cast<float>(m_TouchedMinZ)},
        {static_cast<float>(m_TouchedMaxX), fY, static_cast<float>(m_TouchedMaxZ)}};
    std::memcpy(m_Dest.pHeights.get(), m_Source.pHeights.get(), GetVertexCount() * sizeof(float));
    ShowDest(touched);
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
        RestoreHeights();
        NoteLost();
        CrashLog("[CTerrainModification::GiveUp] not enough memory; the stroke is taken back\n");
    }
}

void CTerrainModification::StoreUndoInformation()
{
    if (m_Source.pHeights == nullptr)
    {
        CrashLog("[CTerrainModification::StoreUndoInformation] no src buffer\n");
        return;
    }
    if (m_Dest.pHeights == nullptr)
    {
        CrashLog("[CTerrainModification::StoreUndoInformation] no dst buffer\n");
        return;
    }
    if (m_GivenUp || !IsTerrainAsAtStart())
    {
        return; // with another resolution the drag's heights are those of no terrain
    }
    CPlainArray<SChangedVert> verts;
    auto pUndo = std::unique_ptr<CTellurUndo>(new (std::nothrow) CTellurUndo);
    if (pUndo == nullptr || !CollectChanges(verts))
    {
        GiveUp();
        return;
    }
    const PluginContext* pContext = GetPluginContext();
    EditorHost* pHost = pContext != nullptr ? pContext->GetEditorHost() : nullptr;
    if (verts.IsEmpty() || pHost == nullptr)
    {
        return;
    }
    pUndo->SetTerrain(m_Terrain);
    if (!pUndo->Fill({verts.Get(), verts.GetCount()}))
    {
        GiveUp(); // what cannot be undone must not stay
        return;
    }
    pHost->AddUndo(pUndo.release());
}
