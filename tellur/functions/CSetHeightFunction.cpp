#include "tellur/functions/CSetHeightFunction.h"

#include "host/Log.h"
#include "host/ReflectionFields.h"
#include "tellur/context/PluginContext.h"
#include "tellur/functions/HeightLoops.h"
#include "tellur/functions/IFieldsWatcher.h"
#include "tellur/stroke/ITellurBrush.h"

namespace
{

constexpr SFunctionTraits TRAITS = {
    "SetHeightFunction", "CSetHeightFunction", "no cursor handle", "no name", 2106, true};

} // namespace

const CRTTI CSetHeightFunction::s_RTTI("CSetHeightFunction",
                                       ENGINE_CLASS_FUNCTION,
                                       &CSetHeightFunction::Create,
                                       &CPainterFunction::s_RTTI,
                                       CRTTI::FLAG_NONE,
                                       &CSetHeightFunction::RegisterFields);

CRTTIObject* CSetHeightFunction::Create()
{
    return new CSetHeightFunction;
}

void CSetHeightFunction::RegisterFields(CRTTI& rtti)
{
    rtti.RegisterField(new CRTTIFieldEnum(RTTI_MEMBER_ADDRESS(CSetHeightFunction, m_Mode),
                                          GetTerrainFunctionModes()),
                       "m_Mode",
                       "f:EDIT;e:COMBO;d:mode;");
    rtti.RegisterField(new CRTTIFieldFloat(RTTI_MEMBER_ADDRESS(CSetHeightFunction, m_Height)),
                       "m_Height",
                       "f:EDIT;e:EDIT;d:height to set [cm];");
    rtti.RegisterField(new CRTTIFieldBool(RTTI_MEMBER_ADDRESS(CSetHeightFunction, m_PickHeight)),
                       "m_PickHeight",
                       "f:EDIT;e:CHECKBOX;d:pick height at collision point;");
}

CSetHeightFunction::CSetHeightFunction()
    : CPainterFunction(TRAITS)
{
}

ITellurFunction* CSetHeightFunction::Clone() const
{
    return new CSetHeightFunction(*this);
}

float CSetHeightFunction::MergeHeight(float fSrc, float fDst, float fCandidate) const
{
    return KeepStrongest(fSrc, fDst, fCandidate);
}

void CSetHeightFunction::DoOperation(const SOperation& operation)
{
    if (operation.pBrush == nullptr)
    {
        CrashLog("[CSetHeightFunction::DoOperation] no brush interface\n");
        return;
    }
    const CVerticalBand band(operation.pBrush->GetVerticalDistance(), operation.point.y);
    PullHeights(
        operation.pVerts->GetVerts(), operation.fWeight, m_Height, band, GetEffectiveMode(m_Mode));
}

bool CSetHeightFunction::GetRule(const SOperation& operation, SVertexRule& rule)
{
    const int32_t iMode = GetEffectiveMode(m_Mode);
    rule.eRule = EVertexRule::Pull;
    rule.eMerge = EMergeRule::Strongest;
    rule.fStroke = operation.fWeight;
    rule.fAmount = m_Height;
    rule.bRaise = iMode != mode_max;
    rule.bLower = iMode != mode_min;
    CVerticalBand(operation.pBrush->GetVerticalDistance(), operation.point.y).SetIn(rule);
    return true;
}

void CSetHeightFunction::OnStartPoint(const SVec3& point)
{
    if (!m_PickHeight)
    {
        return;
    }
    m_Height = point.y;
    if (auto* pWatcher = GetPluginPart<IFieldsWatcher>())
    {
        pWatcher->OnFieldsChanged();
    }
}
