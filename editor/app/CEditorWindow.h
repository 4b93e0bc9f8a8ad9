#pragma once

#include "editor/app/CAutosaveTimer.h"
#include "editor/app/CCommandList.h"
#include "editor/app/CDialogFit.h"
#include "editor/app/CDocumentActions.h"
#include "editor/app/CEditorMenus.h"
#include "editor/app/CExtentNote.h"
#include "editor/app/CFileDrop.h"
#include "editor/app/CIniFile.h"
#include "editor/app/CKeepTimer.h"
#include "editor/app/CLevelLook.h"
#include "editor/app/CPluginCommands.h"
#include "editor/app/CProgressWindow.h"
#include "editor/app/CScriptRunner.h"
#include "editor/app/CStatusWords.h"
#include "editor/app/CUnsavedWork.h"
#include "editor/app/CViewArea.h"
#include "editor/app/CWindowLayout.h"
#include "editor/app/SEditorSettings.h"
#include "editor/core/IHostObserver.h"

#include <QMainWindow>
#include <QTimer>

#include <functional>
#include <memory>

class CEditor;
class CEditorFace;
class CEditorHost;
class CFaultBar;
class CMessagesDock;
class CPanelDock;
class CStatusLine;
class CWelcome;

// The editor's main window: what there is in it, and what happens to it as a whole. Its parts do
// the rest: views, docks, commands, documents. It borrows the editor, and tells the face that it is
// there. Owned by the program, gone before the plug-in is unloaded. UI thread.
class CEditorWindow : public QMainWindow, public IHostObserver
{
public:
    CEditorWindow(CEditor& editor, CEditorFace& face);
    ~CEditorWindow() override;
    CEditorWindow(const CEditorWindow&) = delete;
    CEditorWindow& operator=(const CEditorWindow&) = delete;

    // To be called when the plug-in is loaded: views and docks are made, and its menus, toolbars,
    // processes and actions appear.
    void ShowPlugin();

    // To be called when a person is about to work, after CEditor::BeginTools: whoever is new here
    // is shown how to begin.
    void WelcomePerson();

    // Called once the person has closed it.
    void SetOnClosed(std::function<void()> onClosed) { m_OnClosed = std::move(onClosed); }

    // To be called when the process was told to end: a drag and a recording end, what is not saved
    // is kept for the next start. Nothing is asked.
    void LeaveChanges();

    CEditorHost& GetHost();

    CViewArea& GetViews() { return *m_pViews; }

    // Null until ShowPlugin has made them: a plug-in may ask for them while it is loaded.
    CViewArea* FindViews() { return m_pViews.get(); }

    CPanelDock* FindPanel();

    CDocumentActions& GetDocuments() { return m_Documents; }

    CScriptRunner& GetScripts() { return *m_pScripts; } // after ShowPlugin

    CMessagesDock& GetMessages() { return *m_pMessages; }

    SEditorSettings& GetSettings() { return m_Settings; }

    CCommandList& GetCommands() { return m_Commands; }

    // As IHostFace::OnProgress.
    bool ShowProgress(const char* pszWhat, float fDone);
    // Brings title, menus, history and status up to date, once in this turn of the event loop.
    void ShowState();

    // The first thing that the graphics card could not do; empty when it does everything.
    const QString& GetViewFault() const { return m_ViewFault; }

    // IHostObserver
    void OnEvent(const SHostEvent& event) override;

protected:
    void closeEvent(QCloseEvent* pEvent) override;
    void changeEvent(QEvent* pEvent) override;

private:
    SViewEvents MakeViewEvents();
    void MakeMenus();
    void OnLevel();   // another level, or another look of it
    void LookAgain(); // the views, at the cursor
    void Refresh();
    void OnScriptPlayed();
    QVariantMap GatherValues() const; // of settings and layout
    void Keep();                      // these and the tools, where they have changed
    bool IsAtRest();

    CEditor& m_Editor;
    CEditorFace& m_Face;
    CIniFile m_Ini;
    SEditorSettings m_Settings;
    QStringList m_WrongKeys; // of the settings, until they are reported
    CLevelLook m_Look;
    CMessagesDock* m_pMessages; // the window's
    CFaultBar* m_pFaults = nullptr;
    CStatusLine* m_pStatus;
    CCommandList m_Commands;
    CProgressWindow m_Progress;
    CDocumentActions m_Documents;
    CUnsavedWork m_UnsavedWork;
    CStatusWords m_StatusWords;
    CExtentNote m_ExtentNote;
    CAutosaveTimer m_AutosaveTimer;
    CFileDrop m_Drop;
    CKeepTimer m_KeepTimer;
    CDialogFit m_DialogFit;
    QTimer m_StateTimer;
    QTimer m_CloseTimer;
    std::function<void()> m_OnClosed;
    QString m_ViewFault;
    bool m_bLeaving = false;
    bool m_bCloseNext = false; // once the script has ended that is played
    bool m_bRecovering = false;

    // Null until the plug-in is there. They may reach for the host and the plug-in to their end, so
    // they go first: what is docked before the views.
    std::unique_ptr<CViewArea> m_pViews;
    std::unique_ptr<CScriptRunner> m_pScripts;
    std::unique_ptr<CPluginCommands> m_pPluginCommands;
    std::unique_ptr<CWindowLayout> m_pLayout;
    std::unique_ptr<CEditorMenus> m_pMenus;
    std::unique_ptr<CWelcome> m_pWelcome;
};
