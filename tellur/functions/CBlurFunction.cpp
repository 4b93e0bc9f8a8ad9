#include "tellur/functions/CBlurFunction.h"

#include "host/Log.h"
#include "host/ReflectionFields.h"
#include "tellur/functions/CNeighbourhoodMeans.h"
#include "tellur/functions/HeightLoops.h"
#include "tellur/stroke/ITellurBrush.h"
#include "tellur/stroke/ITerrainModification.h"

namespace
{

constexpr SFunctionTraits TRAITS = {
    "BlurFunction", "CBlurFunction", "no cursor handle", "no name", 2108, true};

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
    const float* pBuffer = m_UseOnlyDestBuffer ? operation.pModification->GetDstBuffer()
                                               : operation.pModification->GetSrcBuffer();
    CVertList& verts = operation.pVerts->GetVerts();
    if (m_NeighbourhoodSize < 0 || pBuffer == nullptr || verts.IsEmpty())
    {
        return;
    }
    if (!m_Means.Reserve(verts.GetCount()))
    {
        operation.pModification->GiveUp();
        return;
    }
    CNeighbourhoodMeans means(pBuffer,
                              operation.pModification->GetBufferSizeX(),
                              operation.pModification->GetBufferSizeZ(),
                              m_NeighbourhoodSize);
    means.GetMeans(verts, m_Means.Get());
    const CVerticalBand band(operation.pBrush->GetVerticalDistance(), operation.point.y);
    MoveTowards(verts, m_Means.Get(), operation.fWeight, band, GetEffectiveMode(m_Mode));
}
