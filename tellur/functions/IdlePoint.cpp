#include "tellur/functions/IdlePoint.h"

#include "tellur/context/PluginContext.h"
#include "tellur/functions/CTellurBaseFunction.h"
#include "tellur/modification/CVertDataSet.h"
#include "tellur/stroke/IHeightRows.h"
#include "tellur/stroke/ITellurBrush.h"
#include "tellur/stroke/ITerrainModification.h"

#include <algorithm>

namespace
{

// Sets the weights of vertices that no stroke changes to 0.
void DropProtected(CVertDataSet& set, const ITerrainModification& modification)
{
    CVertList& verts = set.GetVerts();
    for (const SVertRun& run : verts.GetRuns())
    {
        for (size_t i = 0; i < run.nCount; ++i)
        {
            if (modification.IsProtected(run.ixFirst + static_cast<int>(i), run.iz))
            {
                verts.GetWeights()[run.nFirst + i] = 0.0F;
            }
        }
    }
}

// Some vertex has a weight: what of its height kept it from changing.
void LookAtHeights(const SDonePoint& point)
{
    const IHeightRows* pSource = point.modification.GetSrcRows();
    const IHeightRows* pDest = point.modification.GetDstRows();
    if (pSource == nullptr || pDest == nullptr)
    {
        return;
    }
    const CVertList& verts = point.set.GetVerts();
    const CVerticalBand band(point.brush.GetVerticalDistance(), point.center.y);
    bool bInBand = false;
    bool bReached = false; // by an earlier point of the stroke
    for (const SVertRun& run : verts.GetRuns())
    {
        for (size_t i = 0; i < run.nCount && !bReached; ++i)
        {
            const int ix = run.ixFirst + static_cast<int>(i);
            // A single height lies in one piece, so no scratch is needed.
            const float fSource = *pSource->GetRow(ix, run.iz, 1, nullptr);
            const float fDest = *pDest->GetRow(ix, run.iz, 1, nullptr);
            const float fStart = point.bFromDest ? fDest : fSource;
            const bool bTaken = verts.GetWeights()[run.nFirst + i] != 0.0F &&
                                (!band.IsActive() || band.GetFactor(fStart) != 0.0F);
            bInBand = bInBand || bTaken;
            // A point that begins with the source may have lost against an earlier one of the
            // stroke.
            bReached = bTaken && !point.bFromDest && fSource != fDest;
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

void NoteMerged(const SMergeResult& merged)
{
    PluginContext* pContext = GetPluginContext();
    if (pContext == nullptr)
    {
        return;
    }
    SDragStatistics& statistics = pContext->GetDragStatistics();
    ++statistics.nPoints;
    statistics.nVisited += merged.nVisited;
    statistics.nChanged += merged.nChanged;
    if (merged.bAtLimit)
    {
        NoteOutcome(EPointOutcome::Limit, merged.fLimit);
    }
    else
    {
        NoteOutcome(merged.nChanged == 0 ? EPointOutcome::Same : EPointOutcome::Changed);
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

bool RunPointInNumbers(ITerrainModification& modification,
                       const ITellurBrush& brush,
                       const SRulePoint& point)
{
    SBrushShape shape;
    if (!brush.GetShape(shape))
    {
        return false;
    }
    const std::optional<SMergeResult> merged =
        modification.RunPoint({point.box, point.center, shape, point.rule, point.pTargets});
    if (merged)
    {
        NoteMerged(*merged);
    }
    return merged.has_value();
}

void MergePoint(ITerrainModification& modification, CVertDataSet& set, ITellurFunction* pFunction)
{
    if (const std::optional<SMergeResult> merged = modification.SetVerts(set, pFunction))
    {
        NoteMerged(*merged);
    }
}

bool IsPointIdle()
{
    PluginContext* pContext = GetPluginContext();
    return pContext != nullptr && pContext->GetPointOutcome().eKind == EPointOutcome::Same;
}

EPointOutcome GetEmptyOutcome(const ITellurBrush& brush)
{
    return brush.GetExtent() > 0.0F ? EPointOutcome::NoVertices : EPointOutcome::NoExtent;
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
        NoteOutcome(GetEmptyOutcome(point.brush));
    }
    else if (point.fStroke == 0.0F)
    {
        NoteOutcome(EPointOutcome::Faded, point.brush.GetFadeFactor());
    }
    else if (!HasWeight(point.set))
    {
        LookAtWeights(point);
    }
    else
    {
        DropProtected(point.set, point.modification);
        if (HasWeight(point.set))
        {
            LookAtHeights(point);
        }
        else
        {
            NoteOutcome(EPointOutcome::Protected);
        }
    }
}
