#pragma once

class CCommandList;
class CPluginCommands;
class CViewArea;
class QMenu;

// The commands that move the camera of the active view, and the keys that fly it as long as they
// are held. Owned by the menus.
class CCameraCommands
{
public:
    CCameraCommands(CViewArea& views, CPluginCommands& plugin); // borrowed

    void AddTo(QMenu& menu, CCommandList& commands);

private:
    CViewArea& m_Views;
    CPluginCommands& m_Plugin;
};
