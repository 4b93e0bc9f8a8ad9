#pragma once

#include <string>
#include <vector>

class CCommandList;
class CEditor;
class CPluginCommands;
class CViewArea;
class CWindowLayout;
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
                  CWindowLayout& layout,
                  CPluginCommands& plugin,
                  SRenderSettings& render);

    void AddTo(QMenu& menu, CCommandList& commands);
    void AddDocks(QMenu& menu, const QMainWindow& window); // all of the window

private:
    void AddTimes(QMenu& menu, CCommandList& commands);
    void AddViews(QMenu& menu, CCommandList& commands);
    bool IsWireFrame() const; // the active view
    void SwitchWireFrame();
    void GoToPanel();

    CEditor& m_Editor;
    CViewArea& m_Views;
    CWindowLayout& m_Layout;
    CPluginCommands& m_Plugin;
    SRenderSettings& m_Render;
    std::vector<std::string> m_TimeIds; // of the commands for times of day
};
