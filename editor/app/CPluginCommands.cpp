#include "editor/app/CPluginCommands.h"

#include "editor/app/CEditor.h"
#include "editor/app/CViewArea.h"
#include "editor/app/CameraActions.h"
#include "editor/app/PluginMenus.h"
#include "editor/core/Words.h"
#include "framework/core/CMenu.h"
#include "framework/core/CToolBar.h"
#include "host/ActionIds.h"
#include "host/Notice.h"

#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include <cmath>

CPluginCommands::CPluginCommands(CEditor& editor, CViewArea& views)
    : m_Editor(editor)
    , m_Views(views)
{
}

CPluginCommands::~CPluginCommands()
{
    for (CToolBar* pToolBar : m_Editor.GetHost().GetRegistry().GetToolBars())
    {
        pToolBar->SetChangeListener({});
    }
}

void CPluginCommands::AddMenus(QMainWindow& window, QMenu& tools)
{
    for (const SInsertedMenu& inserted : m_Editor.GetHost().GetRegistry().GetMenus())
    {
        QMenu* pParent = &tools;
        for (QAction* pAction : window.menuBar()->actions())
        {
            const bool bNamed =
                pAction->menu()->objectName() == QString::fromStdString(inserted.strParent);
            pParent = bNamed ? pAction->menu() : pParent;
        }
        FillMenu(*pParent->addMenu(QString::fromStdString(inserted.strTitle)),
                 *inserted.pPopup,
                 [this](uint32_t uCommand) { RunWithLevel(uCommand); });
    }
}

void CPluginCommands::AddToolBars(QMainWindow& window)
{
    for (CToolBar* pToolBar : m_Editor.GetHost().GetRegistry().GetToolBars())
    {
        MakeToolBar(
            window,
            *pToolBar,
            [this](uint32_t uCommand) { Run(uCommand); },
            [&input = m_Editor.GetHost().GetInput()](uint32_t uCommand)
            { return input.GetCommandText(uCommand); });
    }
}

void CPluginCommands::ShowContextMenu(QMainWindow& window,
                                      ViewId view,
                                      const QPoint& screen,
                                      const std::vector<QAction*>& more)
{
    CViewWidget* pView = m_Views.Find(view);
    if (pView == nullptr)
    {
        return;
    }
    const ViewPoint point =
        CModeManager::PackPoint(static_cast<int32_t>(std::floor(pView->GetInput().GetX())),
                                static_cast<int32_t>(std::floor(pView->GetInput().GetY())));
    // What the plug-ins append is data, from which the shown menu is made.
    CMenu menu;
    for (IPlugin* pPlugin : m_Editor.GetHost().GetRegistry().GetInput())
    {
        if (pPlugin->HasContextMenuItems(view, point, 0))
        {
            pPlugin->AddContextMenuItems(&menu, view, point, 0);
        }
    }
    QMenu shown(&window);
    shown.setObjectName("context-menu");
    FillMenu(shown, menu, [this](uint32_t uCommand) { Run(uCommand); });
    if (!shown.isEmpty())
    {
        shown.addSeparator();
    }
    for (QAction* pAction : more)
    {
        shown.addAction(pAction);
    }
    shown.exec(screen);
}

// What stands in menus works on the level; without one it would only fill the log.
void CPluginCommands::RunWithLevel(uint32_t uCommand)
{
    if (!m_Editor.GetDocument().HasLevel())
    {
        Notice(Words("There is no level"));
        return;
    }
    Run(uCommand);
}

void CPluginCommands::Run(uint32_t uCommand)
{
    CEditorHost& host = m_Editor.GetHost();
    host.GetInput().EndDrag();
    host.GetInput().SendCommand(uCommand);
    host.GetModes().SetModeCursor();
    m_Views.RepeatHover();
    m_Views.RequestFrames();
}

void CPluginCommands::SendAction(int32_t iAction)
{
    const bool bSize = iAction == ACTION_BRUSH_LARGER || iAction == ACTION_BRUSH_SMALLER;
    if (bSize && m_Views.NeedsBrush())
    {
        return; // the images get the brush that the hand has
    }
    CEditorHost& host = m_Editor.GetHost();
    const ViewId view = m_Views.GetActiveId();
    // Asked before the action, which may leave the mode.
    const bool bInMode =
        host.GetModes().GetCurrentModeId() != NO_MODE && m_Editor.GetPlugin() != nullptr;
    host.GetInput().SendAction(view, iAction, 1);
    host.GetModes().SetModeCursor();
    if (!bInMode || m_Views.GetActive()->GetKind() != EViewKind::Perspective)
    {
        // Views without a camera, and views while no mode listens, have no one else to do it.
        RunCameraAction(host, view, iAction);
    }
    m_Views.RepeatHover();
    m_Views.RequestFrames();
}

bool CPluginCommands::RunProcess(size_t iProcess)
{
    m_Editor.GetHost().GetInput().EndDrag();
    IEditorAction* pProcess = m_Editor.GetHost().GetRegistry().GetProcess(iProcess);
    return pProcess->CanExecute(0, 0, 0) && pProcess->Execute();
}
