#include "tellur/modification/HeightMerge.h"

#include "host/VectorLoop.h"
#include "tellur/modification/CHeightTiles.h"
#include "tellur/modification/CPointPass.h"
#include "tellur/modification/CVertList.h"

#include <algorithm>
#include <bit>
#include <cmath>

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

float ClampHeight(float fHeight, float fMaxHeight)
{
    // Minus zero becomes zero, or its bits would lie below those of all heights.
    const float fLow = fHeight <= 0.0F ? 0.0F : fHeight;
    return fHeight >= fMaxHeight ? fMaxHeight : fLow;
}

// Heights written are never negative, so their bits order like the heights; minimum and maximum of
// whole numbers is what compilers turn into vector code.
struct SBitSpan
{
    int32_t iFirst = INT32_MAX;
    int32_t iLast = -1;
    int32_t nChanged = 0;
    int32_t iMinBits = INT32_MAX;
    int32_t iMaxBits = 0; // heights written are 0 or more
};

template <EMergeRule TRule>
TELLUR_LOOP_BODY void MergeLoop(const float* pSource,
                                float* pDest,
                                const float* pCandidates,
                                int32_t nCount,
                                float fMaxHeight,
                                SBitSpan& span)
{
    // Conditions are masks of all ones or none, which is the form that compilers turn into vectors.
    SBitSpan s = span;
    for (int32_t i = 0; i < nCount; ++i)
    {
        const float fCandidate = pCandidates[i];
        const float fDest = pDest[i];
        int32_t iWrite = fCandidate != fDest ? -1 : 0;
        iWrite &= fCandidate == fCandidate ? -1 : 0;
        if constexpr (TRule == EMergeRule::Strongest)
        {
            const float fReached = std::fabs(fDest - pSource[i]);
            iWrite &= std::fabs(fCandidate - pSource[i]) >= fReached ? -1 : 0;
        }
        const int32_t iBits = std::bit_cast<int32_t>(ClampHeight(fCandidate, fMaxHeight));
        pDest[i] =
            std::bit_cast<float>((iBits & iWrite) | (std::bit_cast<int32_t>(fDest) & ~iWrite));
        s.nChanged -= iWrite;
        // A vertex that is not written takes part with a value that loses each comparison.
        s.iFirst = std::min(s.iFirst, (i & iWrite) | (INT32_MAX & ~iWrite));
        s.iLast = std::max(s.iLast, i | ~iWrite);
        s.iMinBits = std::min(s.iMinBits, (iBits & iWrite) | (INT32_MAX & ~iWrite));
        s.iMaxBits = std::max(s.iMaxBits, iBits & iWrite);
    }
    span = s;
}

void MergeByCall(const ITellurFunction& function,
                 const float* pSource,
                 float* pDest,
                 const float* pCandidates,
                 int32_t nCount,
                 float fMaxHeight,
                 SBitSpan& span)
{
    for (int32_t i = 0; i < nCount; ++i)
    {
        // The answer only decides whether the vertex is written. What is written is the candidate,
        // clamped as in the loops.
        if (function.MergeHeight(pSource[i], pDest[i], pCandidates[i]) != pDest[i])
        {
            SBitSpan single;
            CVectorLoop<MergeLoop<EMergeRule::Candidate>>::RunPlain(
                pSource + i, pDest + i, pCandidates + i, 1, fMaxHeight, single);
            span.nChanged += single.nChanged;
            span.iFirst = single.nChanged > 0 ? std::min(span.iFirst, i) : span.iFirst;
            span.iLast = single.nChanged > 0 ? i : span.iLast;
            span.iMinBits = std::min(span.iMinBits, single.iMinBits);
            span.iMaxBits = std::max(span.iMaxBits, single.iMaxBits);
        }
    }
}

// Vertices of one row and one tile that lie side by side.
struct SMergedPart
{
    int ix = 0;
    int iz = 0;
    int iCount = 0;
    const float* pCandidates = nullptr;
};

void MergePart(const SMergedPart& part,
               const ITellurFunction& function,
               float fMaxHeight,
               SHeightTile& tile,
               SPointChange& changed)
{
    const size_t nPlace = SHeightTile::GetPlace(part.ix, part.iz);
    const SMergeSpan span = MergeHeights(function,
                                         tile.aSource.data() + nPlace,
                                         tile.aDest.data() + nPlace,
                                         part.pCandidates,
                                         static_cast<size_t>(part.iCount),
                                         fMaxHeight);
    if (span.nChanged > 0)
    {
        tile.bWritten = true;
        changed.nChanged += static_cast<size_t>(span.nChanged);
        changed.Add(part.ix + span.iFirst, part.ix + span.iLast, part.iz);
        changed.fMin = std::min(changed.fMin, span.fMin);
        changed.fMax = std::max(changed.fMax, span.fMax);
    }
    changed.nVisited += static_cast<size_t>(part.iCount);
}

// uProtected: of the row in the tile; those vertices are left out.
void MergeAround(uint64_t uProtected,
                 const SMergedPart& part,
                 const ITellurFunction& function,
                 float fMaxHeight,
                 SHeightTile& tile,
                 SPointChange& changed)
{
    const uint64_t uBits = uProtected >> (part.ix % SIDE);
    for (int iFirst = 0; iFirst < part.iCount;)
    {
        const uint64_t uRest = uBits >> iFirst;
        const int iFree = std::min(std::countr_zero(uRest), part.iCount - iFirst);
        if (iFree > 0)
        {
            MergePart({part.ix + iFirst, part.iz, iFree, part.pCandidates + iFirst},
                      function,
                      fMaxHeight,
                      tile,
                      changed);
        }
        iFirst += std::max(iFree, std::min(std::countr_one(uRest), part.iCount - iFirst));
    }
}

} // namespace

SMergeSpan MergeHeights(const ITellurFunction& function,
                        const float* pSource,
                        float* pDest,
                        const float* pCandidates,
                        size_t nCount,
                        float fMaxHeight)
{
    SBitSpan span;
    const auto iCount = static_cast<int32_t>(nCount);
    switch (function.GetMergeRule())
    {
    case EMergeRule::Strongest:
        CVectorLoop<MergeLoop<EMergeRule::Strongest>>::Run(
            pSource, pDest, pCandidates, iCount, fMaxHeight, span);
        break;
    case EMergeRule::Candidate:
        CVectorLoop<MergeLoop<EMergeRule::Candidate>>::Run(
            pSource, pDest, pCandidates, iCount, fMaxHeight, span);
        break;
    case EMergeRule::ByCall:
        MergeByCall(function, pSource, pDest, pCandidates, iCount, fMaxHeight, span);
        break;
    }
    if (span.nChanged == 0)
    {
        return {};
    }
    return {span.iFirst,
            span.iLast,
            span.nChanged,
            std::bit_cast<float>(span.iMinBits),
            std::bit_cast<float>(span.iMaxBits)};
}

bool MergeSet(const CVertList& verts,
              const ITellurFunction& function,
              float fMaxHeight,
              CHeightTiles& tiles,
              SPointChange& changed)
{
    if (!tiles.Take(GetSetBox(verts)))
    {
        return false;
    }
    for (const SVertRun& run : verts.GetRuns())
    {
        const int ixEnd = run.ixFirst + static_cast<int>(run.nCount);
        for (int ix = run.ixFirst; ix < ixEnd;)
        {
            // A run may cross tiles; within one its heights lie side by side.
            const int iPart = std::min(SIDE - ix % SIDE, ixEnd - ix);
            SHeightTile& tile = *tiles.Find(ix / SIDE, run.iz / SIDE);
            const SMergedPart part = {
                ix, run.iz, iPart, verts.GetHeights() + run.nFirst + (ix - run.ixFirst)};
            const uint64_t* pProtected = tiles.GetProtectedRows(ix / SIDE, run.iz / SIDE);
            const uint64_t uProtected = pProtected != nullptr ? pProtected[run.iz % SIDE] : 0;
            if (uProtected == 0)
            {
                MergePart(part, function, fMaxHeight, tile, changed);
            }
            else
            {
                MergeAround(uProtected, part, function, fMaxHeight, tile, changed);
            }
            ix += iPart;
        }
    }
    return true;
}
