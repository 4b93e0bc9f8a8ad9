#include "editor/app/CEditorFace.h"

#include "editor/app/CEditorWindow.h"
#include "editor/app/CMessagesDock.h"
#include "editor/app/CPanelDock.h"
#include "editor/app/CViewArea.h"
#include "editor/app/CViewWidget.h"
#include "editor/app/FileChoice.h"
#include "editor/core/CEditorHost.h"
#include "engine/world/CEngineHost.h"
#include "engine/world/CWorld.h"

#include <QInputDialog>
#include <QLineEdit>

bool CEditorFrontEnd::LookUp(EKey eKey) const
{
    if (m_pScript != nullptr)
    {
        return m_pScript->IsKeyDown(eKey);
    }
    if (m_Hand.played.bOn)
    {
        return (eKey == EKey::Control && m_Hand.played.bRaise) ||
               (eKey == EKey::Alt && m_Hand.played.bLower);
    }
    // The keys that only raise or only lower answer for Ctrl and Alt, so the plug-in needs no
    // others, a recording has them, and desktops keep Alt for windows.
    const bool bHeld =
        (eKey == EKey::Control && m_Hand.bRaise) || (eKey == EKey::Alt && m_Hand.bLower);
    return bHeld || CWidgetFrontEnd::IsKeyDown(eKey);
}

bool CEditorFrontEnd::IsKeyDown(EKey eKey) const
{
    return m_bInEvent ? m_Held[static_cast<uint32_t>(eKey)] : LookUp(eKey);
}

void CEditorFrontEnd::OnBeforeEvent(const SHostEvent& event)
{
    if (event.eKind == EHostEvent::Undo || event.eKind == EHostEvent::Redo)
    {
        return; // no plug-in looks at keys then, and the event may have no end
    }
    for (const EKey eKey : {EKey::Control, EKey::Alt, EKey::Shift})
    {
        m_Held[static_cast<uint32_t>(eKey)] = LookUp(eKey);
    }
    m_bInEvent = true;
}

void CEditorFrontEnd::OnEvent(const SHostEvent& event)
{
    if (event.eKind == EHostEvent::LevelChanged)
    {
        m_Hand.ends.clear();
    }
    if (event.eKind == EHostEvent::LevelChanged || event.eKind == EHostEvent::TerrainReloaded)
    {
        m_Hand.path.Stop(); // its knots were on the other ground
        m_Hand.ruler.Clear();
    }
    // These come in the middle of another event.
    m_bInEvent =
        m_bInEvent &&
        (event.eKind == EHostEvent::UndoAdded || event.eKind == EHostEvent::LevelChanged ||
         event.eKind == EHostEvent::TerrainReloaded || event.eKind == EHostEvent::StepEnded);
}

std::string CEditorFrontEnd::GetFaultDetail() const
{
    return m_pMessages != nullptr ? m_pMessages->TakeFaultOfCall().toStdString() : std::string();
}

void CEditorFace::SetScript(CScriptCursor* pCursor)
{
    m_pScript = pCursor;
    m_FrontEnd.SetScript(pCursor);
}

bool CEditorFace::PromptText(const char* pszTitle, const char* pszLabel, std::string& strAnswer)
{
    bool bOk = false;
    const QString strText = QInputDialog::getText(m_pWindow,
                                                  QString::fromUtf8(pszTitle),
                                                  QString::fromUtf8(pszLabel),
                                                  QLineEdit::Normal,
                                                  QString::fromStdString(strAnswer),
                                                  &bOk);
    if (bOk)
    {
        strAnswer = strText.toStdString();
    }
    if (m_pWindow != nullptr)
    {
        m_pWindow->ShowState(); // what was asked for may be the name of a brush that is added
    }
    return bOk;
}

std::string CEditorFace::BrowseForFile(EFileDialog eKind,
                                       const char* pszDefaultExtension,
                                       const char* pszInitialName,
                                       const char* pszInitialFolder,
                                       const char* pszFilter)
{
    return ChooseFile(
        m_pWindow,
        eKind,
        pszDefaultExtension,
        pszInitialName,
        pszInitialFolder,
        pszFilter,
        m_pWindow != nullptr ? m_pWindow->GetDocuments().GetQuestions().GetSaveFolder() : "");
}

CViewArea* CEditorFace::FindViews() const
{
    return m_pWindow != nullptr ? m_pWindow->FindViews() : nullptr;
}

CViewWidget* CEditorFace::FindView(ViewId view) const
{
    CViewArea* pViews = FindViews();
    return pViews != nullptr ? pViews->Find(view) : nullptr;
}

ViewId CEditorFace::GetActiveView()
{
    CViewArea* pViews = FindViews();
    return pViews != nullptr ? pViews->GetActiveId() : NO_VIEW;
}

IViewWindow* CEditorFace::GetViewWindow(ViewId view)
{
    return FindView(view);
}

void CEditorFace::RedrawViews()
{
    if (CViewArea* pViews = FindViews())
    {
        pViews->RequestFrames();
        if (!m_pWindow->GetHost().GetInput().IsDragging()) // the panel may have changed the brush
        {
            m_pWindow->ShowState();
        }
    }
}

void CEditorFace::RefreshView(ViewId view)
{
    CViewWidget* pView = FindView(view);
    if (pView != nullptr)
    {
        pView->RequestFrame();
    }
}

bool CEditorFace::PickTerrain(ViewId view, ViewPoint point, SVec3& hit)
{
    if (m_pWindow == nullptr)
    {
        return false;
    }
    if (m_pScript != nullptr)
    {
        return m_pScript->Pick(m_pWindow->GetHost().GetEngine().GetWorld(), hit);
    }
    CViewWidget* pView = FindView(view);
    return pView != nullptr && pView->GetInput().Pick(point, hit);
}

bool CEditorFace::IsKeyboardNavigationOn()
{
    return m_pWindow != nullptr && m_pWindow->GetSettings().bKeyboardNavigation;
}

bool CEditorFace::IsCameraKeyDown(ECameraKey eKey)
{
    // In the order of ECameraKey.
    constexpr const char* NAMES[] = {"back", "right", "forward", "left"};
    CViewArea* pViews = FindViews();
    const CViewWidget* pView = pViews != nullptr ? pViews->GetActive() : nullptr;
    return pView != nullptr && pView->GetKeys().IsFlyKeyDown(NAMES[static_cast<uint32_t>(eKey)]);
}

void CEditorFace::TurnCamera(ViewId view, float fDegrees)
{
    CCamera* pCamera =
        m_pWindow != nullptr
            ? m_pWindow->GetHost().GetEngine().GetCWorld().GetCameraList().GetCameraOfView(view)
            : nullptr;
    if (pCamera != nullptr)
    {
        pCamera->Turn(fDegrees);
        RefreshView(view);
    }
}

void CEditorFace::LookFromDirection(ICamera* pCamera, float fX, float fY)
{
    CViewArea* pViews = FindViews();
    if (pViews != nullptr && pCamera != nullptr)
    {
        // All cameras that a plug-in can have are of this engine.
        pViews->LookFrom(*static_cast<CCamera*>(pCamera), fX, fY);
    }
}

void CEditorFace::SetViewToggle(ViewId view, bool bOn)
{
    CViewWidget* pView = FindView(view);
    if (pView != nullptr)
    {
        pView->SetWireFrame(bOn);
    }
}

CPanelDock* CEditorFace::FindPanel() const
{
    return m_pWindow != nullptr ? m_pWindow->FindPanel() : nullptr;
}

bool CEditorFace::OpenPluginView(const CRuntimeClass* pClass)
{
    CPanelDock* pPanel = FindPanel();
    return pPanel != nullptr && pPanel->Open(pClass);
}

void CEditorFace::ClosePluginView()
{
    if (CPanelDock* pPanel = FindPanel())
    {
        pPanel->Close();
    }
}

void CEditorFace::OnCaptionChanged(const char* /*pszCaption*/)
{
    if (m_pWindow != nullptr)
    {
        m_pWindow->ShowState();
    }
}

bool CEditorFace::OnProgress(const char* pszWhat, float fDone)
{
    return m_pWindow == nullptr || m_pWindow->ShowProgress(pszWhat, fDone);
}
