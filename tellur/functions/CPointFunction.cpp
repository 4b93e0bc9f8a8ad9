#include "tellur/functions/CPointFunction.h"

#include "host/World.h"
#include "tellur/context/PluginContext.h"
#include "tellur/functions/IdlePoint.h"
#include "tellur/functions/TerrainPick.h"
#include "tellur/stroke/ITellurBrush.h"
#include "tellur/stroke/ITerrainModification.h"

const CRTTI CPointFunction::s_RTTI("CPointFunction",
                                   ENGINE_CLASS_FUNCTION,
                                   nullptr,
                                   &CTellurBaseFunction::s_RTTI,
                                   CRTTI::FLAG_ABSTRACT);

CPointFunction::CPointFunction(const SFunctionTraits& traits)
    : CTellurBaseFunction(traits)
{
}

CPointFunction::CPointFunction(const CPointFunction& other)
    : CTellurBaseFunction(other)
    , m_Clipped(other.m_Clipped)
    , m_Raw(other.m_Raw)
    , m_Started(other.m_Started)
{
}

int CPointFunction::Start(ITerrainModification* pModification,
                          ITellurBrush* pBrush,
                          ViewId view,
                          uint32_t /*uFlags*/,
                          ViewPoint point)
{
    m_Started = false;
    SVec3 hit;
    const int iHit = PickTerrainUnder(view, point, hit);
    if (iHit == 1 && pModification != nullptr && pBrush != nullptr)
    {
        const float fSizeX = pModification->GetXSize();
        const float fSizeZ = pModification->GetZSize();
        pBrush->GetExtents(m_Clipped, hit.x, hit.z, m_Raw, fSizeX, fSizeZ);
        pModification->SetExtents(m_Raw);
        m_Raw.min.y = hit.y;
        m_Raw.max.y = hit.y;
        m_Started = true;
    }
    else if (iHit != 1)
    {
        NoteOutcome(EPointOutcome::NoGround);
    }
    return iHit;
}

int CPointFunction::End(ITerrainModification* /*pModification*/,
                        ITellurBrush* /*pBrush*/,
                        ViewId /*view*/,
                        uint32_t /*uFlags*/,
                        ViewPoint /*point*/)
{
    m_Started = false;
    return 0;
}

int CPointFunction::OnMouseMove(ITerrainModification* pModification,
                                ITellurBrush* pBrush,
                                ViewId view,
                                uint32_t uFlags,
                                ViewPoint point,
                                uintptr_t /*uExtra1*/,
                                uintptr_t uExtra2)
{
    if (!m_Started)
    {
        // The press met no ground: the footprint is fixed where the cursor first does.
        Start(pModification, pBrush, view, uFlags, point);
    }
    if (!m_Started || pModification == nullptr || pBrush == nullptr)
    {
        return 0;
    }
    NoteOutcome(EPointOutcome::None);
    m_Verts.Reset();
    SVec3 center = {(m_Raw.min.x + m_Raw.max.x) / 2, 0.0F, (m_Raw.min.z + m_Raw.max.z) / 2};
    // The vertical distance counts from the ground as it is now, which the drag itself moves.
    if (const World* pWorld = GetCurrentWorld())
    {
        center.y = pWorld->GetTerrainHeight(center.x, center.z);
    }
    // The host hands the block's address on as a word.
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    const auto* pStep = reinterpret_cast<const SStepBlock*>(uExtra2);
    const int iStep = pStep != nullptr ? pStep->dy : 0;
    const SPointOperation operation = {pBrush, center, &m_Verts, iStep};
    SVertexRule rule;
    // A point that can be told in numbers needs no set: the session runs it in one pass.
    if (!GetRule(operation, rule) ||
        !RunPointInNumbers(*pModification, *pBrush, {m_Clipped, center, rule, nullptr}))
    {
        FillSet(*pModification, operation);
        Process(operation);
        MergePoint(*pModification, m_Verts, this);
    }
    else if (IsPointIdle())
    {
        FillSet(*pModification, operation); // for the explanation
    }
    // A move to the side has no step, which explains it without a look at the vertices.
    if (iStep == 0 && IsPointIdle())
    {
        NoteOutcome(EPointOutcome::Sideways);
    }
    ExplainIdlePoint({m_Verts, *pModification, *pBrush, center, 1.0F, true});
    RedrawAllViews();
    return 1;
}

void CPointFunction::FillSet(ITerrainModification& modification, const SPointOperation& operation)
{
    modification.GetDstVerts(m_Clipped, m_Verts);
    operation.pBrush->CalculateWeights(m_Verts, operation.center);
    SExtents terrainBox;
    operation.pBrush->ApplyMask(m_Verts, modification.GetTerrainExtents(terrainBox));
}
