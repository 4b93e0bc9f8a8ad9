#include "functions/HeightLoops.h"

#include "functions/ETerrainFunctionMode.h"
#include "modification/CVertList.h"
#include "modification/VectorClones.h"

namespace
{

TELLUR_VECTOR_CLONES
void RaiseLoop(float* pHeights, const float* pWeights, size_t nCount, float fStroke, float fAmount)
{
    for (size_t i = 0; i < nCount; ++i)
    {
        pHeights[i] += pWeights[i] * fStroke * fAmount;
    }
}

TELLUR_VECTOR_CLONES
void RaiseBandLoop(float* pHeights,
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
    bool bRaise; // vertices below the target may change
    bool bLower; // vertices above it
};

TELLUR_VECTOR_CLONES
void PullLoop(float* pHeights, const float* pWeights, size_t nCount, const SPull& pull)
{
    const SPull p = pull;
    for (size_t i = 0; i < nCount; ++i)
    {
        const float y = pHeights[i];
        const float a = (p.fTarget - y) * pWeights[i] * p.fStroke;
        const bool bChange = (p.bRaise | !(y < p.fTarget)) & (p.bLower | !(y > p.fTarget));
        pHeights[i] = bChange ? y + a : y;
    }
}

TELLUR_VECTOR_CLONES
void PullBandLoop(float* pHeights,
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
        const bool bChange = (p.bRaise | !(y < p.fTarget)) & (p.bLower | !(y > p.fTarget));
        pHeights[i] = bChange ? y + a : y;
    }
}

} // namespace

void RaiseHeights(CVertList& verts, float fStroke, float fAmount, const CVerticalBand& band)
{
    if (band.IsActive())
    {
        RaiseBandLoop(
            verts.GetHeights(), verts.GetWeights(), verts.GetCount(), fStroke, fAmount, band);
    }
    else
    {
        RaiseLoop(verts.GetHeights(), verts.GetWeights(), verts.GetCount(), fStroke, fAmount);
    }
}

void PullHeights(
    CVertList& verts, float fStroke, float fTarget, const CVerticalBand& band, int32_t iMode)
{
    const SPull pull = {fStroke, fTarget, iMode != mode_max, iMode != mode_min};
    if (band.IsActive())
    {
        PullBandLoop(verts.GetHeights(), verts.GetWeights(), verts.GetCount(), pull, band);
    }
    else
    {
        PullLoop(verts.GetHeights(), verts.GetWeights(), verts.GetCount(), pull);
    }
}
