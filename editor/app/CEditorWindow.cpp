#include "editor/app/CEditorWindow.h"

#include "editor/app/CCursorNote.h"
#include "editor/app/CEditor.h"
#include "editor/app/CEditorFace.h"
#include "editor/app/CHistoryDock.h"
#include "editor/app/CLightDock.h"
#include "editor/app/CMessagesDock.h"
#include "editor/app/CPanelDock.h"
#include "editor/app/CProcessesDock.h"
#include "editor/app/CStatusLine.h"
#include "editor/app/CViewArea.h"
#include "engine/paint/CPaintLayer.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "framework/core/CToolBar.h"
#include "host/IPluginTools.h"
#include "host/World.h"

#include <QCloseEvent>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QSettings>

#include <utility>

namespace
{

constexpr int AUTOSAVE_TICK_MS = 2000;
constexpr int AUTOSAVE_COPYING_MS = 100; // until the copy is there
constexpr int FIRST_WIDTH = 1280;
constexpr int FIRST_HEIGHT = 800;
constexpr char WINDOW_FILE[] = "editor.ini";

} // namespace

CEditorWindow::CEditorWindow(CEditor& editor, CEditorFace& face)
    : m_Editor(editor)
    , m_Face(face)
    , m_pMessages(new CMessagesDock(this))
    , m_pStatus(new CStatusLine(this))
    , m_Commands(*this, editor.GetKeys())
    , m_Documents(*this, editor, *m_pMessages, m_Progress, [this] { OnLevel(); })
    , m_UnsavedWork(editor, face, m_Documents)
    , m_StatusWords(editor, face, *m_pStatus)
{
    m_Settings.Load(editor.GetConfigFile(WINDOW_FILE));
    setObjectName("editor");
    setAcceptDrops(true);
    m_Face.SetWindow(this);
    m_Face.GetEditorFrontEnd().SetMessages(m_pMessages);
    GetHost().AddObserver(&m_Face.GetEditorFrontEnd());
    GetHost().AddObserver(this);
    setStatusBar(m_pStatus);
    m_AutosaveTimer.setSingleShot(true);
    m_AutosaveTimer.callOnTimeout(this, [this] { KeepChanges(); });
    m_Documents.SetRecover([this](const SRecoverable& entry) { return Recover(entry); });
    m_StateTimer.setSingleShot(true);
    m_StateTimer.callOnTimeout(this, [this] { Refresh(); });
    m_Settings.render.pPaintLayer = &GetHost().GetCPaintLayer();
    m_DropTimer.setSingleShot(true);
    m_DropTimer.callOnTimeout(this, [this] { OpenDropped(); });
}

CEditorWindow::~CEditorWindow()
{
    for (CToolBar* pToolBar : GetHost().GetRegistry().GetToolBars())
    {
        pToolBar->SetChangeListener({});
    }
    GetHost().RemoveObserver(this);
    GetHost().RemoveObserver(&m_Face.GetEditorFrontEnd());
    m_Face.SetWindow(nullptr);
    m_Face.GetEditorFrontEnd().SetMessages(nullptr);
    m_Face.SetScript(nullptr);
    // Views, panel and docks may still reach for the host: they go while all of it is there.
    delete m_pPanel;
    delete m_pViews;
    if (!m_BitmapName.empty())
    {
        GetHost().GetEngine().GetTextures().Release(m_Settings.render.pTypeBitmap);
    }
}

CEditorHost& CEditorWindow::GetHost()
{
    return m_Editor.GetHost();
}

SViewEvents CEditorWindow::MakeViewEvents()
{
    return {[](ViewId) {},
            [this](ViewId) { ShowState(); },
            [this](ViewId view, QPoint screen) { ShowContextMenu(view, screen); },
            [this](const QString& strFault)
            {
                m_ViewFault = strFault;
                statusBar()->showMessage(strFault);
            }};
}

void CEditorWindow::ShowPlugin()
{
    const SViewParts parts{GetHost(),
                           m_Editor.GetPlugin(),
                           m_Settings,
                           m_Editor.GetKeys(),
                           m_Face.GetEditorFrontEnd().GetHand()};
    m_pViews = new CViewArea(this, parts, MakeViewEvents());
    setCentralWidget(m_pViews);
    MakeDocks();
    MakeFileMenu();
    MakeEditMenu();
    MakeViewMenu();
    MakeLevelMenu();
    MakeCameraMenu();
    MakeBrushMenu();
    MakeToolsMenu();
    m_Commands.AddPluginActions([this](int32_t iAction) { SendAction(iAction); });
    m_Commands.ApplyKeys();
    m_pViews->Add(EViewKind::Perspective);
    m_pViews->Add(EViewKind::Top);
    m_pViews->setSizes({FIRST_WIDTH / 2, FIRST_WIDTH / 4});
    resize(FIRST_WIDTH, FIRST_HEIGHT);
    const QSettings file(QString::fromStdString(m_Editor.GetConfigFile(WINDOW_FILE)),
                         QSettings::IniFormat);
    restoreGeometry(file.value("window/geometry").toByteArray());
    restoreState(file.value("window/state").toByteArray());
    if (GetHost().GetSettings().IsPanelOpen())
    {
        m_Editor.GetPlugin()->Activate(true);
    }
    else
    {
        m_pPanel->hide();
    }
    ApplySettings();
    OnLevel();
}

void CEditorWindow::MakeDocks()
{
    setDockOptions(AnimatedDocks | AllowNestedDocks | AllowTabbedDocks);
    m_pPanel = new CPanelDock(this, [this] { GetHost().NotifyPanelClosed(); });
    m_pHistory = new CHistoryDock(this,
                                  GetHost().GetUndoStack(),
                                  [this](size_t nPosition)
                                  {
                                      GetHost().EndDrag();
                                      GetHost().GoToStep(nPosition);
                                      ShowState();
                                  });
    m_pProcesses = new CProcessesDock(
        this, GetHost().GetRegistry(), [this](size_t iProcess) { return RunProcess(iProcess); });
    auto* pLight = new CLightDock(this, m_Settings.render, [this] { m_pViews->RequestFrames(); });
    addDockWidget(Qt::LeftDockWidgetArea, m_pPanel); // as high as the window
    addDockWidget(Qt::RightDockWidgetArea, m_pHistory);
    addDockWidget(Qt::RightDockWidgetArea, m_pProcesses);
    addDockWidget(Qt::RightDockWidgetArea, pLight);
    addDockWidget(Qt::BottomDockWidgetArea, m_pMessages);
    tabifyDockWidget(m_pHistory, m_pProcesses);
    tabifyDockWidget(m_pProcesses, pLight);
    m_pHistory->raise();
    resizeDocks({m_pMessages}, {fontMetrics().height() * 6}, Qt::Vertical);
}

bool CEditorWindow::OpenPanel(const CRuntimeClass* pClass)
{
    return m_pPanel != nullptr && m_pPanel->Open(pClass);
}

void CEditorWindow::ClosePanel()
{
    if (m_pPanel != nullptr)
    {
        m_pPanel->Close();
    }
}

bool CEditorWindow::ShowProgress(const char* pszWhat, float fDone)
{
    if (m_pProcesses != nullptr)
    {
        m_pProcesses->ShowProgress(fDone);
    }
    return !m_bLeaving && m_Progress.Report(this, pszWhat, fDone);
}

void CEditorWindow::OnBeforeEvent(const SHostEvent& /*event*/)
{
    auto* pTools = m_Editor.FindInterface<IPluginTools>();
    m_ExtentBefore = pTools != nullptr ? pTools->GetBrushExtent() : m_ExtentBefore;
}

void CEditorWindow::OnEvent(const SHostEvent& event)
{
    if (event.eKind == EHostEvent::MouseMove)
    {
        return; // the view that sent it follows
    }
    auto* pTools = m_Editor.FindInterface<IPluginTools>();
    const float fExtent = pTools != nullptr ? pTools->GetBrushExtent() : 0.0F;
    CViewWidget* pView = m_pViews != nullptr ? m_pViews->GetActive() : nullptr;
    const bool bResized = fExtent > 0.0F && fExtent != m_ExtentBefore; // 0: no brush is up
    if (event.eKind == EHostEvent::Action && bResized && pView != nullptr)
    {
        pView->GetNote().ShowValue(QString("brush %1").arg(fExtent, 0, 'f', 1));
    }
    if (event.eKind == EHostEvent::LevelChanged)
    {
        OnLevel(); // a script may have opened it
        if (m_pPanel != nullptr)
        {
            m_pPanel->UpdateView();
        }
        return;
    }
    if (event.eKind == EHostEvent::TerrainReloaded)
    {
        FrameOtherSize();
    }
    if (m_pViews != nullptr)
    {
        m_pViews->RequestFrames();
    }
    ShowState();
}

// A terrain of another extent may lie where no view looks; one of another resolution does not.
void CEditorWindow::FrameOtherSize()
{
    const CTerrain* pTerrain = GetHost().GetEngine().GetCWorld().GetCTerrain();
    const SVec3 size = pTerrain != nullptr ? pTerrain->GetSize() : SVec3();
    const bool bOther = size.x != m_ShownSize.x || size.z != m_ShownSize.z;
    m_ShownSize = size;
    if (bOther && m_pViews != nullptr)
    {
        m_pViews->FrameAll();
    }
}

void CEditorWindow::ShowState()
{
    if (!m_StateTimer.isActive())
    {
        m_StateTimer.start(0);
    }
}

void CEditorWindow::Refresh()
{
    const CLevelDocument& document = m_Editor.GetDocument();
    setWindowTitle(QString::fromStdString(document.GetTitle()) + "[*] - Tellur");
    KeepChanges();
    if (m_pHistory == nullptr)
    {
        return;
    }
    m_pHistory->Follow();
    const CUndoStack& stack = GetHost().GetUndoStack();
    auto* pTools = m_Editor.FindInterface<IPluginTools>();
    const bool bPainting = pTools != nullptr && pTools->IsPainting();
    m_Commands.Find("edit.undo")->setEnabled(bPainting || stack.GetCount() > 0);
    m_Commands.Find("edit.redo")->setEnabled(bPainting || stack.GetRedoCount() > 0);
    m_Commands.Find("file.save")->setEnabled(document.HasLevel());
    m_Commands.Find("file.save_as")->setEnabled(document.HasLevel());
    const CRecorder* pRecorder = m_Editor.GetRecorder();
    const bool bRecording = pRecorder != nullptr && pRecorder->IsRecording();
    m_Commands.Find("file.record")->setText(bRecording ? "Stop re&cording" : "Re&cord...");
    m_pStatus->SetRecording(bRecording);
    m_pStatus->Follow(GetHost(), m_pViews->GetActive(), pTools);
}

void CEditorWindow::KeepChanges()
{
    CAutosave& autosave = m_Editor.GetAutosave();
    autosave.Tick(CAutosave::TimePoint::clock::now());
    setWindowModified(autosave.IsChanged());
    const bool bWork = autosave.IsCopying() || isWindowModified();
    const int iPause = autosave.IsCopying() ? AUTOSAVE_COPYING_MS : AUTOSAVE_TICK_MS;
    if (!bWork)
    {
        m_AutosaveTimer.stop();
    }
    else if (!m_AutosaveTimer.isActive() || m_AutosaveTimer.interval() != iPause)
    {
        m_AutosaveTimer.start(iPause);
    }
}

void CEditorWindow::OnLevel()
{
    CLevelDocument& document = m_Editor.GetDocument();
    m_Settings.render.strDefaultMaterial = document.GetMaterial();
    CTextureManager& textures = GetHost().GetEngine().GetTextures();
    if (m_BitmapName != document.GetBitmap())
    {
        // A view may draw while the other one is read.
        ITexture* pBefore = std::exchange(m_Settings.render.pTypeBitmap, nullptr);
        if (!m_BitmapName.empty())
        {
            textures.Release(pBefore);
        }
        m_BitmapName = document.GetBitmap();
        m_Settings.render.pTypeBitmap =
            m_BitmapName.empty() ? nullptr : textures.Load(m_BitmapName.c_str(), 1);
        m_BitmapName = m_Settings.render.pTypeBitmap != nullptr ? m_BitmapName : "";
    }
    if (m_pViews != nullptr && m_ShownLevel != document.GetGeneration())
    {
        m_ShownLevel = document.GetGeneration();
        m_ShownSize = {};
        FrameOtherSize();
    }
    if (m_pViews != nullptr)
    {
        m_pViews->RequestFrames();
    }
    ShowState();
}

void CEditorWindow::ApplySettings()
{
    m_Editor.GetAutosave().SetInterval(std::chrono::seconds(m_Settings.iAutosaveSeconds));
    GetHost().GetUndoStack().SetLimit(static_cast<size_t>(m_Settings.iUndoMegabytes) << 20U);
}

void CEditorWindow::closeEvent(QCloseEvent* pEvent)
{
    m_pViews->EndGestures();
    if (!m_Documents.MayLeave() || !m_UnsavedWork.MayLeave())
    {
        pEvent->ignore();
        ShowState(); // a part may have been saved
        return;
    }
    SaveWindow();
    pEvent->accept();
    if (m_OnClosed)
    {
        m_OnClosed();
    }
}

void CEditorWindow::SaveWindow()
{
    const std::string strFile = m_Editor.GetConfigFile(WINDOW_FILE);
    m_Settings.Save(strFile);
    QSettings file(QString::fromStdString(strFile), QSettings::IniFormat);
    file.setValue("window/geometry", saveGeometry());
    file.setValue("window/state", saveState());
}

void CEditorWindow::LeaveChanges()
{
    m_bLeaving = true;
    m_pViews->EndGestures();
    m_Editor.GetAutosave().Leave();
    if (m_Editor.GetRecorder() != nullptr)
    {
        m_Editor.GetRecorder()->Stop();
    }
    SaveWindow();
}

void CEditorWindow::changeEvent(QEvent* pEvent)
{
    if (pEvent->type() == QEvent::ActivationChange && m_pViews != nullptr && !isActiveWindow())
    {
        m_pViews->EndGestures(); // the release will go to another window
    }
    QMainWindow::changeEvent(pEvent);
}

void CEditorWindow::dragEnterEvent(QDragEnterEvent* pEvent)
{
    if (pEvent->mimeData()->hasUrls() && pEvent->mimeData()->urls().front().isLocalFile())
    {
        pEvent->acceptProposedAction();
    }
}

void CEditorWindow::dropEvent(QDropEvent* pEvent)
{
    m_Dropped = pEvent->mimeData()->urls().front().toLocalFile().toStdString();
    pEvent->acceptProposedAction();
    m_DropTimer.start(0); // the other program waits until the drop is over
}
