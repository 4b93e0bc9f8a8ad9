#pragma once

#include <string>
#include <vector>

class CCommandList;
class CEditor;
class CPanelDock;
class CPluginCommands;
class CViewArea;
class QMainWindow;
class QMenu;
struct SRenderSettings;

// The commands about what the window shows: views, how they draw, and the docks. Owned by the
// menus.
class CViewCommands
{
public:
    // Borrowed. render: of all views, changed in place.
    CViewCommands(CEditor& editor,
                  CViewArea& views,
                  CPanelDock& panel,
                  CPluginCommands& plugin,
                  SRenderSettings& render);

    void AddTo(QMenu& menu, CCommandList& commands);
    // All docks of the window but the panel, which the plug-in opens and closes.
    void AddDocks(QMenu& menu, const QMainWindow& window);

private:
    void AddTimes(QMenu& menu, CCommandList& commands);
    void SwitchWireFrame();
    void GoToPanel();

    CEditor& m_Editor;
    CViewArea& m_Views;
    CPanelDock& m_Panel;
    CPluginCommands& m_Plugin;
    SRenderSettings& m_Render;
    std::vector<std::string> m_TimeIds; // of the commands for times of day
};
