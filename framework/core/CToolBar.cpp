#include "framework/core/CToolBar.h"

#include "framework/core/ResourceModule.h"

#include <algorithm>

bool CToolBar::LoadToolBar(uint32_t uResourceId)
{
    const SToolBarResource* pResource = FindToolBarResource(uResourceId);
    if (pResource == nullptr)
    {
        return false;
    }
    m_Buttons.clear();
    for (const SToolBarButtonResource& button : pResource->buttons)
    {
        m_Buttons.push_back({button.uId, button.uStyle, button.iImage});
    }
    m_BitmapId = pResource->uBitmapId;
    m_ButtonWidth = pResource->iButtonWidth;
    m_ButtonHeight = pResource->iButtonHeight;
    Changed();
    return true;
}

bool CToolBar::GetButtonInfo(size_t iButton, uint32_t& uId, uint32_t& uStyle, int& iImage) const
{
    if (iButton >= m_Buttons.size())
    {
        return false;
    }
    uId = m_Buttons[iButton].uId;
    uStyle = m_Buttons[iButton].uStyle;
    iImage = m_Buttons[iButton].iImage;
    return true;
}

bool CToolBar::SetButtonInfo(size_t iButton, uint32_t uId, uint32_t uStyle, int iImage)
{
    if (iButton >= m_Buttons.size())
    {
        return false;
    }
    m_Buttons[iButton].uId = uId;
    m_Buttons[iButton].uStyle = uStyle;
    m_Buttons[iButton].iImage = iImage;
    Changed();
    return true;
}

void CToolBar::SetWindowText(const char* pszText)
{
    m_WindowText = pszText != nullptr ? pszText : "";
    Changed();
}

bool CToolBar::PressButton(uint32_t uId, bool bPressed)
{
    return SetState(uId, &SButton::bPressed, bPressed);
}

bool CToolBar::CheckButton(uint32_t uId, bool bChecked)
{
    return SetState(uId, &SButton::bChecked, bChecked);
}

bool CToolBar::IsButtonPressed(uint32_t uId) const
{
    const SButton* pButton = FindButton(uId);
    return pButton != nullptr && pButton->bPressed;
}

bool CToolBar::IsButtonChecked(uint32_t uId) const
{
    const SButton* pButton = FindButton(uId);
    return pButton != nullptr && pButton->bChecked;
}

const CToolBar::SButton* CToolBar::FindButton(uint32_t uId) const
{
    const auto found = std::find_if(m_Buttons.begin(),
                                    m_Buttons.end(),
                                    [uId](const SButton& button) { return button.uId == uId; });
    return found != m_Buttons.end() ? &*found : nullptr;
}

bool CToolBar::SetState(uint32_t uId, bool SButton::*pState, bool bValue)
{
    const SButton* pFound = FindButton(uId);
    if (pFound == nullptr)
    {
        return false;
    }
    m_Buttons[static_cast<size_t>(pFound - m_Buttons.data())].*pState = bValue;
    Changed();
    return true;
}

void CToolBar::Changed() const
{
    if (m_OnChange)
    {
        m_OnChange();
    }
}
