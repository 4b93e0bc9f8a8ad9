#pragma once

#include "tellur/functions/CTellurBaseFunction.h"
#include "tellur/modification/CVertDataSet.h"
#include "tellur/stroke/SVertexRule.h"

// One operation point of a painter function. All pointers are borrowed for the call.
struct SOperation
{
    SVec3 point; // terrain units
    CVertDataSet* pVerts = nullptr;
    ITellurBrush* pBrush = nullptr;
    ITerrainModification* pModification = nullptr;
    float fWeight = 1.0F; // of the stroke, 0 to 1
};

// Paints along the drag: every mouse move over the terrain is one operation point at the cursor.
class CPainterFunction : public CTellurBaseFunction
{
public:
    static const CRTTI s_RTTI;

    int Start(ITerrainModification* pModification,
              ITellurBrush* pBrush,
              ViewId view,
              uint32_t uFlags,
              ViewPoint point) override;

    int End(ITerrainModification*, ITellurBrush*, ViewId, uint32_t, ViewPoint) override
    {
        return 0;
    }

    int OnMouseMove(ITerrainModification* pModification,
                    ITellurBrush* pBrush,
                    ViewId view,
                    uint32_t uFlags,
                    ViewPoint point,
                    uintptr_t uExtra1,
                    uintptr_t uExtra2) override;

    // True: the set gets the heights edited so far, false: those at the start of the drag.
    virtual bool UseOnlyDestBuffer() const { return false; }

    EStrokePath GetStrokePath() const override
    {
        return UseOnlyDestBuffer() ? EStrokePath::AddedUp : EStrokePath::Strongest;
    }

    // False where the fields, as they were at the latest operation, let it change nothing anywhere.
    virtual bool HasWork() const { return true; }

    // Rewrites the heights of the set in place.
    virtual void DoOperation(const SOperation& operation) = 0;

    // Tells in numbers what DoOperation would do; the operation's set is empty. False where
    // DoOperation has to be run.
    virtual bool GetRule(const SOperation& /*operation*/, SVertexRule& /*rule*/) { return false; }

    // Who gives the targets of an EVertexRule::Move; null for functions without targets. Borrowed
    // until the next operation.
    virtual IVertexTargets* GetRuleTargets() { return nullptr; }

    virtual void OnStartPoint(const SVec3& /*point*/) {} // the stroke's first point is known

protected:
    explicit CPainterFunction(const SFunctionTraits& traits);
    // A copy starts with the stroke state of its original and a working set of its own.
    CPainterFunction(const CPainterFunction& other);
    CPainterFunction& operator=(const CPainterFunction&) = delete;

    // The candidate when it is at least as far from the source as the destination is, else the
    // destination: a stroke keeps its strongest effect.
    static float KeepStrongest(float fSrc, float fDst, float fCandidate);

    // The rule of a function that pulls each vertex towards a target of its own.
    void SetMoveRule(const SOperation& operation, int32_t iMode, SVertexRule& rule) const;

private:
    float GetStrokeWeight(const SVec3& point, const ITellurBrush& brush) const;
    void DoOperationAux(const SVec3& point,
                        ITerrainModification* pModification,
                        ITellurBrush* pBrush,
                        float fWeight);
    void FillSet(const SOperation& operation, const SExtents& clipped);

    SVec3 m_LastPoint = {-1.0F, -1.0F, -1.0F}; // x below 0: no point yet
    float m_StrokeLength = -1.0F;
    CVertDataSet m_Verts; // reused from point to point
};
