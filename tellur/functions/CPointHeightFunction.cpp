#include "tellur/functions/CPointHeightFunction.h"

#include "tellur/functions/HeightLoops.h"
#include "tellur/stroke/ITellurBrush.h"

namespace
{

constexpr SFunctionTraits TRAITS = {
    "PointHeightFunction", "CPointHeightFunction", "no cursor", "no class name", 2107};

} // namespace

const CRTTI CPointHeightFunction::s_RTTI("CPointHeightFunction",
                                         ENGINE_CLASS_FUNCTION,
                                         &CPointHeightFunction::Create,
                                         &CPointFunction::s_RTTI,
                                         CRTTI::FLAG_NONE);

CRTTIObject* CPointHeightFunction::Create()
{
    return new CPointHeightFunction;
}

CPointHeightFunction::CPointHeightFunction()
    : CPointFunction(TRAITS)
{
}

ITellurFunction* CPointHeightFunction::Clone() const
{
    return new CPointHeightFunction(*this);
}

void CPointHeightFunction::Process(const SPointOperation& operation)
{
    if (operation.pBrush == nullptr)
    {
        return;
    }
    const CVerticalBand band(operation.pBrush->GetVerticalDistance(), operation.center.y);
    // Up the screen is a negative step and raises.
    RaiseHeights(
        operation.pVerts->GetVerts(), 1.0F, -static_cast<float>(operation.iVerticalStep), band);
}

bool CPointHeightFunction::GetRule(const SPointOperation& operation, SVertexRule& rule)
{
    rule.eRule = EVertexRule::Raise;
    rule.eMerge = EMergeRule::Candidate;
    rule.bFromDest = true;
    rule.fAmount = -static_cast<float>(operation.iVerticalStep);
    CVerticalBand(operation.pBrush->GetVerticalDistance(), operation.center.y).SetIn(rule);
    return true;
}
