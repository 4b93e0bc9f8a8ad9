#pragma once

#include "tellur/functions/CPainterFunction.h"
#include "tellur/modification/CPlainArray.h"
#include "tellur/stroke/ETerrainFunctionMode.h"

#include <vector>

class IHeightRows;

// Pulls every vertex toward the mean of its grid neighbourhood. The cost of an operation does not
// depend on the neighbourhood's size: column sums run down the rows of the footprint, row sums
// along them, both in double precision.
class CBlurFunction : public CPainterFunction, private IVertexTargets
{
public:
    static const CRTTI s_RTTI;

    CBlurFunction();

    const CRTTI* GetRTTI() const override { return &s_RTTI; }

    ITellurFunction* Clone() const override;
    float MergeHeight(float fSrc, float fDst, float fCandidate) const override;
    EMergeRule GetMergeRule() const override;

    bool UseOnlyDestBuffer() const override { return m_UseOnlyDestBuffer; }

    bool HasWork() const override { return m_NeighbourhoodSize >= 0; }

    void DoOperation(const SOperation& operation) override;
    bool GetRule(const SOperation& operation, SVertexRule& rule) override;

    IVertexTargets* GetRuleTargets() override { return this; }

protected:
    // A copy has the same fields and cursor.
    CBlurFunction(const CBlurFunction& other);

private:
    ETargets Begin(const SGridBox& box) override;
    bool HasHoles(const SGridBox& box);
    STargetRows GetTargets(const SPointPart& part, float* pScratch) override;
    const IHeightRows* GetRows(const ITerrainModification& modification) const;

    static CRTTIObject* Create();
    static void RegisterFields(CRTTI& rtti);

    int32_t m_Mode = mode_default;
    int32_t m_NeighbourhoodSize = 2; // half width of the averaged square, grid steps
    bool m_UseOnlyDestBuffer = true; // read the heights edited so far, not those at the start
    CPlainArray<float> m_Means;      // scratch, one a vertex of the set or of the box
    std::vector<float> m_Scratch;    // a row
    SGridBox m_Box;                  // of a point that is told in numbers
    const ITerrainModification* m_PointSession = nullptr; // during it, borrowed
};
