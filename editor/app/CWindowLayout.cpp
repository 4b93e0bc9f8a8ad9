#include "editor/app/CWindowLayout.h"

#include "editor/app/CBrushLibraryDock.h"
#include "editor/app/CHistoryDock.h"
#include "editor/app/CLightDock.h"
#include "editor/app/CMeasureDock.h"
#include "editor/app/CMessagesDock.h"
#include "editor/app/CPanelDock.h"
#include "editor/app/CPluginCommands.h"
#include "editor/app/CProcessesDock.h"
#include "editor/app/CViewArea.h"
#include "editor/core/CEditorHost.h"

#include <QMainWindow>
#include <QScreen>

namespace
{

constexpr int FIRST_WIDTH = 1280;
constexpr int FIRST_HEIGHT = 800;
constexpr int MESSAGE_LINES = 6;
constexpr char GEOMETRY[] = "window/geometry";
constexpr char STATE[] = "window/state";

} // namespace

CWindowLayout::CWindowLayout(const SLayoutParts& parts)
    : m_Window(parts.window)
    , m_Views(parts.views)
    , m_pPanel(std::make_unique<CPanelDock>(
          &parts.window,
          SPanelEvents{[&host = parts.host] { host.SwitchPanel(); },
                       [&host = parts.host] { host.NotifyPanelClosed(); },
                       [&views = parts.views]
                       {
                           views.activateWindow(); // the panel may float
                           views.GetActive()->setFocus();
                       }}))
    , m_pHistory(new CHistoryDock(&parts.window,
                                  parts.host.GetUndoStack(),
                                  [&host = parts.host, showState = parts.showState](size_t nSteps)
                                  {
                                      host.GetInput().EndDrag();
                                      host.GoToStep(nSteps);
                                      showState();
                                  }))
    , m_pProcesses(new CProcessesDock(&parts.window,
                                      parts.host.GetRegistry(),
                                      [&plugin = parts.plugin](size_t iProcess)
                                      { return plugin.RunProcess(iProcess); }))
    , m_pLibrary(new CBrushLibraryDock(
          &parts.window,
          parts.host,
          parts.pPlugin,
          [&host = parts.host, &views = parts.views, showState = parts.showState]
          {
              host.GetModes().SetModeCursor();
              views.RepeatHover();
              views.RequestFrames();
              showState();
          }))
    , m_pMeasure(new CMeasureDock(&parts.window, parts.host, parts.views.GetRuler()))
    , m_pLight(new CLightDock(
          &parts.window, parts.render, [&views = parts.views] { views.RequestFrames(); }))
{
    m_Window.setCentralWidget(&m_Views);
    m_Window.setDockOptions(QMainWindow::AnimatedDocks | QMainWindow::AllowNestedDocks |
                            QMainWindow::AllowTabbedDocks);
    m_Window.addDockWidget(Qt::LeftDockWidgetArea, m_pPanel.get()); // as high as the window
    m_Window.addDockWidget(Qt::RightDockWidgetArea, m_pHistory);
    m_Window.addDockWidget(Qt::RightDockWidgetArea, m_pProcesses);
    m_Window.addDockWidget(Qt::RightDockWidgetArea, m_pLight);
    m_Window.addDockWidget(Qt::RightDockWidgetArea, m_pLibrary);
    m_Window.addDockWidget(Qt::RightDockWidgetArea, m_pMeasure);
    m_Window.addDockWidget(Qt::BottomDockWidgetArea, &parts.messages);
    m_Window.tabifyDockWidget(m_pHistory, m_pProcesses);
    m_Window.tabifyDockWidget(m_pProcesses, m_pLight);
    m_Window.tabifyDockWidget(m_pLight, m_pLibrary);
    m_Window.tabifyDockWidget(m_pLibrary, m_pMeasure);
    m_pLibrary->hide(); // until somebody asks for it
    m_pMeasure->hide();
    m_pHistory->raise();
    m_Window.resizeDocks(
        {&parts.messages}, {m_Window.fontMetrics().height() * MESSAGE_LINES}, Qt::Vertical);
}

CWindowLayout::~CWindowLayout() = default;

QStringList CWindowLayout::Restore(const QVariantMap& values)
{
    // What the file does not say stays as it is in a first window.
    m_Views.setSizes({FIRST_WIDTH / 2, FIRST_WIDTH / 4});
    // Where all is drawn larger, a screen may be smaller than that.
    m_Window.resize(
        QSize(FIRST_WIDTH, FIRST_HEIGHT).boundedTo(m_Window.screen()->availableGeometry().size()));
    QStringList wrong;
    if (values.contains(GEOMETRY) && !m_Window.restoreGeometry(values[GEOMETRY].toByteArray()))
    {
        wrong << GEOMETRY;
    }
    if (values.contains(STATE) && !m_Window.restoreState(values[STATE].toByteArray()))
    {
        wrong << STATE;
    }
    return wrong;
}

void CWindowLayout::Store(QVariantMap& values) const
{
    values[GEOMETRY] = m_Window.saveGeometry();
    values[STATE] = m_Window.saveState();
}
