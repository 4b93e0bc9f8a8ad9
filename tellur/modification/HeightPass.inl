// The tile pass, once for each set of instructions: TELLUR_PASS and TELLUR_CHANGES name the
// functions. No inline function of a library is called, since the linker may keep the copy with the
// instructions of one form for both.

#include "tellur/modification/HeightPass.h"

#if defined(__SSE2__)
#include <immintrin.h>
#endif

namespace
{

using V = float __attribute__((vector_size(32)));
using I = int32_t __attribute__((vector_size(32)));

#define TELLUR_INLINE static inline __attribute__((always_inline))

// Loads and stores go through a copy, because rows need not lie at multiples of 32 bytes.
TELLUR_INLINE V Load(const float* pFrom)
{
    V v;
    __builtin_memcpy(&v, pFrom, sizeof(v));
    return v;
}

TELLUR_INLINE I LoadInts(const int32_t* pFrom)
{
    I v;
    __builtin_memcpy(&v, pFrom, sizeof(v));
    return v;
}

TELLUR_INLINE void Store(float* pTo, const V& v)
{
    __builtin_memcpy(pTo, &v, sizeof(v));
}

TELLUR_INLINE V All(float f)
{
    return V{f, f, f, f, f, f, f, f};
}

TELLUR_INLINE I AllInts(int32_t i)
{
    return I{i, i, i, i, i, i, i, i};
}

// mask: all bits of a lane or none.
TELLUR_INLINE V Choose(const I& mask, const V& a, const V& b)
{
#if defined(__AVX2__)
    return (V)_mm256_blendv_ps((__m256)b, (__m256)a, (__m256)mask);
#else
    return (V)(((I)a & mask) | ((I)b & ~mask));
#endif
}

// a where it is smaller, otherwise b, which is what is no number on either side leads to.
TELLUR_INLINE V ChooseSmaller(const V& a, const V& b)
{
#if defined(__AVX2__)
    return (V)_mm256_min_ps((__m256)a, (__m256)b);
#else
    return Choose((I)(a < b), a, b);
#endif
}

TELLUR_INLINE V ChooseGreater(const V& a, const V& b)
{
#if defined(__AVX2__)
    return (V)_mm256_max_ps((__m256)a, (__m256)b);
#else
    return Choose((I)(a > b), a, b);
#endif
}

TELLUR_INLINE V Absolute(const V& v)
{
    return (V)((I)v & AllInts(INT32_MAX));
}

// A bit a lane.
TELLUR_INLINE uint32_t GetBits(const I& mask)
{
#if defined(__AVX2__)
    return (uint32_t)_mm256_movemask_ps((__m256)mask);
#else
    uint32_t uBits = 0;
    for (int i = 0; i < PASS_LANES; ++i)
    {
        uBits |= ((uint32_t)mask[i] & 1U) << i;
    }
    return uBits;
#endif
}

struct SPixels
{
    V first;
    V second;
};

TELLUR_INLINE SPixels GetPixels(const float* pShape, const SColumnGroup& group)
{
    SPixels pixels = {};
#if defined(__AVX2__)
    const I first = LoadInts(group.aFirst);
    const I second = LoadInts(group.aSecond);
    if (group.iNear != 0)
    {
        const V near = Load(pShape + group.iBase);
        pixels.first = (V)_mm256_permutevar8x32_ps((__m256)near, (__m256i)first);
        pixels.second = (V)_mm256_permutevar8x32_ps((__m256)near, (__m256i)second);
        return pixels;
    }
    pixels.first = (V)_mm256_i32gather_ps(pShape, (__m256i)first, 4);
    pixels.second = (V)_mm256_i32gather_ps(pShape, (__m256i)second, 4);
#else
    const float* pFrom = pShape + (group.iNear != 0 ? group.iBase : 0);
    for (int i = 0; i < PASS_LANES; ++i)
    {
        pixels.first[i] = pFrom[group.aFirst[i]];
        pixels.second[i] = pFrom[group.aSecond[i]];
    }
#endif
    return pixels;
}

// bHard: there is a hardness.
TELLUR_INLINE V GetWeights(const SPassTile& tile,
                           const float* pShape,
                           const SColumnGroup& group,
                           bool bHard)
{
    const SPixels pixels = GetPixels(pShape, group);
    const V weight = Load(group.aWeight);
    const V b = pixels.first * weight + pixels.second * (All(1.0F) - weight);
    if (!bHard)
    {
        return All(tile.fPower) * b; // samples lie within 0 to 1
    }
    // The order of the operands decides what becomes of a sample that is no number, as in
    // SampleShapeRow.
    V hard = b + All(tile.fHardness);
    hard = ChooseGreater(All(0.0F), hard);
    hard = ChooseSmaller(All(1.0F), hard);
    return All(tile.fPower) * Choose(Absolute(b) >= All(0.0001F), hard, b);
}

TELLUR_INLINE V GetBandFactor(const SVertexRule& rule, const V& y)
{
    const V distance = All(rule.fBandDistance);
    const V factor = (distance - Absolute(y - All(rule.fBandCenter))) / distance;
    return ChooseGreater(All(0.0F), factor);
}

template <EVertexRule TRule>
TELLUR_INLINE V GetCandidate(const SVertexRule& rule, const V& y, const V& w, const V& target)
{
    // The factors stand in the order of the loops in HeightLoops.cpp: another order rounds
    // otherwise.
    V a = TRule == EVertexRule::Raise ? w * All(rule.fStroke) * All(rule.fAmount)
                                      : (target - y) * w * All(rule.fStroke);
    if (rule.bBand)
    {
        a *= GetBandFactor(rule, y);
    }
    if (TRule == EVertexRule::Raise || (rule.bRaise && rule.bLower))
    {
        return y + a;
    }
    // A vertex that would move in a way that the mode forbids keeps its height.
    const I raises = TRule == EVertexRule::Pull ? (I)(y < target) : (I)(a > All(0.0F));
    const I lowers = TRule == EVertexRule::Pull ? (I)(y > target) : (I)(a < All(0.0F));
    const I change =
        (AllInts(rule.bRaise ? -1 : 0) | ~raises) & (AllInts(rule.bLower ? -1 : 0) | ~lowers);
    return Choose(change, y + a, y);
}

// What the loop over a row works on, in registers.
struct SRowPlace
{
    const float* pSource;
    float* pDest;
    float* pShown;
    const float* pShape;
    const float* pTargets; // at the group's first column
    uint64_t uProtected;   // a bit a column of the tile
    bool bHard;
};

struct SLanes
{
    V lowest;
    V highest;
    I differs;
    I visited; // counts down
};

// One group: eight vertices from column iAt of the tile on. A bit for each that was written. TEdge:
// some of them may be protected or lie outside the part, where nothing changes, or outside the
// terrain.
template <EVertexRule TRule, EMergeRule TMerge, bool TEdge>
TELLUR_INLINE uint32_t RunGroup(const SVertexRule& rule,
                                const SPassTile& tile,
                                const SRowPlace& row,
                                const SColumnGroup& group,
                                size_t iAt,
                                SLanes& lanes)
{
    const V source = Load(row.pSource + iAt);
    const V dest = Load(row.pDest + iAt);
    const V y = rule.bFromDest ? dest : source;
    const V w = GetWeights(tile, row.pShape, group, row.bHard);
    const V target = TRule == EVertexRule::Move ? Load(row.pTargets) : All(rule.fAmount);
    const V candidate = GetCandidate<TRule>(rule, y, w, target);

    // Heights below 0 are vertices that nobody edits.
    I editable = ~(I)(y < All(0.0F));
    if (TEdge)
    {
        const I place = AllInts((int32_t)iAt) + I{0, 1, 2, 3, 4, 5, 6, 7};
        editable &= (I)(place >= AllInts(tile.iFirst)) & (I)(place < AllInts(tile.iEnd));
        const I bits = AllInts((int32_t)((row.uProtected >> iAt) & 255U));
        editable &= (I)((bits & I{1, 2, 4, 8, 16, 32, 64, 128}) == AllInts(0));
    }
    lanes.visited += editable;
    // What is no number is never written: no comparison of the strongest rule is true for it, and
    // the other rule asks for it in so many words.
    I write = editable & (I)(candidate != dest);
    if (TMerge == EMergeRule::Strongest)
    {
        write &= (I)(Absolute(candidate - source) >= Absolute(dest - source));
    }
    else
    {
        write &= (I)(candidate == candidate);
    }
    const V written = ChooseSmaller(ChooseGreater(candidate, All(0.0F)), All(tile.fMaxHeight));
    const V height = Choose(write, written, dest);
    // A tile has room for whole groups. A row of the ground may end within one, and what lies
    // behind it is the next row.
    Store(row.pDest + iAt, height);
    if (row.pShown != nullptr && (!TEdge || (int)iAt + PASS_LANES <= tile.iThere))
    {
        Store(row.pShown + iAt, height);
    }
    else if (row.pShown != nullptr)
    {
        for (int i = (int)iAt; i < tile.iThere; ++i)
        {
            row.pShown[i] = height[i - (int)iAt];
        }
    }
    lanes.lowest = ChooseSmaller(Choose(write, written, lanes.lowest), lanes.lowest);
    lanes.highest = ChooseGreater(Choose(write, written, lanes.highest), lanes.highest);
    lanes.differs |= write & (I)(written != dest);
    return GetBits(write);
}

// A bit for each column that was written.
template <EVertexRule TRule, EMergeRule TMerge>
TELLUR_INLINE uint64_t
RunRow(const SVertexRule& rule, const SPassTile& tile, SRowPlace row, SLanes& lanes)
{
    const SColumnGroup* pGroup = tile.pGroups;
    const auto iFirst = tile.iFirst;
    const auto iEnd = tile.iEnd;
    // Groups begin at multiples of eight, so only the first and the last one reach beyond the part;
    // those between are run without asking, unless the row has protected vertices.
    const auto iPlainEnd = row.uProtected == 0 ? iEnd : 0;
    int iAt = iFirst / PASS_LANES * PASS_LANES;
    uint64_t uChanged = 0;
    while (iAt < iEnd)
    {
        if (iAt < iFirst || iAt + PASS_LANES > iPlainEnd)
        {
            uChanged |= (uint64_t)RunGroup<TRule, TMerge, true>(
                            rule, tile, row, *pGroup, (size_t)iAt, lanes)
                        << iAt;
            iAt += PASS_LANES;
            row.pTargets += TRule == EVertexRule::Move ? PASS_LANES : 0;
            ++pGroup;
        }
        SLanes inner = lanes; // or the registers of the borders' code reach into this loop
        for (; iAt + PASS_LANES <= iPlainEnd; iAt += PASS_LANES)
        {
            uChanged |= (uint64_t)RunGroup<TRule, TMerge, false>(
                            rule, tile, row, *pGroup, (size_t)iAt, inner)
                        << iAt;
            row.pTargets += TRule == EVertexRule::Move ? PASS_LANES : 0;
            ++pGroup;
        }
        lanes = inner;
    }
    return uChanged;
}

template <EVertexRule TRule, EMergeRule TMerge>
TELLUR_INLINE void RunTile(const SVertexRule& rule, const SPassTile& tile, SPassResult& result)
{
    const SVertexRule own = rule; // no write through a pointer can change it
    const SPassTile ownTile = tile;
    SLanes lanes = {All(result.fMin), All(result.fMax), AllInts(0), AllInts(0)};
    SRowPlace row = {ownTile.pSource,
                     ownTile.pDest,
                     ownTile.pShown,
                     ownTile.pShape,
                     ownTile.pTargets,
                     0,
                     ownTile.fHardness != 0.0F};
    result.uColumns = 0;
    for (int iRow = 0; iRow < ownTile.iRows; ++iRow)
    {
        row.uProtected = ownTile.pProtected != nullptr ? ownTile.pProtected[iRow] : 0;
        const uint64_t uWritten = RunRow<TRule, TMerge>(own, ownTile, row, lanes);
        if (uWritten != 0)
        {
            // Rows only grow, so the first row with a change is met once and the last one is kept
            // anew.
            result.iFirstRow = result.uColumns == 0 ? iRow : result.iFirstRow;
            result.iLastRow = iRow;
            result.uColumns |= uWritten;
            result.nWritten += (size_t)__builtin_popcountll(uWritten);
        }
        row.pSource += 64;
        row.pDest += 64;
        row.pShown += row.pShown != nullptr ? ownTile.nShownPitch : 0;
        row.pShape += ownTile.nShapePitch;
        row.pTargets += TRule == EVertexRule::Move ? ownTile.nTargetPitch : 0;
    }
    for (int i = 0; i < PASS_LANES; ++i)
    {
        result.fMin = lanes.lowest[i] < result.fMin ? lanes.lowest[i] : result.fMin;
        result.fMax = lanes.highest[i] > result.fMax ? lanes.highest[i] : result.fMax;
        // A mask that is set is -1 as a number, so the lanes have counted down.
        result.nVisited += (size_t)-lanes.visited[i];
    }
    result.bDiffers = result.bDiffers || GetBits(lanes.differs) != 0;
}

template <EVertexRule TRule>
TELLUR_INLINE void RunMerged(const SVertexRule& rule, const SPassTile& tile, SPassResult& result)
{
    if (rule.eMerge == EMergeRule::Strongest)
    {
        RunTile<TRule, EMergeRule::Strongest>(rule, tile, result);
    }
    else
    {
        RunTile<TRule, EMergeRule::Candidate>(rule, tile, result);
    }
}

} // namespace

void TELLUR_PASS(const SVertexRule& rule, const SPassTile& tile, SPassResult& result)
{
    switch (rule.eRule)
    {
    case EVertexRule::Raise:
        RunMerged<EVertexRule::Raise>(rule, tile, result);
        break;
    case EVertexRule::Pull:
        RunMerged<EVertexRule::Pull>(rule, tile, result);
        break;
    case EVertexRule::Move:
        RunMerged<EVertexRule::Move>(rule, tile, result);
        break;
    }
}

uint64_t TELLUR_CHANGES(const float* pSource, float* pDest, bool& bTraces)
{
    uint64_t uChanged = 0;
    for (int iAt = 0; iAt < 64; iAt += PASS_LANES)
    {
        const V source = Load(pSource + iAt);
        const V dest = Load(pDest + iAt);
        const V gap = Absolute(source - dest);
        // A height below 0 is no change: nobody edits such a vertex.
        const I changed = ~(I)(dest < All(0.0F)) & (I)(gap > All(MIN_CHANGE));
        const I trace = (I)(source != dest) & (I)(gap <= All(MIN_CHANGE));
        uChanged |= (uint64_t)GetBits(changed) << iAt;
        if (GetBits(trace) != 0)
        {
            Store(pDest + iAt, Choose(trace, source, dest));
            bTraces = true;
        }
    }
    return uChanged;
}
