#include "framework/widgets/CSliderCtrl.h"

#include "framework/qt/CWindowNode.h"
#include "framework/qt/ControlWidgets.h"

#include <algorithm>

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

int CSliderCtrl::GetScrolledPos(const SNotification& notification) const
{
    const int iPos = GetPos();
    const int iLow = GetRangeMin();
    const int iHigh = GetRangeMax();
    switch (notification.eScroll)
    {
    case EScrollCode::LineLeft:
        return std::max(iPos - 1, iLow);
    case EScrollCode::LineRight:
        return std::min(iPos + 1, iHigh);
    case EScrollCode::PageLeft:
        return std::max(iPos - GetPageSize(), iLow);
    case EScrollCode::PageRight:
        return std::min(iPos + GetPageSize(), iHigh);
    case EScrollCode::ThumbPosition:
    case EScrollCode::ThumbTrack:
        return notification.iValue;
    case EScrollCode::Left:
        return iLow;
    case EScrollCode::Right:
        return iHigh;
    }
    return iPos;
}
