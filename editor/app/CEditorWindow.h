#pragma once

#include "editor/app/CCommandList.h"
#include "editor/app/CDocumentActions.h"
#include "editor/app/CProgressWindow.h"
#include "editor/app/CStatusWords.h"
#include "editor/app/CToolCommands.h"
#include "editor/app/CUnsavedWork.h"
#include "editor/app/CViewWidget.h"
#include "editor/app/SEditorSettings.h"
#include "editor/core/IHostObserver.h"
#include "editor/script/LoadScript.h"

#include <QMainWindow>
#include <QTimer>

#include <functional>
#include <memory>
#include <string>

class CEditor;
class CEditorFace;
class CEditorHost;
class CHistoryDock;
class CMessagesDock;
class CPanelDock;
class CProcessesDock;
class CRuntimeClass;
class CStatusLine;
class CViewArea;
struct SRecoverable;

// The editor's main window: views, docks, menus and keys around an editor that it borrows. It tells
// the face that it is there. Owned by the program, gone before the plug-in is unloaded. UI thread.
class CEditorWindow : public QMainWindow, public IHostObserver
{
public:
    CEditorWindow(CEditor& editor, CEditorFace& face);
    ~CEditorWindow() override;
    CEditorWindow(const CEditorWindow&) = delete;
    CEditorWindow& operator=(const CEditorWindow&) = delete;

    // The plug-in is loaded: its menus, toolbars, processes and actions appear.
    void ShowPlugin();

    // Called once the person has closed it.
    void SetOnClosed(std::function<void()> onClosed) { m_OnClosed = std::move(onClosed); }

    // False when it could not be opened; the person has been told.
    bool OpenFile(const std::string& strPath) { return m_Documents.OpenFile(strPath); }

    bool OfferRecovery() { return m_Documents.OfferRecovery(); }

    // The process was told to end: a drag and a recording end, what is not saved is kept for the
    // next start. Nothing is asked.
    void LeaveChanges();

    // For the face.
    std::string GetSaveFolder() const { return m_Documents.GetSaveFolder(); }

    CEditorHost& GetHost();

    CViewArea& GetViews() { return *m_pViews; }

    CViewArea* FindViews() { return m_pViews; } // null until they are made

    CMessagesDock& GetMessages() { return *m_pMessages; }

    SEditorSettings& GetSettings() { return m_Settings; }

    CCommandList& GetCommands() { return m_Commands; }

    bool OpenPanel(const CRuntimeClass* pClass);
    void ClosePanel();
    void GoToPanel();
    bool ShowProgress(const char* pszWhat, float fDone);
    // Brings title, menus, history and status up to date, once in this turn of the event loop.
    void ShowState();

    // Plays a replay script into the level, as far as it goes; the views show each step. strFault:
    // one line when it was not played to its end.
    EScriptEnd PlayScript(const std::string& strPath, std::string& strFault);

    // The first thing that the graphics card could not do; empty when it does everything.
    const QString& GetViewFault() const { return m_ViewFault; }

    // IHostObserver
    void OnBeforeEvent(const SHostEvent& event) override;
    void OnEvent(const SHostEvent& event) override;

protected:
    void closeEvent(QCloseEvent* pEvent) override;
    void changeEvent(QEvent* pEvent) override;
    void dragEnterEvent(QDragEnterEvent* pEvent) override;
    void dropEvent(QDropEvent* pEvent) override;

private:
    void MakeDocks();
    void MakeFileMenu();
    void MakeEditMenu();
    void MakeViewMenu();
    void MakeLevelMenu();
    void MakeCameraMenu();
    void MakeBrushMenu();
    void MakeToolsMenu();
    void FillRecentFiles();
    void FillMaterials();
    SViewEvents MakeViewEvents();

    void OnLevel(); // another level, or another look of it
    void FrameOtherSize();
    void Refresh();
    void RunCommand(uint32_t uCommand); // of a plug-in
    void SendAction(int32_t iAction);
    bool RunProcess(size_t iProcess);
    void ShowContextMenu(ViewId view, QPoint screen);
    void StepHistory(bool bRedo);
    void CancelWork();
    void OpenDropped();
    void EditKeys();
    void EditSettings();
    void AskForScript();
    bool Recover(const SRecoverable& entry);
    void SaveWindow();
    void KeepChanges(); // a turn of the autosave
    void ApplySettings();

    CEditor& m_Editor;
    CEditorFace& m_Face;
    SEditorSettings m_Settings;
    CViewArea* m_pViews = nullptr; // all the window's
    CMessagesDock* m_pMessages = nullptr;
    CHistoryDock* m_pHistory = nullptr;
    CProcessesDock* m_pProcesses = nullptr;
    CPanelDock* m_pPanel = nullptr;
    CStatusLine* m_pStatus;
    QMenu* m_pTools = nullptr;
    QMenu* m_pRecent = nullptr;
    QMenu* m_pMaterials = nullptr;
    CCommandList m_Commands;
    std::unique_ptr<CToolCommands> m_pToolCommands;
    CProgressWindow m_Progress;
    CDocumentActions m_Documents;
    CUnsavedWork m_UnsavedWork;
    CStatusWords m_StatusWords;
    QTimer m_AutosaveTimer; // runs while there is something to keep
    QTimer m_DropTimer;
    std::function<void()> m_OnClosed;
    std::string m_Dropped;     // the file
    uint64_t m_ShownLevel = 0; // generation of the document that the views have framed
    SVec3 m_ShownSize;         // of its terrain
    QTimer m_StateTimer;
    QString m_ViewFault;
    std::string m_BitmapName; // of the texture that the views drape
    float m_ExtentBefore = 0.0F;
    bool m_bDocksMade = false;
    bool m_bLeaving = false;
};
