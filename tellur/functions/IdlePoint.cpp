#include "tellur/functions/IdlePoint.h"

#include "tellur/context/PluginContext.h"
#include "tellur/functions/CTellurBaseFunction.h"
#include "tellur/modification/CVertDataSet.h"
#include "tellur/stroke/ITellurBrush.h"
#include "tellur/stroke/ITerrainModification.h"

#include <algorithm>

namespace
{

// Some vertex has a weight: what of its height kept it from changing.
void LookAtHeights(const SDonePoint& point)
{
    const float* pSource = point.modification.GetSrcBuffer();
    const float* pDest = point.modification.GetDstBuffer();
    if (pSource == nullptr || pDest == nullptr)
    {
        return;
    }
    const CVertList& verts = point.set.GetVerts();
    const CVerticalBand band(point.brush.GetVerticalDistance(), point.center.y);
    const auto nRow = static_cast<size_t>(point.modification.GetBufferSizeX());
    bool bInBand = false;
    bool bReached = false; // by an earlier point of the stroke
    for (const SVertRun& run : verts.GetRuns())
    {
        const size_t nFirst = static_cast<size_t>(run.iz) * nRow + static_cast<size_t>(run.ixFirst);
        for (size_t i = 0; i < run.nCount && !bReached; ++i)
        {
            const float fStart = (point.bFromDest ? pDest : pSource)[nFirst + i];
            const bool bTaken = verts.GetWeights()[run.nFirst + i] != 0.0F &&
                                (!band.IsActive() || band.GetFactor(fStart) != 0.0F);
            bInBand = bInBand || bTaken;
            bReached = bTaken && !point.bFromDest && pSource[nFirst + i] != pDest[nFirst + i];
        }
    }
    if (!bInBand)
    {
        NoteOutcome(EPointOutcome::Band, point.brush.GetVerticalDistance());
    }
    else if (bReached)
    {
        NoteOutcome(EPointOutcome::Strongest);
    }
}

// No vertex has a weight.
void LookAtWeights(const SDonePoint& point)
{
    if (point.brush.GetPowerModifier() == 0.0F)
    {
        NoteOutcome(EPointOutcome::NoPower);
        return;
    }
    NoteOutcome(EPointOutcome::NoShape);
    if (point.brush.IsMaskEnabled() && point.brush.GetBitmapImage() != nullptr)
    {
        point.brush.CalculateWeights(point.set, point.center); // as they were without the mask
        if (HasWeight(point.set))
        {
            NoteOutcome(EPointOutcome::Masked);
        }
    }
}

} // namespace

void NoteOutcome(EPointOutcome eKind, float fValue)
{
    if (PluginContext* pContext = GetPluginContext())
    {
        pContext->GetPointOutcome() = {eKind, fValue};
    }
}

void MergePoint(ITerrainModification& modification, CVertDataSet& set, ITellurFunction* pFunction)
{
    const std::optional<SMergeResult> merged = modification.SetVerts(set, pFunction);
    PluginContext* pContext = GetPluginContext();
    if (!merged || pContext == nullptr)
    {
        return;
    }
    SDragStatistics& statistics = pContext->GetDragStatistics();
    ++statistics.nPoints;
    statistics.nVisited += set.GetVerts().GetCount();
    statistics.nChanged += merged->nChanged;
    if (merged->bAtLimit)
    {
        NoteOutcome(EPointOutcome::Limit, merged->fLimit);
    }
    else
    {
        NoteOutcome(merged->nChanged == 0 ? EPointOutcome::Same : EPointOutcome::Changed);
    }
}

bool IsPointIdle()
{
    PluginContext* pContext = GetPluginContext();
    return pContext != nullptr && pContext->GetPointOutcome().eKind == EPointOutcome::Same;
}

bool HasWeight(const CVertDataSet& set)
{
    const float* pWeights = set.GetVerts().GetWeights();
    return std::any_of(pWeights,
                       pWeights + set.GetVerts().GetCount(),
                       [](float fWeight) { return fWeight != 0.0F; });
}

void ExplainIdlePoint(const SDonePoint& point)
{
    if (!IsPointIdle())
    {
        return;
    }
    if (point.set.GetVerts().IsEmpty())
    {
        NoteOutcome(EPointOutcome::NoVertices);
    }
    else if (point.fStroke == 0.0F)
    {
        NoteOutcome(EPointOutcome::Faded, point.brush.GetFadeFactor());
    }
    else if (HasWeight(point.set))
    {
        LookAtHeights(point);
    }
    else
    {
        LookAtWeights(point);
    }
}
