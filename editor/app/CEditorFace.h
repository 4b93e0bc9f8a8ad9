#pragma once

#include "editor/app/SHandState.h"
#include "editor/core/IHostFace.h"
#include "editor/core/IHostObserver.h"
#include "editor/script/CScriptCursor.h"
#include "framework/qt/CWidgetFrontEnd.h"

class CEditorWindow;
class CMessagesDock;
class CPanelDock;
class CViewArea;
class CViewWidget;

// The keys and the mouse of a person, or of the script that is being played. During an event of the
// host a key is what it was when the event began, so that a recording tells what the plug-in saw.
class CEditorFrontEnd : public CWidgetFrontEnd, public IHostObserver
{
public:
    // pCursor: borrowed; null: a person works.
    void SetScript(const CScriptCursor* pCursor)
    {
        m_pScript = pCursor;
        m_Hand.bScript = pCursor != nullptr;
    }

    SHandState& GetHand() { return m_Hand; }

    const SHandState& GetHand() const { return m_Hand; }

    // pMessages: borrowed; null: none.
    void SetMessages(CMessagesDock* pMessages) { m_pMessages = pMessages; }

    bool IsKeyDown(EKey eKey) const override;

    // IHostObserver
    void OnBeforeEvent(const SHostEvent& event) override;
    void OnEvent(const SHostEvent& event) override;

protected:
    std::string GetFaultDetail() const override;

private:
    bool LookUp(EKey eKey) const;

    const CScriptCursor* m_pScript = nullptr;
    CMessagesDock* m_pMessages = nullptr;
    SHandState m_Hand;
    bool m_bInEvent = false;
    bool m_Held[3] = {}; // by EKey
};

// The person at the editor: questions become dialogs, views and picking come from the window. While
// a script is played, it says where the cursor is and what keys are held. Owned by the program,
// made before the host; the window announces itself.
class CEditorFace : public IHostFace
{
public:
    // pWindow: borrowed; null before it is there and after it has gone: nothing is shown then.
    void SetWindow(CEditorWindow* pWindow) { m_pWindow = pWindow; }

    // pCursor: borrowed; null: the person's own again.
    void SetScript(CScriptCursor* pCursor);

    bool IsScriptPlayed() const { return m_pScript != nullptr; }

    IFrontEnd* GetFrontEnd() override { return &m_FrontEnd; }

    CEditorFrontEnd& GetEditorFrontEnd() { return m_FrontEnd; }

    const SHandState& GetHand() const { return m_FrontEnd.GetHand(); }

    bool PromptText(const char* pszTitle, const char* pszLabel, std::string& strAnswer) override;
    std::string BrowseForFile(EFileDialog eKind,
                              const char* pszDefaultExtension,
                              const char* pszInitialName,
                              const char* pszInitialFolder,
                              const char* pszFilter) override;

    bool HandlesViewAction(ViewId, uint32_t) override { return false; }

    ViewId GetActiveView() override;
    IViewWindow* GetViewWindow(ViewId view) override;
    void RedrawViews() override;
    void RefreshView(ViewId view) override;
    bool PickTerrain(ViewId view, ViewPoint point, SVec3& hit) override;
    bool IsKeyboardNavigationOn() override;
    bool IsCameraKeyDown(ECameraKey eKey) override;
    void TurnCamera(ViewId view, float fDegrees) override;
    void LookFromDirection(ICamera* pCamera, float fX, float fY) override;
    void SetViewToggle(ViewId view, bool bOn) override;
    bool OpenPluginView(const CRuntimeClass* pClass) override;
    void ClosePluginView() override;

    bool PrepareWindows() override { return true; }

    void OnCaptionChanged(const char* pszCaption) override;
    bool OnProgress(const char* pszWhat, float fDone) override;

private:
    // Null without a window, and until it has them: a plug-in may ask while it is loaded.
    CViewArea* FindViews() const;
    CViewWidget* FindView(ViewId view) const;
    CPanelDock* FindPanel() const;

    CEditorFrontEnd m_FrontEnd;
    CEditorWindow* m_pWindow = nullptr;
    CScriptCursor* m_pScript = nullptr;
};
