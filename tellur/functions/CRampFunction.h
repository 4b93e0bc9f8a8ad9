#pragma once

#include "tellur/functions/CTwoPointsFunction.h"
#include "tellur/stroke/ETerrainFunctionMode.h"

class CVertDataSet;
class CVertList;
struct SVertRun;

// Lays a straight sloped strip of terrain from where the button went down to where it is released,
// blending into the terrain at its sides and ends. The brush's extent is the strip's half width;
// its image plays no part. During the drag the strip is shown as lines.
class CRampFunction : public CTwoPointsFunction
{
public:
    static const CRTTI s_RTTI;

    CRampFunction();

    const CRTTI* GetRTTI() const override { return &s_RTTI; }

    ITellurFunction* Clone() const override;

    float MergeHeight(float, float, float fCandidate) const override { return fCandidate; }

    EMergeRule GetMergeRule() const override { return EMergeRule::Candidate; }

    bool Render(ITerrainModification* pModification,
                ITellurBrush* pBrush,
                const SVec3* pPickedPoint) override;
    void Process(ITerrainModification* pModification,
                 ITellurBrush* pBrush,
                 const SVec3& first,
                 const SVec3& second) override;

private:
    // One ramp, resolved from brush and fields: what the vertex loop needs.
    struct SRamp;

    static CRTTIObject* Create();
    static void RegisterFields(CRTTI& rtti);
    SRamp GetRamp(const ITellurBrush& brush, const SVec3& first, const SVec3& second) const;
    static void ApplyToRun(CVertList& verts, const SVertRun& run, const SRamp& ramp);
    static void MakeStrip(ITerrainModification& modification,
                          ITellurBrush& brush,
                          const SExtents& region,
                          const SRamp& ramp,
                          CVertDataSet& set);
    static bool IsStripWithoutBand(ITerrainModification& modification,
                                   ITellurBrush& brush,
                                   const SExtents& region,
                                   const SRamp& ramp);
    static bool DiffersFromGround(const ITerrainModification& modification,
                                  const CVertDataSet& set);
    static float GetWeight(const SRamp& ramp, float fDistance, float fAlong);
    void DrawRamp(const ITellurBrush& brush, const SVec3& first, const SVec3& second) const;

    int32_t m_Mode = mode_default;
    float m_SideInterpolation = 1.0F;      // fraction of the half width with the full effect
    float m_FrontBackInterpolation = 1.0F; // 1 - twice the fraction of each end that blends in
};
