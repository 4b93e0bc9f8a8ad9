#pragma once

#include "tellur/stroke/ITellurFunction.h"

#include <cstddef>
#include <cstdint>

class CHeightTiles;
class CVertList;
struct SPointChange;

// What one merged run changed.
struct SMergeSpan
{
    int32_t iFirst = INT32_MAX; // places in the run; first above last when nothing changed
    int32_t iLast = -1;
    int32_t nChanged = 0;
    float fMin = 0.0F; // lowest and highest height written
    float fMax = 0.0F;
};

// Merges candidates into destination heights, in place. A vertex is written when the rule takes the
// candidate and it differs from the destination; the written height is the candidate clamped to 0
// and fMaxHeight. A candidate that is no number is never written. All arrays: nCount floats.
SMergeSpan MergeHeights(const ITellurFunction& function,
                        const float* pSource,
                        float* pDest,
                        const float* pCandidates,
                        size_t nCount,
                        float fMaxHeight);

// Takes the tiles under a set and merges its heights into their destination; the ground gets
// nothing of it. changed: grows by what is written. False when there is no memory, nothing is
// written then.
bool MergeSet(const CVertList& verts,
              const ITellurFunction& function,
              float fMaxHeight,
              CHeightTiles& tiles,
              SPointChange& changed);
