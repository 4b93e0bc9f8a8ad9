#pragma once

#include "framework/core/CMenu.h"
#include "host/IPlugin.h"
#include "tellur/plugin/CToolBarReg.h"

#include <cstdint>

// The plug-in's toolbar and its "Terrain" menu, made from the library's resources. Resources number
// commands locally, the host sees them with the plug-in's action handle; the tables are renumbered
// when they are loaded. The host borrows both until the plug-in object goes.
class CPluginMenus
{
public:
    // Make toolbar and menu and have the host show them. To be called in this order, each once.
    void CreateToolBar();
    void CreateMenu(IPlugin* pPlugin);

    void DestroyMenu() { m_Menu.DestroyMenu(); }

    void SetToolBarButton(uint32_t uCommand, bool bPressed);

private:
    void Renumber(CMenu& menu);

    CToolBarReg m_ToolBar;
    CMenu m_Menu;
};

// The number that the host has for a local command.
uint32_t GetGlobalCommand(uint32_t uCommand);

// The text of a local command from the string table, empty where it has none; nothing is written
// for another plug-in or without a buffer, which has to be long enough.
void CopyCommandText(int32_t iPlugin, int32_t iCommand, char* pszBuffer);
