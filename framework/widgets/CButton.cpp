#include "framework/widgets/CButton.h"

#include "framework/widgets/IWindowNode.h"

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
    if (GetNode() != nullptr)
    {
        GetNode()->SetOwnerDraw();
    }
}

void CButton::SetCheck(int iState)
{
    if (GetNode() != nullptr)
    {
        GetNode()->SetCheck(iState);
    }
}

int CButton::GetCheck() const
{
    return GetNode() != nullptr ? GetNode()->GetCheck() : int{CHECK_OFF};
}

uint32_t CButton::GetStyle() const
{
    return GetNode() != nullptr ? GetNode()->GetStyle() : 0;
}

void CButton::Click()
{
    if (GetNode() != nullptr)
    {
        GetNode()->Click();
    }
}

void CButton::ReleasePress()
{
    if (GetNode() != nullptr)
    {
        GetNode()->ReleasePress();
    }
}
