#include "framework/widgets/CButton.h"

#include "framework/widgets/IWindowNode.h"

// Null without a window, or with one that is no button.
static IButtonNode* GetButton(IWindowNode* pNode)
{
    return pNode != nullptr ? pNode->GetButton() : nullptr;
}

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
    if (IButtonNode* pButton = GetButton(GetNode()))
    {
        pButton->SetOwnerDraw();
    }
}

void CButton::SetCheck(int iState)
{
    if (IButtonNode* pButton = GetButton(GetNode()))
    {
        pButton->SetCheck(iState);
    }
}

int CButton::GetCheck() const
{
    const IButtonNode* pButton = GetButton(GetNode());
    return pButton != nullptr ? pButton->GetCheck() : int{CHECK_OFF};
}

uint32_t CButton::GetStyle() const
{
    return GetNode() != nullptr ? GetNode()->GetStyle() : 0;
}

void CButton::Click()
{
    if (IButtonNode* pButton = GetButton(GetNode()))
    {
        pButton->Click();
    }
}

void CButton::ReleasePress()
{
    if (IButtonNode* pButton = GetButton(GetNode()))
    {
        pButton->ReleasePress();
    }
}
