#pragma once

#include "tellur/functions/CTellurBaseFunction.h"
#include "tellur/modification/CVertDataSet.h"
#include "tellur/stroke/SVertexRule.h"

// One step of a point function. All pointers are borrowed for the call.
struct SPointOperation
{
    ITellurBrush* pBrush = nullptr;
    SVec3 center; // of the footprint, at the terrain's height there
    CVertDataSet* pVerts = nullptr;
    int iVerticalStep = 0; // of the mouse, pixels, positive is downward
};

// Fixes the footprint where the button went down and keeps reshaping it while the mouse moves.
class CPointFunction : public CTellurBaseFunction
{
public:
    static const CRTTI s_RTTI;

    int Start(ITerrainModification* pModification,
              ITellurBrush* pBrush,
              ViewId view,
              uint32_t uFlags,
              ViewPoint point) override;
    int End(ITerrainModification*, ITellurBrush*, ViewId, uint32_t, ViewPoint) override;
    int OnMouseMove(ITerrainModification* pModification,
                    ITellurBrush* pBrush,
                    ViewId view,
                    uint32_t uFlags,
                    ViewPoint point,
                    uintptr_t uExtra1,
                    uintptr_t uExtra2) override;

    // Rewrites the heights of the set in place.
    virtual void Process(const SPointOperation& operation) = 0;

    // Tells in numbers what Process would do; the operation's set is empty. False where Process has
    // to be run.
    virtual bool GetRule(const SPointOperation& /*operation*/, SVertexRule& /*rule*/)
    {
        return false;
    }

protected:
    explicit CPointFunction(const SFunctionTraits& traits);
    CPointFunction(const CPointFunction& other);
    CPointFunction& operator=(const CPointFunction&) = delete;

private:
    SExtents m_Clipped;
    SExtents m_Raw; // its y is the height where the button went down
    void FillSet(ITerrainModification& modification, const SPointOperation& operation);

    bool m_Started = false;
    CVertDataSet m_Verts; // reused from step to step
};
