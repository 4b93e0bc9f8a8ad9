#include "editor/app/CViewCommands.h"

#include "editor/app/CCommandList.h"
#include "editor/app/CEditor.h"
#include "editor/app/CPanelDock.h"
#include "editor/app/CPluginCommands.h"
#include "editor/app/CSunHand.h"
#include "editor/app/CViewArea.h"
#include "editor/app/KeyChords.h"
#include "editor/view/SRenderSettings.h"
#include "host/ActionIds.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenu>

CViewCommands::CViewCommands(CEditor& editor,
                             CViewArea& views,
                             CPanelDock& panel,
                             CPluginCommands& plugin,
                             SRenderSettings& render)
    : m_Editor(editor)
    , m_Views(views)
    , m_Panel(panel)
    , m_Plugin(plugin)
    , m_Render(render)
{
}

void CViewCommands::AddTo(QMenu& menu, CCommandList& commands)
{
    const auto add = [this](EViewKind eKind)
    {
        return [this, eKind]
        {
            m_Views.Add(eKind);
        };
    };
    const auto switchGrid = [this]
    {
        m_Render.bGrid = !m_Render.bGrid;
        m_Views.RequestFrames();
    };
    const auto hasGrid = [this]
    {
        return m_Render.bGrid;
    };
    commands.Add(
        menu,
        {
            SCommand::Run("view.add_perspective",
                          "New &perspective view",
                          NO_KEY,
                          add(EViewKind::Perspective)),
            SCommand::Run("view.add_top", "New &top view", NO_KEY, add(EViewKind::Top)),
            SCommand::Run("view.close", "&Close view", NO_KEY, [this] { m_Views.CloseActive(); }),
            SCommand::Line(),
            SCommand::Once("view.wire", "&Wire frame", Key('Z'), [this] { SwitchWireFrame(); }),
            {.pszId = "view.grid",
             .pszText = "&Grid",
             .key = Key('G'),
             .run = switchGrid,
             .isChecked = hasGrid,
             .bOnce = true},
            SCommand::Hold(SUN_COMMAND, "Turn the sun, with the mouse", Key('L')),
            SCommand::Line(),
            SCommand::Run(
                "view.panel", "&Terrain panel and back", Key(Qt::Key_F6), [this] { GoToPanel(); }),
        });
    AddTimes(*menu.addMenu("Time of &day"), commands);
}

void CViewCommands::AddTimes(QMenu& menu, CCommandList& commands)
{
    m_TimeIds.reserve(std::size(DAY_TIMES)); // commands borrow them
    for (const SDayTime& time : DAY_TIMES)
    {
        const std::string& strId = m_TimeIds.emplace_back(
            "light." + QString(time.pszName).toLower().replace(' ', '_').toStdString());
        commands.Add(menu,
                     {{.pszId = strId.c_str(),
                       .pszText = time.pszName,
                       .run =
                           [this, &time]
                       {
                           m_Render.SetTime(time);
                           m_Views.RequestFrames();
                       },
                       .isChecked =
                           [this, &time]
                       {
                           return m_Render.FindTime() == &time - DAY_TIMES;
                       }}});
    }
}

void CViewCommands::AddDocks(QMenu& menu, const QMainWindow& window)
{
    for (const QDockWidget* pDock : window.findChildren<QDockWidget*>())
    {
        if (pDock != &m_Panel)
        {
            menu.addAction(pDock->toggleViewAction());
        }
    }
}

void CViewCommands::SwitchWireFrame()
{
    const bool bWire = m_Views.GetActive()->IsWireFrame();
    m_Plugin.SendAction(bWire ? CAMERA_TOGGLE_OFF : CAMERA_TOGGLE_ON);
}

// The keyboard goes to the panel, which opens when it is closed, and from there back to the view.
void CViewCommands::GoToPanel()
{
    if (m_Panel.isAncestorOf(QApplication::focusWidget()))
    {
        m_Views.activateWindow();
        m_Views.GetActive()->setFocus();
        return;
    }
    if (m_Panel.isHidden() && m_Editor.GetPlugin() != nullptr)
    {
        m_Editor.GetPlugin()->Activate(true);
    }
    m_Panel.TakeFocus();
}
