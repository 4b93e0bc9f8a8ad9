#pragma once

#include "host/HostTypes.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class CEditor;
class CViewArea;
class QAction;
class QMainWindow;
class QMenu;
class QPoint;

// What the plug-in offers to a person, as the window shows and runs it: its menus and toolbars, its
// items of the context menu, its commands, actions and processes. Made once the plug-in is loaded,
// owned by the window. UI thread.
class CPluginCommands
{
public:
    CPluginCommands(CEditor& editor, CViewArea& views); // borrowed
    ~CPluginCommands();                                 // toolbars are followed no longer
    CPluginCommands(const CPluginCommands&) = delete;
    CPluginCommands& operator=(const CPluginCommands&) = delete;

    // Adds each of the plug-in's menus to the menu of the bar that it names; tools: takes those for
    // which the bar has none of that name.
    void AddMenus(QMainWindow& window, QMenu& tools);
    void AddToolBars(QMainWindow& window);
    // Shows the context menu of a view and comes back when it has gone. more: what follows the
    // plug-in's own items.
    void ShowContextMenu(QMainWindow& window,
                         ViewId view,
                         const QPoint& screen,
                         const std::vector<QAction*>& more);

    // Sends an action of the plug-in's modes in the active view, for a key or a menu. A camera
    // action works in a view of either kind, also where no mode listens.
    void SendAction(int32_t iAction);
    // Runs a process. iProcess: its place in the host's registry. False when it has not done its
    // work.
    bool RunProcess(size_t iProcess);

private:
    void RunWithLevel(uint32_t uCommand);
    void Run(uint32_t uCommand); // global number

    CEditor& m_Editor;
    CViewArea& m_Views;
};
