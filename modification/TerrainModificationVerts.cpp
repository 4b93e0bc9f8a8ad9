// The heights of a drag: taking vertices out, merging them back, and finding what changed.

#include "functions/ITellurFunction.h"
#include "host/EditorHost.h"
#include "host/IPluginScript.h"
#include "host/Log.h"
#include "host/Terrain.h"
#include "modification/CTellurUndo.h"
#include "modification/CTerrainModification.h"
#include "modification/CVertDataSet.h"
#include "modification/HeightMerge.h"
#include "plugin/PluginContext.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <memory>

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
    set.SetData(pBuffer, m_SizeX, m_SizeZ);
}

void CTerrainModification::GetVerts(const SExtents& box, CVertDataSet& set)
{
    FillSet(box, set, m_Source.pHeights.get());
}

void CTerrainModification::GetDstVerts(const SExtents& box, CVertDataSet& set)
{
    FillSet(box, set, m_Dest.pHeights.get());
}

void CTerrainModification::SetVerts(CVertDataSet& set, ITellurFunction* pFunction)
{
    if (m_Terrain == nullptr)
    {
        CrashLog("[CTerrainModification::SetVerts] no terrain interface\n");
        return;
    }
    if (pFunction == nullptr)
    {
        CrashLog("[CTerrainModification::SetVerts] no function\n");
        return;
    }
    const float fMaxHeight = m_Terrain->GetSize().y;
    const CVertList& verts = set.GetVerts();
    SExtents changed = CVertDataSet::GetStartExtents();
    size_t nChanged = 0;
    for (const SVertRun& run : verts.GetRuns())
    {
        const size_t nFirst = static_cast<size_t>(run.iz) * m_SizeX + run.ixFirst;
        const SMergeSpan span = MergeHeights(*pFunction,
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
    if (nChanged > 0)
    {
        m_Terrain->SetHeights(m_Dest.pHeights.get(), GetVertexCount(), changed);
    }
    if (PluginContext* pContext = GetPluginContext())
    {
        SDragStatistics& statistics = pContext->GetDragStatistics();
        ++statistics.nPoints;
        statistics.nVisited += verts.GetCount();
        statistics.nChanged += nChanged;
    }
}

void CTerrainModification::CollectRow(int iZ, std::vector<SChangedVert>& verts, SExtents& traces)
{
    constexpr int iChunk = 256;
    const size_t nRow = static_cast<size_t>(iZ) * m_SizeX;
    const float* pSource = m_Source.pHeights.get() + nRow;
    float* pDest = m_Dest.pHeights.get() + nRow;
    for (int iStart = m_TouchedMinX; iStart <= m_TouchedMaxX; iStart += iChunk)
    {
        const int iEnd = std::min(iStart + iChunk, m_TouchedMaxX + 1);
        const auto nCount = static_cast<size_t>(iEnd - iStart);
        if (std::memcmp(pSource + iStart, pDest + iStart, nCount * sizeof(float)) == 0)
        {
            continue;
        }
        for (int iX = iStart; iX < iEnd; ++iX)
        {
            if (IsChange(pSource[iX], pDest[iX]))
            {
                verts.push_back({iX, iZ, pSource[iX], pDest[iX]});
            }
            else if (pSource[iX] != pDest[iX] && std::fabs(pSource[iX] - pDest[iX]) <= MIN_CHANGE)
            {
                pDest[iX] = pSource[iX];
                CVertDataSet::Widen(traces,
                                    {static_cast<float>(iX), pSource[iX], static_cast<float>(iZ)});
            }
        }
    }
}

// Differences that count as no change are in no undo record. They are taken back, so that undoing
// all records brings back every bit.
void CTerrainModification::TakeBack(const SExtents& traces)
{
    const SVec3 size = m_Terrain->GetSize();
    const float fStepX = size.x / static_cast<float>(m_SizeX - 1);
    const float fStepZ = size.z / static_cast<float>(m_SizeZ - 1);
    const SExtents box = {{traces.min.x * fStepX, traces.min.y, traces.min.z * fStepZ},
                          {traces.max.x * fStepX, traces.max.y, traces.max.z * fStepZ}};
    m_Terrain->SetHeights(m_Dest.pHeights.get(), GetVertexCount(), box);
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
    if (m_Terrain != nullptr && (static_cast<int>(m_Terrain->GetCellsPerSide()) + 1 != m_SizeX ||
                                 static_cast<int>(m_Terrain->GetCellsPerSideZ()) + 1 != m_SizeZ))
    {
        return; // the resolution changed under the drag: its heights are those of no terrain
    }
    std::vector<SChangedVert> verts;
    const SExtents none = CVertDataSet::GetStartExtents();
    SExtents traces = none; // in vertices
    for (int iZ = m_TouchedMinZ; iZ <= m_TouchedMaxZ; ++iZ)
    {
        CollectRow(iZ, verts, traces);
    }
    if (m_Terrain != nullptr && traces.min.x != none.min.x)
    {
        TakeBack(traces);
    }
    const PluginContext* pContext = GetPluginContext();
    EditorHost* pHost = pContext != nullptr ? pContext->GetEditorHost() : nullptr;
    if (verts.empty() || pHost == nullptr)
    {
        return;
    }
    auto pUndo = std::make_unique<CTellurUndo>();
    pUndo->SetTerrain(m_Terrain);
    pUndo->Fill(verts);
    pHost->AddUndo(pUndo.release());
}
