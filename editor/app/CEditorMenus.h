#pragma once

#include "editor/app/CBrushFormCommands.h"
#include "editor/app/CCameraCommands.h"
#include "editor/app/CCentreKeeper.h"
#include "editor/app/CEditCommands.h"
#include "editor/app/CEditToolBar.h"
#include "editor/app/CFileCommands.h"
#include "editor/app/CHelpCommands.h"
#include "editor/app/CLevelCommands.h"
#include "editor/app/CLibraryCommands.h"
#include "editor/app/CMeasureCommands.h"
#include "editor/app/CMenuSpot.h"
#include "editor/app/CProtectionCommands.h"
#include "editor/app/CStrokeCommands.h"
#include "editor/app/CSymmetryCommands.h"
#include "editor/app/CToolCommands.h"
#include "editor/app/CViewCommands.h"
#include "host/HostTypes.h"

#include <functional>

class QMainWindow;
class QPoint;

// What the commands of the menus work with; everything is borrowed and outlives them.
struct SMenuParts
{
    QMainWindow& window;
    CEditor& editor;
    CCommandList& commands;
    CViewArea& views;
    CLevelViews& levelViews;
    CWindowLayout& layout;
    CBrushLibraryDock& library;
    CMeasureDock& measure;
    CDocumentActions& documents;
    CScriptRunner& scripts;
    CPluginCommands& plugin;
    SEditorSettings& settings;
    SHandState& hand;
    std::function<void()> showState; // title, menus, history or status may be others
    std::function<void()> onLevel;   // another level is open, or it has another look
};

// The menu bar, toolbars, context menu and keys: which groups of commands there are, and where they
// stand. A command is a row in the table of its group. Made once the plug-in is loaded and the
// docks are there, owned by the window. UI thread.
class CEditorMenus
{
public:
    explicit CEditorMenus(const SMenuParts& parts);

    void Follow(); // shows the state of the commands as it is

    // Shows the context menu of a view at that place of the screen. Comes back when the menu has
    // gone.
    void ShowContextMenu(ViewId view, const QPoint& screen);

private:
    QMainWindow& m_Window;
    CCommandList& m_Commands;
    CMenuSpot m_Spot;
    CPluginCommands& m_Plugin;
    CFileCommands m_File;
    CEditCommands m_Edit;
    CViewCommands m_View;
    CLevelCommands m_Level;
    CProtectionCommands m_Protection;
    CMeasureCommands m_Measure;
    CCameraCommands m_Camera;
    CToolCommands m_Brush;
    CBrushFormCommands m_Form;
    CLibraryCommands m_Library;
    CStrokeCommands m_Strokes;
    CSymmetryCommands m_Symmetry;
    CCentreKeeper m_Centre;
    CHelpCommands m_Help;
    CEditToolBar* m_pToolBar; // the window's
};
