#include "editor/app/CEditorWindow.h"

#include "editor/app/CBrushLibraryDock.h"
#include "editor/app/CEditor.h"
#include "editor/app/CEditorFace.h"
#include "editor/app/CFaultBar.h"
#include "editor/app/CHistoryDock.h"
#include "editor/app/CLightDock.h"
#include "editor/app/CMeasureDock.h"
#include "editor/app/CMessagesDock.h"
#include "editor/app/CPanelDock.h"
#include "editor/app/CProcessesDock.h"
#include "editor/app/CScriptBar.h"
#include "editor/app/CStatusLine.h"
#include "editor/app/CWelcome.h"
#include "editor/app/PropertyColumns.h"
#include "editor/app/StrokeWords.h"
#include "host/IPluginTools.h"

#include <QCloseEvent>

#include <utility>

namespace
{

constexpr char WINDOW_FILE[] = "editor.ini";

} // namespace

CEditorWindow::CEditorWindow(CEditor& editor, CEditorFace& face)
    : m_Editor(editor)
    , m_Face(face)
    , m_Ini(editor.GetConfigFile(WINDOW_FILE))
    , m_WrongKeys(m_Settings.Load(m_Ini.GetValues()))
    , m_Look(editor, m_Settings.render)
    , m_pMessages(new CMessagesDock(this))
    , m_pStatus(new CStatusLine(this))
    , m_Commands(*this, editor.GetKeys())
    , m_Documents(*this, editor, *m_pMessages, m_Progress, [this] { OnLevel(); })
    , m_UnsavedWork(editor, face, m_Documents.GetQuestions())
    , m_StatusWords(editor, face, *m_pStatus)
    , m_ExtentNote(editor,
                   [this]
                   {
                       CViewWidget* pView = m_pViews != nullptr ? m_pViews->GetActive() : nullptr;
                       return pView != nullptr ? &pView->GetNote() : nullptr;
                   })
    , m_AutosaveTimer(editor.GetAutosave(), [this](bool bChanged) { setWindowModified(bChanged); })
    , m_Drop(
          *this, m_Progress, [this](const std::string& strPath) { m_Documents.OpenFile(strPath); })
    , m_KeepTimer([this] { return IsAtRest(); }, [this] { Keep(); })
{
    setObjectName("editor");
    m_Face.SetWindow(this);
    m_Face.GetEditorFrontEnd().SetMessages(m_pMessages);
    GetHost().GetObservers().Add(&m_Face.GetEditorFrontEnd());
    GetHost().GetObservers().Add(this);
    setStatusBar(m_pStatus);
    m_pFaults = new CFaultBar(*this,
                              [this]
                              {
                                  m_pMessages->show();
                                  m_pMessages->raise();
                              });
    m_pMessages->SetOnFault([this](const QString& strFault) { m_pFaults->ShowFault(strFault); });
    // Recovering plays steps into the plug-in, so the script runner does it, which comes with the
    // plug-in.
    m_Documents.GetRecovery().SetRecover(
        [this](const SRecoverable& entry)
        {
            // Boxes are shown while the views still stand at the level before.
            m_bRecovering = true;
            const bool bOpen = m_pScripts->Recover(entry);
            m_bRecovering = false;
            if (bOpen)
            {
                m_Look.FollowRecovered(m_pViews.get(), entry.strStem);
            }
            return bOpen;
        });
    m_CloseTimer.setSingleShot(true);
    m_CloseTimer.callOnTimeout(this, [this] { close(); });
    m_StateTimer.setSingleShot(true);
    m_StateTimer.callOnTimeout(this, [this] { Refresh(); });
    m_Settings.render.pPaintLayer = &GetHost().GetCPaintLayer();
}

CEditorWindow::~CEditorWindow()
{
    GetHost().GetObservers().Remove(this);
    GetHost().GetObservers().Remove(&m_Face.GetEditorFrontEnd());
    m_Face.SetWindow(nullptr);
    m_Face.GetEditorFrontEnd().SetMessages(nullptr);
    m_Face.SetScript(nullptr);
}

CEditorHost& CEditorWindow::GetHost()
{
    return m_Editor.GetHost();
}

SViewEvents CEditorWindow::MakeViewEvents()
{
    // Which view is active is the area's to note.
    return {[](ViewId) {},
            [this](ViewId) { ShowState(); },
            [this](ViewId view, QPoint screen) { m_pMenus->ShowContextMenu(view, screen); },
            [this](const QString& strFault)
            {
                m_ViewFault = strFault;
                statusBar()->showMessage(strFault);
            }};
}

void CEditorWindow::ShowPlugin()
{
    SViewParts parts{GetHost(),
                     m_Editor.GetPlugin(),
                     m_Settings,
                     m_Editor.GetKeys(),
                     m_Face.GetEditorFrontEnd().GetHand()};
    parts.pRender = &m_Settings.render;
    m_pViews = std::make_unique<CViewArea>(this, parts, MakeViewEvents());
    m_pScripts = std::make_unique<CScriptRunner>(*this,
                                                 m_Editor,
                                                 m_Face,
                                                 *m_pViews,
                                                 *m_pStatus,
                                                 *new CScriptBar(*this, m_Settings.iScriptSpeed),
                                                 [this] { OnScriptPlayed(); });
    m_pPluginCommands = std::make_unique<CPluginCommands>(m_Editor, *m_pViews);
    m_pLayout = std::make_unique<CWindowLayout>(SLayoutParts{*this,
                                                             *m_pViews,
                                                             *m_pMessages,
                                                             GetHost(),
                                                             *m_pPluginCommands,
                                                             m_Editor.GetPlugin(),
                                                             m_Settings.render,
                                                             [this]
                                                             {
                                                                 ShowState();
                                                             }});
    MakeMenus();
    m_pWelcome = std::make_unique<CWelcome>(SWelcomeParts{m_Editor,
                                                          m_Face,
                                                          *m_pViews,
                                                          m_pLayout->GetPanel(),
                                                          *m_pStatus,
                                                          m_Commands,
                                                          m_Documents,
                                                          m_Settings});
    const bool bPanel = GetHost().GetSettings().IsPanelOpen();
    const QStringList wrong = m_pLayout->Restore(m_Ini.GetValues(), bPanel);
    m_Ini.Check(GatherValues(), m_WrongKeys + wrong);
    FitPropertyColumns(GetHost().GetRegistryRoot(), font());
    // While the plug-in was loaded there was no dock for its panel, so it is asked once more.
    if (bPanel)
    {
        m_Editor.GetPlugin()->Activate(true);
    }
    else
    {
        m_pLayout->GetPanel().hide();
    }
    m_Settings.ApplyTo(m_Editor);
    OnLevel();
}

void CEditorWindow::MakeMenus()
{
    m_pMenus =
        std::make_unique<CEditorMenus>(SMenuParts{.window = *this,
                                                  .editor = m_Editor,
                                                  .commands = m_Commands,
                                                  .views = *m_pViews,
                                                  .levelViews = m_Look.GetLevelViews(),
                                                  .layout = *m_pLayout,
                                                  .library = m_pLayout->GetLibrary(),
                                                  .measure = m_pLayout->GetMeasure(),
                                                  .documents = m_Documents,
                                                  .scripts = *m_pScripts,
                                                  .plugin = *m_pPluginCommands,
                                                  .settings = m_Settings,
                                                  .hand = m_Face.GetEditorFrontEnd().GetHand(),
                                                  .showState = [this] { ShowState(); },
                                                  .onLevel =
                                                      [this]
                                                  {
                                                      OnLevel();
                                                  }});
}

void CEditorWindow::WelcomePerson()
{
    m_pWelcome->BeginPerson();
}

CPanelDock* CEditorWindow::FindPanel()
{
    return m_pLayout != nullptr ? &m_pLayout->GetPanel() : nullptr;
}

bool CEditorWindow::ShowProgress(const char* pszWhat, float fDone)
{
    if (m_pLayout != nullptr)
    {
        m_pLayout->GetProcesses().ShowProgress(fDone);
    }
    // Work that is under way when the process is told to end is cancelled.
    return !m_bLeaving && m_Progress.Report(this, pszWhat, fDone);
}

void CEditorWindow::OnEvent(const SHostEvent& event)
{
    if (event.eKind == EHostEvent::MouseMove)
    {
        return; // the view that sent it follows
    }
    if (event.eKind == EHostEvent::LevelChanged)
    {
        m_Settings.input.symmetry.bOwnCentre = false; // it was a place of the other level
        m_pFaults->Forget();                          // they spoke of it, too
        OnLevel();                                    // a script may have opened it
        if (m_pLayout != nullptr)
        {
            m_pLayout->GetPanel().UpdateView();
        }
        return;
    }
    if (event.eKind == EHostEvent::TerrainReloaded)
    {
        const bool bOther = m_Look.FrameOtherSize(m_pViews.get());
        m_Look.Follow(m_pViews.get()); // its bitmap may have another name
        if (bOther && m_pLayout != nullptr)
        {
            m_pLayout->GetPanel().UpdateView(); // its numbers are of the size
        }
        LookAgain();
    }
    else if (m_pViews != nullptr)
    {
        m_pViews->RequestFrames();
    }
    ShowState();
}

void CEditorWindow::LookAgain()
{
    if (m_pViews != nullptr)
    {
        m_pViews->LookAgain();
    }
}

void CEditorWindow::ShowState()
{
    // However many events ask for it, the state is shown once, when the event loop turns.
    if (!m_StateTimer.isActive())
    {
        m_StateTimer.start(0);
    }
}

void CEditorWindow::Refresh()
{
    setWindowTitle(m_Documents.GetTitle() + "[*] - Tellur");
    m_AutosaveTimer.TakeTurn();
    if (m_pLayout == nullptr)
    {
        return;
    }
    if (!m_bRecovering && m_Look.IsBehind())
    {
        m_Look.Follow(m_pViews.get());
        LookAgain();
    }
    else if (!m_bRecovering)
    {
        m_Look.GetLevelViews().FollowPath();
    }
    m_pLayout->GetHistory().Follow();
    m_pLayout->GetLight().Follow();
    m_Editor.GetBrushFile().Follow();
    m_pLayout->GetLibrary().Follow();
    m_pLayout->GetMeasure().Follow();
    m_pMenus->Follow();
    m_pWelcome->Follow();
    const CRecorder* pRecorder = m_Editor.GetRecorder();
    m_pStatus->SetRecording(pRecorder != nullptr && pRecorder->IsRecording());
    m_pStatus->ShowStroke(GetStrokeWords(m_Settings.input,
                                         m_Face.GetEditorFrontEnd().GetHand(),
                                         m_Editor.FindInterface<IPluginTools>()));
    m_pStatus->Follow(GetHost(), m_pViews->GetActive(), m_Editor.FindInterface<IPluginTools>());
}

void CEditorWindow::OnLevel()
{
    m_Look.Follow(m_pViews.get());
    if (m_pWelcome != nullptr)
    {
        m_pWelcome->FollowLevel();
    }
    LookAgain();
    ShowState();
}

void CEditorWindow::OnScriptPlayed()
{
    ShowState();
    if (std::exchange(m_bCloseNext, false)) // a person wanted to leave meanwhile
    {
        m_CloseTimer.start(0);
    }
}

void CEditorWindow::closeEvent(QCloseEvent* pEvent)
{
    if (m_Face.IsScriptPlayed())
    {
        m_bCloseNext = m_pScripts->Stop(); // the level is in its hands until it has ended
        pEvent->ignore();
        return;
    }
    m_pViews->EndGestures();
    if (!m_Documents.MayLeave() || !m_UnsavedWork.MayLeave())
    {
        pEvent->ignore();
        ShowState(); // a part may have been saved
        return;
    }
    m_Ini.Forget();
    Keep();
    m_pLayout->GetPanel().KeepOpen();
    pEvent->accept();
    if (m_OnClosed)
    {
        m_OnClosed();
    }
}

QVariantMap CEditorWindow::GatherValues() const
{
    QVariantMap values;
    m_Settings.Store(values);
    m_pLayout->Store(values);
    return values;
}

void CEditorWindow::Keep()
{
    m_Ini.Write(GatherValues());
    m_Look.GetLevelViews().Keep(*m_pViews);
    m_Editor.KeepTools();
    if (GetHost().GetSettings().HasPanelChanged())
    {
        GetHost().SaveSettings();
    }
}

// A script that is played, a stroke and long work may be in the middle of what they do to a brush.
bool CEditorWindow::IsAtRest()
{
    return m_pLayout != nullptr && !m_bRecovering && !GetHost().GetInput().IsDragging() &&
           !m_Face.IsScriptPlayed() && !m_Progress.IsWorking();
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
    m_UnsavedWork.Leave();
    m_Ini.Forget();
    Keep();
}

void CEditorWindow::changeEvent(QEvent* pEvent)
{
    if (pEvent->type() == QEvent::ActivationChange && m_pViews != nullptr && !isActiveWindow())
    {
        m_pViews->EndGestures(); // the release will go to another window
    }
    QMainWindow::changeEvent(pEvent);
}
