#pragma once

#include "tellur/functions/CPainterFunction.h"
#include "tellur/stroke/ETerrainFunctionMode.h"

// Pulls the terrain toward a target height; at full weight a vertex lands exactly on it. Min mode
// only fills up to it, max mode only cuts down to it.
class CSetHeightFunction : public CPainterFunction
{
public:
    static const CRTTI s_RTTI;

    CSetHeightFunction();

    const CRTTI* GetRTTI() const override { return &s_RTTI; }

    ITellurFunction* Clone() const override;
    float MergeHeight(float fSrc, float fDst, float fCandidate) const override;

    EMergeRule GetMergeRule() const override { return EMergeRule::Strongest; }

    void DoOperation(const SOperation& operation) override;
    bool GetRule(const SOperation& operation, SVertexRule& rule) override;
    void OnStartPoint(const SVec3& point) override;

private:
    static CRTTIObject* Create();
    static void RegisterFields(CRTTI& rtti);

    int32_t m_Mode = mode_default;
    float m_Height = 500.0F;   // target, terrain units
    bool m_PickHeight = false; // take the target from where a stroke begins
};
