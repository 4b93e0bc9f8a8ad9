#pragma once

#include "tellur/functions/CTellurBaseFunction.h"

class CVertList;

// The per-vertex loops of the height functions, over the plain arrays of a working set.

// y += weight * fStroke * fAmount, times the band's factor where it is active.
void RaiseHeights(CVertList& verts, float fStroke, float fAmount, const CVerticalBand& band);

// y += (fTarget - y) * weight * fStroke, times the band's factor; mode_min leaves vertices at or
// above the target, mode_max those at or below it.
void PullHeights(
    CVertList& verts, float fStroke, float fTarget, const CVerticalBand& band, int32_t iMode);

// y += (pTargets[i] - y) * weight * fStroke, times the band's factor; mode_min applies only raises,
// mode_max only lowerings. pTargets: one a vertex.
void MoveTowards(CVertList& verts,
                 const float* pTargets,
                 float fStroke,
                 const CVerticalBand& band,
                 int32_t iMode);
