#include "tellur/functions/CBlurFunction.h"

#include "host/Log.h"
#include "host/ReflectionFields.h"
#include "tellur/functions/CNeighbourhoodMeans.h"
#include "tellur/functions/HeightLoops.h"
#include "tellur/modification/CVertDataSet.h"
#include "tellur/stroke/IHeightRows.h"
#include "tellur/stroke/ITellurBrush.h"
#include "tellur/stroke/ITerrainModification.h"

#include <algorithm>

namespace
{

constexpr SFunctionTraits TRAITS = {
    "BlurFunction", "CBlurFunction", "no cursor handle", "no name", 2108, true};
constexpr size_t MARGIN = 8; // floats before and behind the means of a box

} // namespace

const CRTTI CBlurFunction::s_RTTI("CBlurFunction",
                                  ENGINE_CLASS_FUNCTION,
                                  &CBlurFunction::Create,
                                  &CPainterFunction::s_RTTI,
                                  CRTTI::FLAG_NONE,
                                  &CBlurFunction::RegisterFields);

CRTTIObject* CBlurFunction::Create()
{
    return new CBlurFunction;
}

void CBlurFunction::RegisterFields(CRTTI& rtti)
{
    rtti.RegisterField(
        new CRTTIFieldEnum(RTTI_MEMBER_ADDRESS(CBlurFunction, m_Mode), GetTerrainFunctionModes()),
        "m_Mode",
        "f:EDIT;e:COMBO;d:mode;");
    rtti.RegisterField(new CRTTIFieldInt(RTTI_MEMBER_ADDRESS(CBlurFunction, m_NeighbourhoodSize)),
                       "m_NeighbourhoodSize",
                       "f:EDIT;e:EDIT;d:neighbourhood size;");
    rtti.RegisterField(new CRTTIFieldBool(RTTI_MEMBER_ADDRESS(CBlurFunction, m_UseOnlyDestBuffer)),
                       "m_UseOnlyDestBuffer",
                       "f:EDIT;e:CHECKBOX;d:use only destination buffer;");
}

CBlurFunction::CBlurFunction()
    : CPainterFunction(TRAITS)
{
}

CBlurFunction::CBlurFunction(const CBlurFunction& other)
    : CPainterFunction(other)
    , m_Mode(other.m_Mode)
    , m_NeighbourhoodSize(other.m_NeighbourhoodSize)
    , m_UseOnlyDestBuffer(other.m_UseOnlyDestBuffer)
{
}

ITellurFunction* CBlurFunction::Clone() const
{
    return new CBlurFunction(*this);
}

float CBlurFunction::MergeHeight(float fSrc, float fDst, float fCandidate) const
{
    return m_UseOnlyDestBuffer ? fCandidate : KeepStrongest(fSrc, fDst, fCandidate);
}

EMergeRule CBlurFunction::GetMergeRule() const
{
    return m_UseOnlyDestBuffer ? EMergeRule::Candidate : EMergeRule::Strongest;
}

void CBlurFunction::DoOperation(const SOperation& operation)
{
    if (operation.pBrush == nullptr)
    {
        CrashLog("[CBlurFunction::DoOperation] no brush interface\n");
        return;
    }
    if (operation.pModification == nullptr)
    {
        CrashLog("[CBlurFunction::DoOperation] no modification interface\n");
        return;
    }
    // Means are taken over the ground and not over the set, whose neighbours lie outside it.
    const IHeightRows* pRows = GetRows(*operation.pModification);
    CVertList& verts = operation.pVerts->GetVerts();
    if (m_NeighbourhoodSize < 0 || pRows == nullptr || verts.IsEmpty())
    {
        return;
    }
    if (!m_Means.Reserve(verts.GetCount()))
    {
        operation.pModification->GiveUp();
        return;
    }
    CNeighbourhoodMeans means(*pRows,
                              operation.pModification->GetBufferSizeX(),
                              operation.pModification->GetBufferSizeZ(),
                              m_NeighbourhoodSize);
    means.GetMeans(verts, m_Means.Get());
    const CVerticalBand band(operation.pBrush->GetVerticalDistance(), operation.point.y);
    MoveTowards(verts, m_Means.Get(), operation.fWeight, band, GetEffectiveMode(m_Mode));
}

const IHeightRows* CBlurFunction::GetRows(const ITerrainModification& modification) const
{
    return m_UseOnlyDestBuffer ? modification.GetDstRows() : modification.GetSrcRows();
}

bool CBlurFunction::GetRule(const SOperation& operation, SVertexRule& rule)
{
    SetMoveRule(operation, GetEffectiveMode(m_Mode), rule);
    // Kept for Begin, which the session calls without telling which one it is.
    m_PointSession = operation.pModification;
    return m_NeighbourhoodSize >= 0 && GetRows(*m_PointSession) != nullptr;
}

bool CBlurFunction::HasHoles(const SGridBox& box)
{
    const int iCount = box.iMaxX - box.iMinX + 1;
    m_Scratch.resize(static_cast<size_t>(iCount));
    bool bHoles = false;
    for (int iZ = box.iMinZ; iZ <= box.iMaxZ && !bHoles; ++iZ)
    {
        const float* pRow =
            GetRows(*m_PointSession)->GetRow(box.iMinX, iZ, iCount, m_Scratch.data());
        bHoles = HasNegative(pRow, static_cast<size_t>(iCount));
    }
    return bHoles;
}

// All means before the first height is written: rows further on look back at it. The sums of a set
// begin at its own first vertex, not at the box's, and a sum's last bits depend on where it begins.
ETargets CBlurFunction::Begin(const SGridBox& box)
{
    if (HasHoles(box))
    {
        return ETargets::Refused;
    }
    const int iCount = box.iMaxX - box.iMinX + 1;
    if (!m_Means.Reserve(static_cast<size_t>(iCount) *
                             (static_cast<size_t>(box.iMaxZ - box.iMinZ) + 1) +
                         2 * MARGIN))
    {
        return ETargets::NoMemory;
    }
    m_Box = box;
    CNeighbourhoodMeans means(*GetRows(*m_PointSession),
                              m_PointSession->GetBufferSizeX(),
                              m_PointSession->GetBufferSizeZ(),
                              m_NeighbourhoodSize);
    means.Begin(box.iMinX, box.iMaxX);
    float* pMeans = m_Means.Get() + MARGIN;
    for (int iZ = box.iMinZ; iZ <= box.iMaxZ; ++iZ)
    {
        means.GetRowMeans(box.iMinX, iZ, iCount, pMeans);
        pMeans += iCount;
    }
    return ETargets::Ready;
}

STargetRows CBlurFunction::GetTargets(const SPointPart& part, float* /*pScratch*/)
{
    const size_t nPitch = static_cast<size_t>(m_Box.iMaxX - m_Box.iMinX) + 1;
    return {m_Means.Get() + MARGIN + static_cast<size_t>(part.iZ - m_Box.iMinZ) * nPitch +
                static_cast<size_t>(part.iX - m_Box.iMinX),
            nPitch};
}
