#pragma once

#include "tellur/functions/CPointFunction.h"

// Raises or lowers the footprint fixed at the press point by the vertical mouse movement, one
// height unit a pixel at full weight, on top of what the drag has already done.
class CPointHeightFunction : public CPointFunction
{
public:
    static const CRTTI s_RTTI;

    CPointHeightFunction();

    const CRTTI* GetRTTI() const override { return &s_RTTI; }

    ITellurFunction* Clone() const override;

    float MergeHeight(float, float, float fCandidate) const override { return fCandidate; }

    EMergeRule GetMergeRule() const override { return EMergeRule::Candidate; }

    void Process(const SPointOperation& operation) override;
    bool GetRule(const SPointOperation& operation, SVertexRule& rule) override;

private:
    static CRTTIObject* Create();
};
