#include "tests/support/FakeFrontEnd.h"

#include "framework/core/CMenu.h"

CFakeFrontEnd::CFakeFrontEnd()
    : m_Previous(SetFrontEnd(this))
{
}

CFakeFrontEnd::~CFakeFrontEnd()
{
    SetFrontEnd(m_Previous);
}

void CFakeFrontEnd::SetCapture(uintptr_t uWindow)
{
    AddCall(pCalls, "FrontEnd.SetCapture(%zu)", uWindow);
}

void CFakeFrontEnd::ReleaseCapture()
{
    AddCall(pCalls, "FrontEnd.ReleaseCapture()");
}

EMessageBoxAnswer CFakeFrontEnd::MessageBox(const char* pszText, uint32_t uFlags)
{
    AddCall(pCalls, "FrontEnd.MessageBox(%s, %#x)", pszText, uFlags);
    return eAnswer;
}

bool CFakeFrontEnd::ChooseColor(uint32_t& uColor)
{
    AddCall(pCalls, "FrontEnd.ChooseColor(%#x)", uColor);
    const bool bChosen = uChosenColor != 0xFFFFFFFF;
    uColor = bChosen ? uChosenColor : uColor;
    return bChosen;
}

bool CFakeFrontEnd::ChooseFolder(std::string& strFolder)
{
    AddCall(pCalls, "FrontEnd.ChooseFolder(%s)", strFolder.c_str());
    strFolder = strChosenFolder.empty() ? strFolder : strChosenFolder;
    return !strChosenFolder.empty();
}

uint32_t CFakeFrontEnd::TrackPopupMenu(const CMenu& menu, SScreenPoint point)
{
    menuTexts.clear();
    for (size_t i = 0; i < menu.GetItemCount(); ++i)
    {
        menuTexts.push_back(menu.GetItemText(i));
    }
    AddCall(pCalls,
            "FrontEnd.TrackPopupMenu(%zu items, %d, %d)",
            menu.GetItemCount(),
            point.x,
            point.y);
    return uChosenItem;
}
