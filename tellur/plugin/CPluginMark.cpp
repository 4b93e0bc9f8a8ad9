#include "tellur/plugin/CPluginMark.h"

#include "host/Reflection.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/modes/CTerraformingState.h"
#include "tellur/painting/CModeEditTerrainType.h"
#include "tellur/plugin/BrushText.h"
#include "tellur/plugin/CBrushAtHand.h"
#include "tellur/plugin/CPainting.h"
#include "tellur/plugin/CPluginTools.h"
#include "tellur/resources/FunctionFaces.h"
#include "tellur/stroke/ETerrainFunctionMode.h"

namespace
{

EToolKind FindKind(const CTellurBrush& brush)
{
    for (const SFunctionFace& face : GetFunctionFaces())
    {
        if (HasFunction(brush, face.pszFunction))
        {
            return face.eKind;
        }
    }
    return EToolKind::Other;
}

// The number of a field of the brush's function; fNone for a function without such a field.
float GetNumber(const CTellurBrush& brush, const char* pszField, float fNone)
{
    const CRTTIObject& object = *brush.GetRTTIObject();
    float fValue = fNone;
    return object.GetFieldFloatEditor(object.FindField(pszField), fValue) ? fValue : fNone;
}

// The mode of a stroke that would begin now.
int32_t GetMode(const CTellurBrush& brush)
{
    const CRTTIObject& object = *brush.GetRTTIObject();
    const CRTTIField* pField = object.FindField("m_Mode");
    if (pField == nullptr || pField->GetType() != RTTI_ENUM)
    {
        return mode_default;
    }
    const int32_t iMode = *static_cast<const int32_t*>(pField->GetAddress(&object));
    return brush.HeedsModeKeys() ? GetEffectiveMode(iMode) : iMode;
}

} // namespace

CPluginMark::CPluginMark(const CTerraformingState& terraforming,
                         const CBrushAtHand& brush,
                         const CPainting& painting,
                         CPluginTools& tools)
    : m_Terraforming(terraforming)
    , m_Brush(brush)
    , m_Painting(painting)
    , m_Tools(tools)
{
}

bool CPluginMark::GetMark(bool bSmooth, SToolMark& mark)
{
    const CTellurBrush* pHand = m_Brush.Get();
    const CTellurBrush* pBrush = bSmooth ? m_Brush.FindSmoothing() : pHand;
    const bool bPaint = m_Tools.IsPainting();
    if (!bPaint && (!m_Tools.IsTerraforming() || pHand == nullptr || pBrush == nullptr ||
                    pBrush->GetRTTIObject() == nullptr))
    {
        return false;
    }
    mark = {};
    mark.fExtent = m_Tools.GetBrushExtent(); // what smooths has the extent of the tool at hand
    if (bPaint)
    {
        mark.eKind = EToolKind::Paint;
        mark.fPower = m_Painting.GetMode()->GetPower();
        mark.fHardness = m_Painting.GetMode()->GetHardness();
        return true;
    }
    mark.eKind = FindKind(*pBrush);
    mark.fPower = pBrush->GetPowerModifier();
    mark.fBand = pBrush->GetVerticalDistance();
    FillSign(*pBrush, mark);
    if (mark.eKind == EToolKind::Ramp)
    {
        FillRamp(*pBrush, mark);
        return true;
    }
    mark.fHardness = pBrush->GetHardness();
    mark.pShape = pBrush->GetBitmapImage();
    return true;
}

void CPluginMark::FillSign(const CTellurBrush& brush, SToolMark& mark) const
{
    const int32_t iMode = GetMode(brush);
    mark.eSign = iMode == mode_min   ? EToolSign::RaiseOnly
                 : iMode == mode_max ? EToolSign::LowerOnly
                                     : EToolSign::Neutral;
    mark.fHeight = GetNumber(brush, "m_Height", 0.0F);
    if (mark.eKind == EToolKind::Add)
    {
        // A negative power turns the effect round.
        const float fStep = mark.fHeight * mark.fPower;
        mark.eSign = fStep > 0.0F   ? EToolSign::Raise
                     : fStep < 0.0F ? EToolSign::Lower
                                    : EToolSign::Neutral;
    }
    else if (mark.eKind == EToolKind::Level)
    {
        bool bPick = false;
        const CRTTIObject& object = *brush.GetRTTIObject();
        object.GetFieldBoolEditor(object.FindField("m_PickHeight"), bPick);
        // The press has picked the height by the time that a drag runs.
        mark.eTarget =
            bPick && !m_Terraforming.IsDragging() ? EToolTarget::Picked : EToolTarget::Height;
    }
}

void CPluginMark::FillRamp(const CTellurBrush& brush, SToolMark& mark) const
{
    mark.fSideShare = GetNumber(brush, "m_SideInterpolation", 1.0F);
    mark.fEndShare = (1.0F - GetNumber(brush, "m_FrontBackInterpolation", 1.0F)) * 0.5F;
    mark.bLaid = m_Terraforming.IsDragging() && brush.GetEnds(mark.first, mark.second);
}
