#include "framework/widgets/CSliderCtrl.h"

#include "framework/widgets/qt/CWindowNode.h"
#include "framework/widgets/qt/ControlWidgets.h"

namespace
{

CSliderWidget* GetSlider(CWindowNode* pNode)
{
    return pNode != nullptr ? pNode->GetAs<CSliderWidget>() : nullptr;
}

} // namespace

void CSliderCtrl::SetRange(int iMin, int iMax)
{
    if (CSliderWidget* pSlider = GetSlider(GetNode()))
    {
        pSlider->SetSliderRange(iMin, iMax);
    }
}

int CSliderCtrl::GetRangeMin() const
{
    const CSliderWidget* pSlider = GetSlider(GetNode());
    return pSlider != nullptr ? pSlider->minimum() : 0;
}

int CSliderCtrl::GetRangeMax() const
{
    const CSliderWidget* pSlider = GetSlider(GetNode());
    return pSlider != nullptr ? pSlider->maximum() : 0;
}

void CSliderCtrl::SetPos(int iPos)
{
    if (CSliderWidget* pSlider = GetSlider(GetNode()))
    {
        pSlider->setValue(iPos);
    }
}

int CSliderCtrl::GetPos() const
{
    const CSliderWidget* pSlider = GetSlider(GetNode());
    return pSlider != nullptr ? pSlider->value() : 0;
}

void CSliderCtrl::SetPageSize(int iPage)
{
    if (CSliderWidget* pSlider = GetSlider(GetNode()))
    {
        pSlider->SetPageSize(iPage);
    }
}

int CSliderCtrl::GetPageSize() const
{
    const CSliderWidget* pSlider = GetSlider(GetNode());
    return pSlider != nullptr ? pSlider->pageStep() : 0;
}
