#include "framework/widgets/CButton.h"

#include "framework/qt/CWindowNode.h"
#include "framework/qt/ControlWidgets.h"

bool CButton::CreateButton(EControlKind eKind,
                           const char* pszText,
                           uint32_t uStyle,
                           CWindow& parent,
                           uint32_t uId,
                           const SRect& rect)
{
    return CreateControl(eKind, pszText, uStyle, parent, uId, rect);
}

void CButton::SetOwnerDraw()
{
    auto* pButton = GetNode() != nullptr ? GetNode()->GetAs<CPaintedButton>() : nullptr;
    if (pButton != nullptr)
    {
        pButton->SetOwnerDraw();
    }
}

void CButton::SetCheck(int iState)
{
    if (GetNode() != nullptr)
    {
        SetButtonCheck(*GetNode(), iState);
    }
}

int CButton::GetCheck() const
{
    return GetNode() != nullptr ? GetButtonCheck(*GetNode()) : int{CHECK_OFF};
}

uint32_t CButton::GetStyle() const
{
    return GetNode() != nullptr ? GetNode()->GetStyle() : 0;
}

void CButton::Click()
{
    auto* pButton = GetNode() != nullptr ? GetNode()->GetAs<QAbstractButton>() : nullptr;
    if (pButton != nullptr)
    {
        pButton->click();
    }
}

void CButton::ReleasePress()
{
    auto* pButton = GetNode() != nullptr ? GetNode()->GetAs<QAbstractButton>() : nullptr;
    if (pButton != nullptr)
    {
        pButton->setDown(false);
    }
}
