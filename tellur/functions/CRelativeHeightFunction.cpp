#include "tellur/functions/CRelativeHeightFunction.h"

#include "host/Log.h"
#include "host/ReflectionFields.h"
#include "tellur/functions/HeightLoops.h"
#include "tellur/stroke/ITellurBrush.h"

namespace
{

constexpr SFunctionTraits TRAITS = {
    "RelativeHeightFunction", "CRelativeHeightFunction", "no cursor handle", "no name", 2106};

} // namespace

const CRTTI CRelativeHeightFunction::s_RTTI("CRelativeHeightFunction",
                                            ENGINE_CLASS_FUNCTION,
                                            &CRelativeHeightFunction::Create,
                                            &CPainterFunction::s_RTTI,
                                            CRTTI::FLAG_NONE,
                                            &CRelativeHeightFunction::RegisterFields);

CRTTIObject* CRelativeHeightFunction::Create()
{
    return new CRelativeHeightFunction;
}

void CRelativeHeightFunction::RegisterFields(CRTTI& rtti)
{
    rtti.RegisterField(new CRTTIFieldFloat(RTTI_MEMBER_ADDRESS(CRelativeHeightFunction, m_Height)),
                       "m_Height",
                       "f:EDIT;e:EDIT;d:Delta height [cm];");
}

CRelativeHeightFunction::CRelativeHeightFunction()
    : CPainterFunction(TRAITS)
{
}

ITellurFunction* CRelativeHeightFunction::Clone() const
{
    return new CRelativeHeightFunction(*this);
}

float CRelativeHeightFunction::MergeHeight(float fSrc, float fDst, float fCandidate) const
{
    return KeepStrongest(fSrc, fDst, fCandidate);
}

void CRelativeHeightFunction::DoOperation(const SOperation& operation)
{
    if (operation.pBrush == nullptr)
    {
        CrashLog("[CRelativeHeightFunction::DoOperation] no brush interface\n");
        return;
    }
    const CVerticalBand band(operation.pBrush->GetVerticalDistance(), operation.point.y);
    RaiseHeights(operation.pVerts->GetVerts(), operation.fWeight, m_Height, band);
}

bool CRelativeHeightFunction::GetRule(const SOperation& operation, SVertexRule& rule)
{
    rule.eRule = EVertexRule::Raise;
    rule.eMerge = EMergeRule::Strongest;
    rule.fStroke = operation.fWeight;
    rule.fAmount = m_Height;
    CVerticalBand(operation.pBrush->GetVerticalDistance(), operation.point.y).SetIn(rule);
    return true;
}
