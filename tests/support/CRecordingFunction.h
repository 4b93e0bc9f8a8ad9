#pragma once

#include "host/FileSystem.h"
#include "tellur/stroke/ITellurFunction.h"
#include "tests/support/Calls.h"

// Records what a brush hands on to its function, and merges by a given rule. Clones share the list.
class CRecordingFunction : public ITellurFunction
{
public:
    using FMerge = float (*)(float fSrc, float fDst, float fCandidate);

    explicit CRecordingFunction(const char* pszClassName, Calls* pCalls = nullptr)
        : m_ClassName(pszClassName)
        , m_Calls(pCalls)
    {
    }

    // pMerge: answers MergeHeight, which is asked for ByCall only.
    explicit CRecordingFunction(EMergeRule eRule, FMerge pMerge = nullptr)
        : m_Rule(eRule)
        , m_Merge(pMerge)
    {
    }

    ~CRecordingFunction() override { AddCall(m_Calls, "~%s", m_ClassName); }

    const char* GetClassName() const override { return m_ClassName; }

    int Start(ITerrainModification*,
              ITellurBrush*,
              ViewId view,
              uint32_t uFlags,
              ViewPoint point) override
    {
        AddCall(m_Calls, "Start(%u, %u, %u)", view, uFlags, point);
        return 11;
    }

    int End(ITerrainModification*,
            ITellurBrush*,
            ViewId view,
            uint32_t uFlags,
            ViewPoint point) override
    {
        AddCall(m_Calls, "End(%u, %u, %u)", view, uFlags, point);
        return 12;
    }

    int OnMouseMove(ITerrainModification*,
                    ITellurBrush*,
                    ViewId view,
                    uint32_t uFlags,
                    ViewPoint point,
                    uintptr_t uExtra1,
                    uintptr_t uExtra2) override
    {
        AddCall(m_Calls, "Move(%u, %u, %u, %zu, %zu)", view, uFlags, point, uExtra1, uExtra2);
        return 13;
    }

    float MergeHeight(float fSrc, float fDst, float fCandidate) const override
    {
        return m_Merge(fSrc, fDst, fCandidate);
    }

    EMergeRule GetMergeRule() const override { return m_Rule; }

    bool Render(ITerrainModification*, ITellurBrush*, const SVec3* pPickedPoint) override
    {
        AddCall(m_Calls, "Render(%g)", pPickedPoint->x);
        return true;
    }

    CRTTIObject* GetRTTIObject() override { return nullptr; }

    const CRTTIObject* GetRTTIObject() const override { return nullptr; }

    bool SetCursor() override
    {
        AddCall(m_Calls, "SetCursor()");
        return true;
    }

    ITellurFunction* Clone() const override
    {
        auto* pClone = new CRecordingFunction(m_ClassName, m_Calls);
        pClone->bWorks = bWorks;
        return pClone;
    }

    bool Save(fs::ifile& file, int iIndent) const override
    {
        file.printf("<function at %d>\n", iIndent);
        return bWorks;
    }

    bool Load(const CTCPARSE_KEYWORD* pBlock) override
    {
        AddCall(m_Calls, "Load(%s)", pBlock != nullptr ? "block" : "null");
        return bWorks;
    }

    bool bWorks = true; // Save and Load

private:
    const char* m_ClassName = "A";
    Calls* m_Calls = nullptr;
    EMergeRule m_Rule = EMergeRule::Candidate;
    FMerge m_Merge = nullptr;
};
