#include "framework/widgets/CSliderCtrl.h"

#include "framework/widgets/IWindowNode.h"

#include <algorithm>

namespace
{

ISliderNode* GetSlider(IWindowNode* pNode)
{
    return pNode != nullptr ? pNode->GetSlider() : nullptr;
}

} // namespace

void CSliderCtrl::SetRange(int iMin, int iMax)
{
    if (ISliderNode* pSlider = GetSlider(GetNode()))
    {
        pSlider->SetSliderRange(iMin, iMax);
    }
}

int CSliderCtrl::GetRangeMin() const
{
    const ISliderNode* pSlider = GetSlider(GetNode());
    return pSlider != nullptr ? pSlider->GetLow() : 0;
}

int CSliderCtrl::GetRangeMax() const
{
    const ISliderNode* pSlider = GetSlider(GetNode());
    return pSlider != nullptr ? pSlider->GetHigh() : 0;
}

void CSliderCtrl::SetPos(int iPos)
{
    if (ISliderNode* pSlider = GetSlider(GetNode()))
    {
        pSlider->SetPos(iPos);
    }
}

int CSliderCtrl::GetPos() const
{
    const ISliderNode* pSlider = GetSlider(GetNode());
    return pSlider != nullptr ? pSlider->GetPos() : 0;
}

void CSliderCtrl::SetPageSize(int iPage)
{
    if (ISliderNode* pSlider = GetSlider(GetNode()))
    {
        pSlider->SetPageSize(iPage);
    }
}

int CSliderCtrl::GetPageSize() const
{
    const ISliderNode* pSlider = GetSlider(GetNode());
    return pSlider != nullptr ? pSlider->GetPageSize() : 0;
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
