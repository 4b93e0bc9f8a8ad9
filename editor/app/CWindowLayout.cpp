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
#include "editor/app/ScreenRoom.h"
#include "editor/core/CEditorHost.h"
#include "editor/core/Words.h"
#include "host/Notice.h"

#include <QMainWindow>

namespace
{

constexpr int FIRST_WIDTH = 1280;
constexpr int FIRST_HEIGHT = 800;
constexpr int MESSAGE_LINES = 6;
constexpr int FEW_MESSAGE_LINES = 3;
constexpr int NARROW_WIDTH = 1100; // of a window that begins with views and panel alone
constexpr int LOW_HEIGHT = 700;
constexpr int LEAST_DOCK = 80;
constexpr char GEOMETRY[] = "window/geometry";
constexpr char PANEL_WIDTH[] = "window/panel_width";
constexpr char STATE[] = "window/state";
constexpr char FOLDED[] = "panel/folded"; // titles of groups

// Why a step on the way cannot be taken is logged; this says where the history is.
void GoToStep(CEditorHost& host, size_t nSteps)
{
    if (!host.GoToStep(nSteps))
    {
        const size_t nDone = host.GetUndoStack().GetCount();
        const QString strWhere =
            nDone > 0 ? QString(Words("The history went no further than step %1"))
                            .arg(QString::fromStdString(host.GetUndoStack().GetText(nDone - 1)))
                      : QString(Words("The history went no further than its start"));
        Notice(strWhere.toUtf8().constData());
    }
}

} // namespace

CWindowLayout::CWindowLayout(const SLayoutParts& parts)
    : m_Window(parts.window)
    , m_Host(parts.host)
    , m_Views(parts.views)
    , m_Arrangement(parts.views)
    , m_Messages(parts.messages)
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
                                      GoToStep(host, nSteps);
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
    for (QDockWidget* pDock : m_Window.findChildren<QDockWidget*>())
    {
        if (pDock->widget() != nullptr)
        {
            // What is in it is cut where a person makes it narrow, and makes no window wider.
            pDock->widget()->setMinimumSize(LEAST_DOCK, LEAST_DOCK / 2);
        }
    }
}

CWindowLayout::~CWindowLayout() = default;

// In a small window most of the room is the views'.
void CWindowLayout::SizeDocks()
{
    const bool bNarrow = m_Window.width() < NARROW_WIDTH;
    const bool bLow = m_Window.height() < LOW_HEIGHT;
    for (QDockWidget* pDock : {static_cast<QDockWidget*>(m_pHistory),
                               static_cast<QDockWidget*>(m_pProcesses),
                               static_cast<QDockWidget*>(m_pLight)})
    {
        pDock->setVisible(!bNarrow);
    }
    m_pHistory->raise();
    const int iLine = m_Window.fontMetrics().height();
    m_Window.resizeDocks(
        {&m_Messages}, {iLine * (bLow ? FEW_MESSAGE_LINES : MESSAGE_LINES)}, Qt::Vertical);
}

QStringList CWindowLayout::Restore(const QVariantMap& values, bool bPanelOpen)
{
    QStringList wrong;
    m_FirstState = m_Window.saveState();
    m_Window.resize(FIRST_WIDTH, FIRST_HEIGHT);
    if (values.contains(GEOMETRY) && !RestorePlace(m_Window, values[GEOMETRY].toByteArray()))
    {
        wrong << GEOMETRY;
    }
    KeepOnScreen(m_Window);
    m_Arrangement.Restore(values, wrong);
    const bool bState = values.contains(STATE);
    if (!bState || !m_Window.restoreState(values[STATE].toByteArray()))
    {
        wrong << (bState ? QStringList{STATE} : QStringList());
        SizeDocks();
    }
    else if (bPanelOpen)
    {
        m_pPanel->KeepPlace(values.value(PANEL_WIDTH).toInt());
    }
    for (QDockWidget* pDock : m_Window.findChildren<QDockWidget*>())
    {
        if (pDock->isFloating())
        {
            KeepOnScreen(*pDock, &m_Window);
        }
    }
    m_pPanel->SetFolded(values.value(FOLDED).toStringList());
    return wrong;
}

void CWindowLayout::Store(QVariantMap& values) const
{
    values[GEOMETRY] = m_Window.saveGeometry();
    values[STATE] = m_Window.saveState();
    if (!m_pPanel->isHidden() && !m_pPanel->isFloating())
    {
        values[PANEL_WIDTH] = m_pPanel->width();
    }
    m_Arrangement.Store(values);
    const QStringList folded = m_pPanel->GetFolded();
    // An empty list is written as an empty text.
    values[FOLDED] = folded.isEmpty() ? QVariant(QString("")) : QVariant(folded);
}

void CWindowLayout::Reset()
{
    if (m_pPanel->isHidden())
    {
        m_Host.SwitchPanel(); // a first window has it
    }
    const bool bPanel = !m_pPanel->isHidden();
    m_Arrangement.Reset();
    m_Window.restoreState(m_FirstState);
    SizeDocks();
    m_pPanel->SetFolded({});
    if (bPanel)
    {
        m_pPanel->show();
        m_pPanel->FitWidth();
    }
}
