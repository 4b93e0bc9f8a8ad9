#include "framework/widgets/CSpinButtonCtrl.h"

#include "framework/widgets/IWindowNode.h"

namespace
{

ISpinNode* GetSpin(IWindowNode* pNode)
{
    return pNode != nullptr ? pNode->GetSpin() : nullptr;
}

} // namespace

bool CSpinButtonCtrl::CreateSpin(CWindow& parent, uint32_t uId, const SRect& rect)
{
    return CreateControl(EControlKind::Spin, nullptr, 0, parent, uId, rect);
}

void CSpinButtonCtrl::SetRange(int iLower, int iUpper)
{
    if (ISpinNode* pSpin = GetSpin(GetNode()))
    {
        pSpin->SetRange(iLower, iUpper);
    }
}

void CSpinButtonCtrl::GetRange(int& iLower, int& iUpper) const
{
    const ISpinNode* pSpin = GetSpin(GetNode());
    iLower = pSpin != nullptr ? pSpin->GetLower() : 0;
    iUpper = pSpin != nullptr ? pSpin->GetUpper() : 0;
}

void CSpinButtonCtrl::SetPos(int iPos)
{
    if (ISpinNode* pSpin = GetSpin(GetNode()))
    {
        pSpin->SetPos(iPos);
    }
}

int CSpinButtonCtrl::GetPos() const
{
    const ISpinNode* pSpin = GetSpin(GetNode());
    return pSpin != nullptr ? pSpin->GetPos() : 0;
}

void CSpinButtonCtrl::SetBuddy(uint32_t uBuddyId)
{
    if (ISpinNode* pSpin = GetSpin(GetNode()))
    {
        pSpin->SetBuddy(uBuddyId);
    }
}

uint32_t CSpinButtonCtrl::GetBuddy() const
{
    const ISpinNode* pSpin = GetSpin(GetNode());
    return pSpin != nullptr ? pSpin->GetBuddyId() : 0;
}

void CSpinButtonCtrl::Step(bool bUp)
{
    if (ISpinNode* pSpin = GetSpin(GetNode()))
    {
        pSpin->Step(bUp);
    }
}

void CSpinButtonCtrl::StopRepeat()
{
    if (ISpinNode* pSpin = GetSpin(GetNode()))
    {
        pSpin->StopRepeat();
    }
}
