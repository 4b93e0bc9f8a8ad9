#include "tellur/functions/CPainterFunction.h"

#include "host/Log.h"
#include "tellur/functions/IdlePoint.h"
#include "tellur/functions/TerrainPick.h"
#include "tellur/stroke/ETerrainFunctionMode.h"
#include "tellur/stroke/ITellurBrush.h"
#include "tellur/stroke/ITerrainModification.h"

#include <cmath>

namespace
{

float GetDistance(const SVec3& a, const SVec3& b)
{
    const float fX = b.x - a.x;
    const float fY = b.y - a.y;
    const float fZ = b.z - a.z;
    return std::sqrt(fX * fX + fY * fY + fZ * fZ);
}

} // namespace

const CRTTI CPainterFunction::s_RTTI("CPainterFunction",
                                     ENGINE_CLASS_FUNCTION,
                                     nullptr,
                                     &CTellurBaseFunction::s_RTTI,
                                     CRTTI::FLAG_ABSTRACT);

CPainterFunction::CPainterFunction(const SFunctionTraits& traits)
    : CTellurBaseFunction(traits)
{
}

CPainterFunction::CPainterFunction(const CPainterFunction& other)
    : CTellurBaseFunction(other)
    , m_LastPoint(other.m_LastPoint)
    , m_StrokeLength(other.m_StrokeLength)
{
}

float CPainterFunction::KeepStrongest(float fSrc, float fDst, float fCandidate)
{
    return std::fabs(fCandidate - fSrc) >= std::fabs(fDst - fSrc) ? fCandidate : fDst;
}

int CPainterFunction::Start(ITerrainModification* /*pModification*/,
                            ITellurBrush* /*pBrush*/,
                            ViewId view,
                            uint32_t /*uFlags*/,
                            ViewPoint point)
{
    m_StrokeLength = 0.0F;
    const int iHit = PickTerrainUnder(view, point, m_LastPoint);
    if (iHit == 1)
    {
        OnStartPoint(m_LastPoint);
    }
    else
    {
        NoteOutcome(EPointOutcome::NoGround);
    }
    return iHit;
}

int CPainterFunction::OnMouseMove(ITerrainModification* pModification,
                                  ITellurBrush* pBrush,
                                  ViewId view,
                                  uint32_t /*uFlags*/,
                                  ViewPoint point,
                                  uintptr_t /*uExtra1*/,
                                  uintptr_t /*uExtra2*/)
{
    SVec3 picked;
    if (PickTerrainUnder(view, point, picked) != 1)
    {
        NoteOutcome(EPointOutcome::NoGround);
        return 0;
    }
    if (m_LastPoint.x < 0.0F)
    {
        m_LastPoint = picked;
        m_StrokeLength = 0.0F;
        OnStartPoint(picked);
    }
    // Operation points are as dense as the mouse moves: the picked point alone.
    if (pBrush != nullptr)
    {
        DoOperationAux(picked, pModification, pBrush, GetStrokeWeight(picked, *pBrush));
    }
    else
    {
        CrashLog("[CPainterFunction::EvaluateOperationPoints] no brush\n");
    }
    m_StrokeLength += GetDistance(m_LastPoint, picked);
    m_LastPoint = picked;
    return 1;
}

void CPainterFunction::SetMoveRule(const SOperation& operation,
                                   int32_t iMode,
                                   SVertexRule& rule) const
{
    rule.eRule = EVertexRule::Move;
    rule.eMerge = GetMergeRule();
    rule.bFromDest = UseOnlyDestBuffer();
    rule.fStroke = operation.fWeight;
    rule.bRaise = iMode != mode_max;
    rule.bLower = iMode != mode_min;
    CVerticalBand(operation.pBrush->GetVerticalDistance(), operation.point.y).SetIn(rule);
}

float CPainterFunction::GetStrokeWeight(const SVec3& point, const ITellurBrush& brush) const
{
    const float fFade = brush.GetFadeFactor();
    if (!(fFade > 0.0F))
    {
        return 1.0F;
    }
    // The way to this point counts already; it is added to the stroke after the operation.
    const float fLength = GetDistance(m_LastPoint, point) + m_StrokeLength;
    return fLength >= fFade ? 0.0F : 1.0F - fLength / fFade;
}

void CPainterFunction::DoOperationAux(const SVec3& point,
                                      ITerrainModification* pModification,
                                      ITellurBrush* pBrush,
                                      float fWeight)
{
    if (pModification == nullptr || pBrush == nullptr)
    {
        CrashLog("[CPainterFunction::DoOperationAux] no interfaces\n");
        return;
    }
    NoteOutcome(EPointOutcome::None);
    m_Verts.Reset();
    SExtents clipped;
    SExtents raw;
    const float fSizeX = pModification->GetXSize();
    const float fSizeZ = pModification->GetZSize();
    pBrush->GetExtents(clipped, point.x, point.z, raw, fSizeX, fSizeZ);
    pModification->SetExtents(raw);
    const SOperation operation = {point, &m_Verts, pBrush, pModification, fWeight};
    SVertexRule rule;
    // A point that can be told in numbers needs no set: the session runs it in one pass.
    if (!GetRule(operation, rule) ||
        !RunPointInNumbers(*pModification, *pBrush, {clipped, point, rule, GetRuleTargets()}))
    {
        FillSet(operation, clipped);
        DoOperation(operation);
        MergePoint(*pModification, m_Verts, this);
    }
    else if (IsPointIdle())
    {
        FillSet(operation, clipped); // for the explanation
    }
    ExplainIdlePoint({m_Verts, *pModification, *pBrush, point, fWeight, UseOnlyDestBuffer()});
    if (IsPointIdle() && !HasWork())
    {
        NoteOutcome(EPointOutcome::NoWork);
    }
    RedrawAllViews();
}

void CPainterFunction::FillSet(const SOperation& operation, const SExtents& clipped)
{
    ITerrainModification& modification = *operation.pModification;
    if (UseOnlyDestBuffer())
    {
        modification.GetDstVerts(clipped, m_Verts);
    }
    else
    {
        modification.GetVerts(clipped, m_Verts);
    }
    operation.pBrush->CalculateWeights(m_Verts, operation.point);
    SExtents terrainBox;
    operation.pBrush->ApplyMask(m_Verts, modification.GetTerrainExtents(terrainBox));
}
