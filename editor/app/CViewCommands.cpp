#include "editor/app/CViewCommands.h"

#include "editor/app/CCommandList.h"
#include "editor/app/CEditor.h"
#include "editor/app/CPanelDock.h"
#include "editor/app/CPluginCommands.h"
#include "editor/app/CSunHand.h"
#include "editor/app/CViewArea.h"
#include "editor/app/CWindowLayout.h"
#include "editor/app/KeyChords.h"
#include "editor/core/Words.h"
#include "editor/view/SRenderSettings.h"
#include "host/ActionIds.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenu>

CViewCommands::CViewCommands(CEditor& editor,
                             CViewArea& views,
                             CWindowLayout& layout,
                             CPluginCommands& plugin,
                             SRenderSettings& render)
    : m_Editor(editor)
    , m_Views(views)
    , m_Layout(layout)
    , m_Plugin(plugin)
    , m_Render(render)
{
}

void CViewCommands::AddTo(QMenu& menu, CCommandList& commands)
{
    AddViews(menu, commands);
    const auto switchGrid = [this]
    {
        m_Render.bGrid = !m_Render.bGrid;
        m_Views.RequestFrames();
    };
    commands.Add(
        menu,
        {
            SCommand::Line(),
            {.pszId = "view.wire",
             .pszText = "&Wire frame",
             .key = Key('Z'),
             .run = [this] { SwitchWireFrame(); },
             .isChecked = [this] { return IsWireFrame(); },
             .bOnce = true},
            {.pszId = "view.grid",
             .pszText = "&Grid",
             .key = Key('G'),
             .run = switchGrid,
             .isChecked = [this] { return m_Render.bGrid; },
             .bOnce = true},
            SCommand::Hold(SUN_COMMAND, "Turn the sun, with the mouse", Key('L')),
            SCommand::Line(),
            SCommand::Run("view.reset", "&Reset layout", NO_KEY, [this] { m_Layout.Reset(); }),
            SCommand::Run(
                "view.panel", "&Terrain panel and back", Key(Qt::Key_F6), [this] { GoToPanel(); }),
            SCommand::Line(),
        });
    AddTimes(*menu.addMenu(Words("Time of &day")), commands);
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

void CViewCommands::AddViews(QMenu& menu, CCommandList& commands)
{
    const auto arrange = [this](const char* pszId, const char* pszText, size_t nViews)
    {
        return SCommand{.pszId = pszId,
                        .pszText = pszText,
                        .run = [this, nViews] { m_Layout.GetArrangement().SetCount(nViews); },
                        .isChecked = [this, nViews]
                        { return m_Layout.GetArrangement().HasCount(nViews); },
                        .bOnce = true};
    };
    const auto add = [this](const char* pszId, const char* pszText, EViewKind eKind)
    {
        return SCommand::Run(pszId, pszText, NO_KEY, [this, eKind] { m_Views.Add(eKind); });
    };
    const auto isOneOfSeveral = [this]
    {
        return m_Views.GetViews().size() > 1;
    };
    commands.Add(
        menu,
        {
            arrange("view.one", Words("&One view"), 1),
            arrange("view.two", Words("Two views &beside each other"), 2),
            arrange("view.four", Words("&Four views"), 4),
            {.pszId = "view.alone",
             .pszText = "&Maximise the view and back",
             .key = Key(Qt::Key_F11),
             .run = [this] { m_Views.ToggleAlone(m_Views.GetActiveId()); },
             .isEnabled = isOneOfSeveral,
             .isChecked = [this] { return m_Views.IsOneAlone(); },
             .bOnce = true},
            SCommand::Line(),
            add("view.add_perspective", Words("New &perspective view"), EViewKind::Perspective),
            add("view.add_top", Words("New &top view"), EViewKind::Top),
            add("view.add_front", Words("New fro&nt view"), EViewKind::Front),
            add("view.add_side", Words("New &side view"), EViewKind::Side),
            SCommand::Run(
                "view.next",
                "Go to the ne&xt view",
                NO_KEY,
                [this] { m_Views.GoToNext(); },
                isOneOfSeveral),
            SCommand::Run(
                "view.close",
                "&Close view",
                NO_KEY,
                [this] { m_Views.CloseActive(); },
                isOneOfSeveral),
        });
}

void CViewCommands::AddDocks(QMenu& menu, const QMainWindow& window)
{
    for (const QDockWidget* pDock : window.findChildren<QDockWidget*>())
    {
        menu.addAction(pDock->toggleViewAction());
    }
}

bool CViewCommands::IsWireFrame() const
{
    const CViewWidget* pView = m_Views.GetActive();
    return pView != nullptr && pView->IsWireFrame(); // there is none yet when the menu is made
}

void CViewCommands::SwitchWireFrame()
{
    m_Plugin.SendAction(IsWireFrame() ? CAMERA_TOGGLE_OFF : CAMERA_TOGGLE_ON);
}

// The keyboard goes to the panel, which opens when it is closed, and from there back to the view.
void CViewCommands::GoToPanel()
{
    CPanelDock& panel = m_Layout.GetPanel();
    if (panel.isAncestorOf(QApplication::focusWidget()))
    {
        m_Views.activateWindow();
        m_Views.GetActive()->setFocus();
        return;
    }
    if (panel.isHidden() && m_Editor.GetPlugin() != nullptr)
    {
        m_Editor.GetPlugin()->Activate(true);
    }
    panel.TakeFocus();
}
