#pragma once

#include "tellur/functions/CPainterFunction.h"

// Raises by a fixed height, or lowers by a negative one. Candidates start from the heights at the
// start of the drag, and the strongest one counts, so a stroke never adds up over one place.
class CRelativeHeightFunction : public CPainterFunction
{
public:
    static const CRTTI s_RTTI;

    CRelativeHeightFunction();

    const CRTTI* GetRTTI() const override { return &s_RTTI; }

    ITellurFunction* Clone() const override;
    float MergeHeight(float fSrc, float fDst, float fCandidate) const override;

    EMergeRule GetMergeRule() const override { return EMergeRule::Strongest; }

    bool HasWork() const override { return m_Height != 0.0F; }

    void DoOperation(const SOperation& operation) override;
    bool GetRule(const SOperation& operation, SVertexRule& rule) override;

private:
    static CRTTIObject* Create();
    static void RegisterFields(CRTTI& rtti);

    float m_Height = 500.0F; // terrain units at full weight
};
