#include "framework/widgets/CSpinButtonCtrl.h"

#include "framework/qt/CWindowNode.h"
#include "framework/qt/ControlWidgets.h"

namespace
{

CSpinWidget* GetSpin(CWindowNode* pNode)
{
    return pNode != nullptr ? pNode->GetAs<CSpinWidget>() : nullptr;
}

} // namespace

bool CSpinButtonCtrl::CreateSpin(CWindow& parent, uint32_t uId, const SRect& rect)
{
    return CreateControl(EControlKind::Spin, nullptr, 0, parent, uId, rect);
}

void CSpinButtonCtrl::SetRange(int iLower, int iUpper)
{
    if (CSpinWidget* pSpin = GetSpin(GetNode()))
    {
        pSpin->SetRange(iLower, iUpper);
    }
}

void CSpinButtonCtrl::GetRange(int& iLower, int& iUpper) const
{
    const CSpinWidget* pSpin = GetSpin(GetNode());
    iLower = pSpin != nullptr ? pSpin->GetLower() : 0;
    iUpper = pSpin != nullptr ? pSpin->GetUpper() : 0;
}

void CSpinButtonCtrl::SetPos(int iPos)
{
    if (CSpinWidget* pSpin = GetSpin(GetNode()))
    {
        pSpin->SetPos(iPos);
    }
}

int CSpinButtonCtrl::GetPos() const
{
    const CSpinWidget* pSpin = GetSpin(GetNode());
    return pSpin != nullptr ? pSpin->GetPos() : 0;
}

void CSpinButtonCtrl::SetBuddy(uint32_t uBuddyId)
{
    CSpinWidget* pSpin = GetSpin(GetNode());
    if (pSpin == nullptr)
    {
        return;
    }
    QWidget* pBuddy = nullptr;
    for (QWidget* pWidget : pSpin->window()->findChildren<QWidget*>())
    {
        const CWindowNode* pNode = CWindowNode::Find(pWidget);
        if (pNode != nullptr && pNode->GetId() == uBuddyId && pNode->GetParent() == GetParent())
        {
            pBuddy = pWidget;
        }
    }
    pSpin->SetBuddy(uBuddyId, pBuddy);
}

uint32_t CSpinButtonCtrl::GetBuddy() const
{
    const CSpinWidget* pSpin = GetSpin(GetNode());
    return pSpin != nullptr ? pSpin->GetBuddyId() : 0;
}

void CSpinButtonCtrl::Step(bool bUp)
{
    if (CSpinWidget* pSpin = GetSpin(GetNode()))
    {
        pSpin->Step(bUp);
    }
}

void CSpinButtonCtrl::StopRepeat()
{
    if (CSpinWidget* pSpin = GetSpin(GetNode()))
    {
        pSpin->StopRepeat();
    }
}
