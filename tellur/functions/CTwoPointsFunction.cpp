#include "tellur/functions/CTwoPointsFunction.h"

#include "tellur/functions/IdlePoint.h"
#include "tellur/functions/TerrainPick.h"

const CRTTI CTwoPointsFunction::s_RTTI("CTwoPointsFunction",
                                       ENGINE_CLASS_FUNCTION,
                                       nullptr,
                                       &CTellurBaseFunction::s_RTTI,
                                       CRTTI::FLAG_ABSTRACT);

CTwoPointsFunction::CTwoPointsFunction(const SFunctionTraits& traits)
    : CTellurBaseFunction(traits)
{
}

int CTwoPointsFunction::Start(ITerrainModification* /*pModification*/,
                              ITellurBrush* /*pBrush*/,
                              ViewId view,
                              uint32_t /*uFlags*/,
                              ViewPoint point)
{
    m_First = {-1.0F, -1.0F, -1.0F};
    m_Second = m_First;
    SVec3 hit;
    const int iHit = PickTerrainUnder(view, point, hit);
    if (iHit == 1)
    {
        m_First = hit;
        m_Second = hit;
    }
    else
    {
        NoteOutcome(EPointOutcome::NoGround);
    }
    return iHit;
}

int CTwoPointsFunction::OnMouseMove(ITerrainModification* /*pModification*/,
                                    ITellurBrush* /*pBrush*/,
                                    ViewId view,
                                    uint32_t /*uFlags*/,
                                    ViewPoint point,
                                    uintptr_t /*uExtra1*/,
                                    uintptr_t /*uExtra2*/)
{
    SVec3 hit;
    const int iHit = PickTerrainUnder(view, point, hit);
    if (iHit == 1)
    {
        // After a press beside the terrain the ramp begins where the cursor comes onto it.
        m_First = m_First.x < 0.0F ? hit : m_First;
        m_Second = hit;
    }
    return iHit;
}

bool CTwoPointsFunction::GetEnds(SVec3& first, SVec3& second) const
{
    first = m_First;
    second = m_Second;
    return !(m_First.x < 0.0F || m_Second.x < 0.0F);
}

int CTwoPointsFunction::End(ITerrainModification* pModification,
                            ITellurBrush* pBrush,
                            ViewId view,
                            uint32_t /*uFlags*/,
                            ViewPoint point)
{
    SVec3 hit;
    const int iHit = PickTerrainUnder(view, point, hit);
    if (iHit == 1)
    {
        m_Second = hit;
        NoteOutcome(EPointOutcome::None);
        Process(pModification, pBrush, m_First, m_Second);
    }
    else
    {
        NoteOutcome(EPointOutcome::NoGround);
    }
    return iHit;
}
