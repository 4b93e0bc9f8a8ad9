#pragma once

#include "tellur/functions/CTellurBaseFunction.h"

// Collects a start and an end point and applies its operation once, when the button is released
// over the terrain.
class CTwoPointsFunction : public CTellurBaseFunction
{
public:
    static const CRTTI s_RTTI;

    int Start(ITerrainModification* pModification,
              ITellurBrush* pBrush,
              ViewId view,
              uint32_t uFlags,
              ViewPoint point) override;
    int End(ITerrainModification* pModification,
            ITellurBrush* pBrush,
            ViewId view,
            uint32_t uFlags,
            ViewPoint point) override;
    int OnMouseMove(ITerrainModification* pModification,
                    ITellurBrush* pBrush,
                    ViewId view,
                    uint32_t uFlags,
                    ViewPoint point,
                    uintptr_t uExtra1,
                    uintptr_t uExtra2) override;

    bool GetEnds(SVec3& first, SVec3& second) const override;

    virtual void Process(ITerrainModification* pModification,
                         ITellurBrush* pBrush,
                         const SVec3& first,
                         const SVec3& second) = 0;

protected:
    explicit CTwoPointsFunction(const SFunctionTraits& traits);

    const SVec3& GetFirstPoint() const { return m_First; } // x below 0: no point yet

    const SVec3& GetSecondPoint() const { return m_Second; }

private:
    SVec3 m_First = {-1.0F, -1.0F, -1.0F};
    SVec3 m_Second = {-1.0F, -1.0F, -1.0F};
};
