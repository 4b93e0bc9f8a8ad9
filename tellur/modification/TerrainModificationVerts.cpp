// The heights of a drag: taking vertices out, merging them back, and the record of what changed.

#include "host/EditorHost.h"
#include "host/IPluginStrokes.h"
#include "host/Log.h"
#include "host/Terrain.h"
#include "tellur/context/PluginContext.h"
#include "tellur/modification/CTellurUndo.h"
#include "tellur/modification/CTerrainModification.h"
#include "tellur/modification/CVertDataSet.h"
#include "tellur/modification/GridRange.h"
#include "tellur/modification/HeightChanges.h"
#include "tellur/modification/HeightMerge.h"
#include "tellur/stroke/ITellurFunction.h"

#include <algorithm>
#include <cstring>
#include <memory>
#include <new>

namespace
{

constexpr int SIDE = SHeightTile::SIDE;

// The box of the vertices of a set.
SGridBox GetSetBox(const CVertList& verts)
{
    SGridBox box;
    for (const SVertRun& run : verts.GetRuns())
    {
        const int ixLast = run.ixFirst + static_cast<int>(run.nCount) - 1;
        box = box.IsEmpty() ? SGridBox{run.ixFirst, run.iz, ixLast, run.iz}
                            : SGridBox{std::min(box.iMinX, run.ixFirst),
                                       std::min(box.iMinZ, run.iz),
                                       std::max(box.iMaxX, ixLast),
                                       std::max(box.iMaxZ, run.iz)};
    }
    return box;
}

} // namespace

void CTerrainModification::FillSet(const SExtents& box, CVertDataSet& set, const IHeightRows* pRows)
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
    if (!m_Tiles.Take(GetSetBox(set.GetVerts())))
    {
        GiveUp();
        return std::nullopt;
    }
    SPointChange changed;
    changed.nVisited = set.GetVerts().GetCount();
    changed.nChanged = MergeSet(set, *pFunction, changed);
    const bool bTop = changed.fMin >= m_Terrain->GetSize().y;
    changed.bDiffers = changed.nChanged > 0 && !((bTop || changed.fMax <= 0.0F) &&
                                                 m_Access != nullptr && IsDestShown(changed.box));
    CopyDest(changed.box);
    return ShowChange(changed);
}

size_t CTerrainModification::MergeSet(const CVertDataSet& set,
                                      const ITellurFunction& function,
                                      SPointChange& changed)
{
    const float fMaxHeight = m_Terrain->GetSize().y;
    const CVertList& verts = set.GetVerts();
    size_t nChanged = 0;
    for (const SVertRun& run : verts.GetRuns())
    {
        const int ixEnd = run.ixFirst + static_cast<int>(run.nCount);
        for (int ix = run.ixFirst; ix < ixEnd;)
        {
            const int iPart = std::min(SIDE - ix % SIDE, ixEnd - ix);
            SHeightTile& tile = *m_Tiles.Find(ix / SIDE, run.iz / SIDE);
            const size_t nPlace = SHeightTile::GetPlace(ix, run.iz);
            const SMergeSpan span =
                MergeHeights(function,
                             tile.aSource.data() + nPlace,
                             tile.aDest.data() + nPlace,
                             verts.GetHeights() + run.nFirst + (ix - run.ixFirst),
                             static_cast<size_t>(iPart),
                             fMaxHeight);
            if (span.nChanged > 0)
            {
                tile.bWritten = true;
                nChanged += static_cast<size_t>(span.nChanged);
                changed.Add(ix + span.iFirst, ix + span.iLast, run.iz);
                changed.fMin = std::min(changed.fMin, span.fMin);
                changed.fMax = std::max(changed.fMax, span.fMax);
            }
            ix += iPart;
        }
    }
    return nChanged;
}

std::optional<SMergeResult> CTerrainModification::RunPoint(const SPointInNumbers& point)
{
    const bool bReady = m_Terrain != nullptr && m_Tiles.HasGround() && !m_GivenUp;
    if (!bReady || point.rule.eMerge == EMergeRule::ByCall)
    {
        return std::nullopt;
    }
    const SVec3 size = m_Terrain->GetSize();
    const float fStepX = size.x / static_cast<float>(m_Terrain->GetCellsPerSide());
    const float fStepZ = size.z / static_cast<float>(m_Terrain->GetCellsPerSideZ());
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
    // What others wrote inside the box of changes goes, as with a set: shown afterwards then.
    float* pShown = m_bShared ? nullptr : GetGround();
    SPointChange changed;
    const ETargets eTargets =
        point.pTargets != nullptr ? point.pTargets->Begin(box) : ETargets::Ready;
    if (eTargets == ETargets::Refused)
    {
        return std::nullopt;
    }
    if (eTargets == ETargets::NoMemory ||
        !m_Pass.Run(point, box, {m_Tiles, pShown, fStepX, fStepZ, size.y}, changed))
    {
        GiveUp();
        return std::nullopt;
    }
    if (m_bShared)
    {
        changed.bDiffers = changed.bDiffers || !IsDestShown(changed.box);
        CopyDest(changed.box);
    }
    return ShowChange(changed);
}

// The ground has the change already; the terrain is told. Those that would go beyond a limit are
// written where they are at it already.
SMergeResult CTerrainModification::ShowChange(const SPointChange& changed)
{
    SMergeResult result = {changed.nChanged, changed.nVisited};
    if (changed.nChanged == 0)
    {
        return result;
    }
    const float fTop = m_Terrain->GetSize().y;
    const bool bTop = changed.fMin >= fTop;
    const bool bLimit = bTop || changed.fMax <= 0.0F;
    result.fLimit = bTop ? fTop : 0.0F;
    if (m_Access != nullptr)
    {
        result.bAtLimit = bLimit && !changed.bDiffers;
        m_Access->OnRowsWritten(changed.box);
        return result;
    }
    const SExtents corners = GetBox(changed.box);
    SExtents box = CVertDataSet::GetStartExtents(); // with its limits, as always
    CVertDataSet::Widen(box, {corners.min.x, changed.fMin, corners.min.z});
    CVertDataSet::Widen(box, {corners.max.x, changed.fMax, corners.max.z});
    result.bAtLimit = bLimit && m_Terrain->HasHeights(m_Whole.get(), GetVertexCount(), box);
    m_Terrain->SetHeights(m_Whole.get(), GetVertexCount(), box);
    return result;
}

void CTerrainModification::CopyDest(const SGridBox& box)
{
    float* pGround = GetGround();
    const auto nPitch = static_cast<size_t>(GetBufferSizeX());
    for (int iZ = box.iMinZ; iZ <= box.iMaxZ; ++iZ)
    {
        for (int iX = box.iMinX; iX <= box.iMaxX;)
        {
            const int iPart = std::min(SIDE - iX % SIDE, box.iMaxX + 1 - iX);
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

bool CTerrainModification::IsDestShown(const SGridBox& box) const
{
    const float* pGround = GetGround();
    const auto nPitch = static_cast<size_t>(GetBufferSizeX());
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

SExtents CTerrainModification::GetBox(const SGridBox& box) const
{
    const SVec3 size = m_Terrain->GetSize();
    const float fStepX = size.x / static_cast<float>(GetBufferSizeX() - 1);
    const float fStepZ = size.z / static_cast<float>(GetBufferSizeZ() - 1);
    return {
        {static_cast<float>(box.iMinX) * fStepX, 0.0F, static_cast<float>(box.iMinZ) * fStepZ},
        {static_cast<float>(box.iMaxX) * fStepX, size.y, static_cast<float>(box.iMaxZ) * fStepZ}};
}

// Brings the terrain to the destination under a box.
void CTerrainModification::ShowDest(const SGridBox& box)
{
    CopyDest(box);
    if (m_Access != nullptr)
    {
        m_Access->OnRowsWritten(box);
    }
    else
    {
        m_Terrain->SetHeights(m_Whole.get(), GetVertexCount(), GetBox(box));
    }
}

bool CTerrainModification::IsTerrainAsAtStart() const
{
    return m_Terrain == nullptr ||
           (static_cast<int>(m_Terrain->GetCellsPerSide()) + 1 == GetBufferSizeX() &&
            static_cast<int>(m_Terrain->GetCellsPerSideZ()) + 1 == GetBufferSizeZ());
}

void CTerrainModification::RestoreHeights()
{
    if (!m_Tiles.HasGround() || m_Terrain == nullptr || !IsTerrainAsAtStart())
    {
        return;
    }
    m_Tiles.ForEach(
        [this](SHeightTile& tile, int iTileX, int iTileZ)
        {
            if (tile.bWritten)
            {
                tile.aDest = tile.aSource;
                tile.bWritten = false;
                ShowDest(m_Tiles.GetTileBox(iTileX, iTileZ));
            }
        });
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
    if (m_GivenUp || !IsTerrainAsAtStart())
    {
        return; // with another resolution the drag's heights are those of no terrain
    }
    if (!m_Tiles.HasGround())
    {
        CrashLog("[CTerrainModification::StoreUndoInformation] no src buffer\n");
        return;
    }
    // Traces are in no record: taken back, so that undoing all of them brings back every bit.
    const size_t nChanged = FindChanges(m_Tiles,
                                        [this](int iTileX, int iTileZ)
                                        {
                                            if (m_Terrain != nullptr)
                                            {
                                                ShowDest(m_Tiles.GetTileBox(iTileX, iTileZ));
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
    pUndo->SetTerrain(m_Terrain);
    if (!pUndo->Fill(m_Tiles))
    {
        GiveUp();
        return;
    }
    pHost->AddUndo(pUndo.release());
}
