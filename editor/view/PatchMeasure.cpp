#include "editor/view/PatchMeasure.h"

#include "editor/view/CPatchTree.h"
#include "host/VectorLoop.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr float NONE = 3.4e38F; // above all heights

constexpr uint32_t SIDE = CPatchTree::PATCH_CELLS;
constexpr uint32_t MOST_SQUARES = PATCH_STRIP * SIDE;

// Heights that a level keeps and drops in a row of vertices.
struct SRow
{
    float aKept[MOST_SQUARES + 1];
    float aDropped[MOST_SQUARES + 1]; // each behind the kept one of the same place
};

// HALF is uHalf where that is known beforehand, or 0: a fixed step makes the loop a fast one.
template <uint32_t HALF>
inline __attribute__((always_inline)) void
ReadRow(const float* pRow, uint32_t uHalf, uint32_t uSquares, SRow& row)
{
    const size_t nStep = HALF != 0 ? HALF : uHalf;
    for (uint32_t i = 0; i < uSquares; ++i)
    {
        row.aKept[i] = pRow[size_t{2} * i * nStep];
        row.aDropped[i] = pRow[(size_t{2} * i + 1) * nStep];
    }
    row.aKept[uSquares] = pRow[size_t{2} * uSquares * nStep];
}

inline __attribute__((always_inline)) float Worse(float fWorst, float fHeight, float fSurface)
{
    const float fError = std::fabs(fHeight - fSurface);
    return fWorst < fError ? fError : fWorst;
}

// Squares are cut from the corner of the next column to that of the next row, as CPatchMesh does.
template <uint32_t HALF>
inline __attribute__((always_inline)) void MeasureStepsOf(
    const float* pHeights, size_t nPitch, uint32_t uHalf, uint32_t uPatches, float* pErrors)
{
    const uint32_t uSquares = uPatches * SIDE;
    float aInside[MOST_SQUARES] = {};   // the worst on an upper border or a diagonal
    float aLeft[MOST_SQUARES + 1] = {}; // on a left border
    SRow aRows[3];
    SRow& between = aRows[0];
    SRow* pUpper = &aRows[1];
    SRow* pLower = &aRows[2];
    // The worst errors are kept for each column of squares and joined to patches at the end: the
    // loop over a row then has no condition in it. The lower row of one step is the upper one of
    // the next.
    ReadRow<HALF>(pHeights, uHalf, uSquares, *pUpper);
    for (uint32_t z = 0; z < SIDE; ++z)
    {
        const float* pBetween = pHeights + nPitch * uHalf;
        pHeights = pBetween + nPitch * uHalf;
        ReadRow<HALF>(pBetween, uHalf, uSquares, between);
        ReadRow<HALF>(pHeights, uHalf, uSquares, *pLower);
        for (uint32_t i = 0; i < uSquares; ++i)
        {
            const float fKept = pUpper->aKept[i];
            const float fAcross = fKept + 0.5F * (pUpper->aKept[i + 1] - fKept);
            const float fDown = 0.5F * (pLower->aKept[i] - fKept);
            const float fWorst = Worse(aInside[i], pUpper->aDropped[i], fAcross);
            aInside[i] = Worse(fWorst, between.aDropped[i], fAcross + fDown);
            aLeft[i] = Worse(aLeft[i], between.aKept[i], fKept + fDown);
        }
        const float fKept = pUpper->aKept[uSquares];
        aLeft[uSquares] = Worse(aLeft[uSquares],
                                between.aKept[uSquares],
                                fKept + 0.5F * (pLower->aKept[uSquares] - fKept));
        std::swap(pUpper, pLower);
    }
    // The lower border of the last row of squares is the upper one of no square here.
    for (uint32_t i = 0; i < uSquares; ++i)
    {
        const float fKept = pUpper->aKept[i];
        const float fAcross = fKept + 0.5F * (pUpper->aKept[i + 1] - fKept);
        aInside[i] = Worse(aInside[i], pUpper->aDropped[i], fAcross);
    }
    for (uint32_t n = 0; n < uPatches; ++n)
    {
        const uint32_t uFirst = n * SIDE;
        // The right border of a patch is the left one of the next.
        float fWorst = aLeft[uFirst + SIDE];
        for (uint32_t i = uFirst; i < uFirst + SIDE; ++i)
        {
            fWorst = std::max({fWorst, aInside[i], aLeft[i]});
        }
        pErrors[n] = fWorst;
    }
}

TELLUR_LOOP_BODY void MeasureRangesBody(
    const float* pHeights, size_t nPitch, uint32_t uRows, uint32_t uPatches, SPatchBounds* pBounds)
{
    const uint32_t uWidth = uPatches * SIDE + 1;
    float aMin[MOST_SQUARES + 1];
    float aMax[MOST_SQUARES + 1];
    // What is no number counts for nothing, wherever it lies.
    std::fill_n(aMin, uWidth, NONE);
    std::fill_n(aMax, uWidth, -NONE);
    for (uint32_t z = 0; z < uRows; ++z, pHeights += nPitch)
    {
        for (uint32_t x = 0; x < uWidth; ++x)
        {
            aMin[x] = pHeights[x] < aMin[x] ? pHeights[x] : aMin[x];
            aMax[x] = pHeights[x] > aMax[x] ? pHeights[x] : aMax[x];
        }
    }
    for (uint32_t n = 0; n < uPatches; ++n)
    {
        float fMin = aMin[size_t{n} * SIDE];
        float fMax = aMax[size_t{n} * SIDE];
        for (uint32_t x = n * SIDE + 1; x <= (n + 1) * SIDE; ++x)
        {
            fMin = aMin[x] < fMin ? aMin[x] : fMin;
            fMax = aMax[x] > fMax ? aMax[x] : fMax;
        }
        pBounds[n].fMin = fMin;
        pBounds[n].fMax = fMax;
        pBounds[n].fError = 0.0F;
    }
}

TELLUR_LOOP_BODY void MeasureStepsBody(
    const float* pHeights, size_t nPitch, uint32_t uHalf, uint32_t uPatches, float* pErrors)
{
    switch (uHalf)
    {
    case 1: // nearly all patches
        return MeasureStepsOf<1>(pHeights, nPitch, uHalf, uPatches, pErrors);
    case 2:
        return MeasureStepsOf<2>(pHeights, nPitch, uHalf, uPatches, pErrors);
    default:
        return MeasureStepsOf<0>(pHeights, nPitch, uHalf, uPatches, pErrors);
    }
}

} // namespace

void MeasureRanges(
    const float* pHeights, size_t nPitch, uint32_t uRows, uint32_t uPatches, SPatchBounds* pBounds)
{
    CVectorLoop<MeasureRangesBody>::Run(pHeights, nPitch, uRows, uPatches, pBounds);
}

void MeasureSteps(
    const float* pHeights, size_t nPitch, uint32_t uHalf, uint32_t uPatches, float* pErrors)
{
    CVectorLoop<MeasureStepsBody>::Run(pHeights, nPitch, uHalf, uPatches, pErrors);
}
