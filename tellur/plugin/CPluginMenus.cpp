#include "tellur/plugin/CPluginMenus.h"

#include "framework/core/ResourceModule.h"
#include "host/EditorHost.h"
#include "tellur/context/CommandIds.h"
#include "tellur/context/PluginContext.h"

#include <cstring>
#include <string>

namespace
{

// 0 stays 0; an id that is no command's gives the handle itself.
uint32_t MapResourceId(uint32_t uResourceId)
{
    if (uResourceId == 0)
    {
        return 0;
    }
    for (uint32_t uCommand = 1; uCommand <= COMMAND_LAST; ++uCommand)
    {
        if (COMMAND_RESOURCE_IDS[uCommand - 1] == uResourceId)
        {
            return GetGlobalCommand(uCommand);
        }
    }
    return GetPluginContext()->GetPluginActionHandle();
}

} // namespace

void CPluginMenus::CreateToolBar()
{
    GetPluginContext()->GetEditorHost()->CreatePluginToolBar(&m_ToolBar, TOOLBAR_ID);
    for (size_t i = 0; i < m_ToolBar.GetButtonCount(); ++i)
    {
        uint32_t uId = 0;
        uint32_t uStyle = 0;
        int iImage = 0;
        if (m_ToolBar.GetButtonInfo(i, uId, uStyle, iImage))
        {
            m_ToolBar.SetButtonInfo(i, MapResourceId(uId), uStyle, iImage);
        }
    }
    m_ToolBar.SetWindowText("Terrain");
}

void CPluginMenus::CreateMenu(IPlugin* pPlugin)
{
    m_Menu.LoadMenu(MENU_ID);
    Renumber(m_Menu);
    CMenu* pPopup = m_Menu.GetItemCount() > 0 ? m_Menu.GetSubMenu(0) : nullptr;
    GetPluginContext()->GetEditorHost()->InsertPluginMenu(0, pPlugin, pPopup, "Terrain", "Tools");
}

void CPluginMenus::Renumber(CMenu& menu)
{
    for (size_t i = 0; i < menu.GetItemCount(); ++i)
    {
        if (CMenu* pSubMenu = menu.GetSubMenu(i))
        {
            Renumber(*pSubMenu);
        }
        else if (menu.GetItemId(i) != 0)
        {
            menu.ModifyItem(i, MapResourceId(menu.GetItemId(i)), menu.GetItemText(i).c_str());
        }
    }
}

void CPluginMenus::SetToolBarButton(uint32_t uCommand, bool bPressed)
{
    m_ToolBar.PressButton(GetGlobalCommand(uCommand), bPressed);
    m_ToolBar.CheckButton(GetGlobalCommand(uCommand), bPressed);
}

uint32_t GetGlobalCommand(uint32_t uCommand)
{
    return GetPluginContext()->GetPluginActionHandle() + uCommand;
}

void CopyCommandText(int32_t iPlugin, int32_t iCommand, char* pszBuffer)
{
    const uint32_t uHandle = GetPluginContext()->GetPluginActionHandle();
    // The plug-in's number stands in the handle as MakeActionHandle puts it there.
    if (pszBuffer == nullptr || iPlugin != static_cast<int32_t>((uHandle >> 8U) & 0x3FU))
    {
        return;
    }
    std::string strText;
    if (iCommand >= 1 && iCommand <= static_cast<int32_t>(COMMAND_LAST) &&
        iCommand != COMMAND_APPLY_PICKED_HEIGHT)
    {
        LoadStringResource(COMMAND_RESOURCE_IDS[iCommand - 1], strText);
    }
    std::memcpy(pszBuffer, strText.c_str(), strText.size() + 1);
}
