#pragma once

#include "tellur/functions/CPainterFunction.h"
#include "tellur/modification/CPlainArray.h"
#include "tellur/stroke/ETerrainFunctionMode.h"

// Pulls every vertex toward the nearest of a fixed set of height levels, which makes terraces. The
// keys do not override its mode.
class CPosterizeFunction : public CPainterFunction, private IVertexTargets
{
public:
    static const CRTTI s_RTTI;

    CPosterizeFunction();

    const CRTTI* GetRTTI() const override { return &s_RTTI; }

    ITellurFunction* Clone() const override;
    float MergeHeight(float fSrc, float fDst, float fCandidate) const override;
    EMergeRule GetMergeRule() const override;

    bool UseOnlyDestBuffer() const override { return m_UseOnlyDestBuffer; }

    bool HasWork() const override { return !m_Levels.IsEmpty(); }

    void DoOperation(const SOperation& operation) override;
    bool GetRule(const SOperation& operation, SVertexRule& rule) override;

    IVertexTargets* GetRuleTargets() override { return this; }

protected:
    // A copy has the same fields and cursor and makes its levels on first use.
    CPosterizeFunction(const CPosterizeFunction& other);

private:
    static CRTTIObject* Create();
    static void RegisterFields(CRTTI& rtti);
    STargetRows GetTargets(const SPointPart& part, float* pScratch) override;
    void FindTargets(const float* pHeights, float* pTargets, size_t nCount) const;
    bool HasLevels(const ITerrainModification& modification) const;
    bool CalculateLevels(float fMaxHeight);
    float GetNearestLevel(float fHeight) const;

    int32_t m_Mode = mode_default;
    int32_t m_NumHeightDivisions = 1; // levels from one step above 0 to the height limit
    bool m_UseOnlyDestBuffer = true;  // read the heights edited so far, not those at the start
    int32_t m_LevelCount = 0;         // what the levels were made for
    bool m_bNoLimit = false;          // when they were made
    CPlainArray<float> m_Levels;      // increasing
    CPlainArray<float> m_Targets;     // scratch, one a vertex of the set
};
