#include "tellur/functions/HeightLoops.h"

#include "host/VectorLoop.h"
#include "tellur/modification/CVertList.h"
#include "tellur/stroke/ETerrainFunctionMode.h"

#include <bit>

namespace
{

TELLUR_LOOP_BODY void
RaiseLoop(float* pHeights, const float* pWeights, size_t nCount, float fStroke, float fAmount)
{
    for (size_t i = 0; i < nCount; ++i)
    {
        pHeights[i] += pWeights[i] * fStroke * fAmount;
    }
}

// Loops work on copies of what stays the same: a write to the heights cannot change them, which
// lets compilers make vector code.
TELLUR_LOOP_BODY void RaiseBandLoop(float* pHeights,
                                    const float* pWeights,
                                    size_t nCount,
                                    float fStroke,
                                    float fAmount,
                                    const CVerticalBand& band)
{
    const CVerticalBand local = band;
    for (size_t i = 0; i < nCount; ++i)
    {
        pHeights[i] += pWeights[i] * fStroke * fAmount * local.GetFactor(pHeights[i]);
    }
}

struct SPull
{
    float fStroke;
    float fTarget;
    int32_t iRaise; // -1 when vertices below the target may change, else 0
    int32_t iLower; // the same for vertices above it
};

// y or fNew, without a branch, in the form that compilers turn into vectors.
inline float Choose(const SPull& pull, float y, float fNew)
{
    const int32_t iBelow = y < pull.fTarget ? -1 : 0;
    const int32_t iAbove = y > pull.fTarget ? -1 : 0;
    const int32_t iChange = (pull.iRaise | ~iBelow) & (pull.iLower | ~iAbove);
    return std::bit_cast<float>((std::bit_cast<int32_t>(fNew) & iChange) |
                                (std::bit_cast<int32_t>(y) & ~iChange));
}

TELLUR_LOOP_BODY void
PullLoop(float* pHeights, const float* pWeights, size_t nCount, const SPull& pull)
{
    const SPull p = pull;
    for (size_t i = 0; i < nCount; ++i)
    {
        const float y = pHeights[i];
        const float a = (p.fTarget - y) * pWeights[i] * p.fStroke;
        pHeights[i] = Choose(p, y, y + a);
    }
}

TELLUR_LOOP_BODY void PullBandLoop(float* pHeights,
                                   const float* pWeights,
                                   size_t nCount,
                                   const SPull& pull,
                                   const CVerticalBand& band)
{
    const SPull p = pull;
    const CVerticalBand local = band;
    for (size_t i = 0; i < nCount; ++i)
    {
        const float y = pHeights[i];
        const float a = (p.fTarget - y) * pWeights[i] * p.fStroke * local.GetFactor(y);
        pHeights[i] = Choose(p, y, y + a);
    }
}

TELLUR_LOOP_BODY void MoveLoop(float* pHeights,
                               const float* pWeights,
                               const float* pTargets,
                               size_t nCount,
                               const SPull& pull,
                               const CVerticalBand& band)
{
    const SPull p = pull;
    const CVerticalBand local = band;
    const bool bBand = band.IsActive();
    for (size_t i = 0; i < nCount; ++i)
    {
        const float y = pHeights[i];
        const float fFactor = bBand ? local.GetFactor(y) : 1.0F;
        const float a = (pTargets[i] - y) * pWeights[i] * p.fStroke * fFactor;
        // The step decides, since each vertex has a target of its own.
        const int32_t iBelow = a < 0.0F ? -1 : 0;
        const int32_t iAbove = a > 0.0F ? -1 : 0;
        const int32_t iChange = (p.iRaise | ~iAbove) & (p.iLower | ~iBelow);
        pHeights[i] = std::bit_cast<float>((std::bit_cast<int32_t>(y + a) & iChange) |
                                           (std::bit_cast<int32_t>(y) & ~iChange));
    }
}

} // namespace

void MoveTowards(CVertList& verts,
                 const float* pTargets,
                 float fStroke,
                 const CVerticalBand& band,
                 int32_t iMode)
{
    const SPull pull = {fStroke, 0.0F, iMode != mode_max ? -1 : 0, iMode != mode_min ? -1 : 0};
    CVectorLoop<MoveLoop>::Run(
        verts.GetHeights(), verts.GetWeights(), pTargets, verts.GetCount(), pull, band);
}

void RaiseHeights(CVertList& verts, float fStroke, float fAmount, const CVerticalBand& band)
{
    if (band.IsActive())
    {
        CVectorLoop<RaiseBandLoop>::Run(
            verts.GetHeights(), verts.GetWeights(), verts.GetCount(), fStroke, fAmount, band);
    }
    else
    {
        CVectorLoop<RaiseLoop>::Run(
            verts.GetHeights(), verts.GetWeights(), verts.GetCount(), fStroke, fAmount);
    }
}

void PullHeights(
    CVertList& verts, float fStroke, float fTarget, const CVerticalBand& band, int32_t iMode)
{
    const SPull pull = {fStroke, fTarget, iMode != mode_max ? -1 : 0, iMode != mode_min ? -1 : 0};
    if (band.IsActive())
    {
        CVectorLoop<PullBandLoop>::Run(
            verts.GetHeights(), verts.GetWeights(), verts.GetCount(), pull, band);
    }
    else
    {
        CVectorLoop<PullLoop>::Run(verts.GetHeights(), verts.GetWeights(), verts.GetCount(), pull);
    }
}
