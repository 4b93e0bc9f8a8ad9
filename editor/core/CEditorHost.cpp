#include "editor/core/CEditorHost.h"

#include "editor/core/IHostFace.h"
#include "engine/paint/CPaintLayer.h"
#include "engine/world/CEngineHost.h"
#include "framework/core/CToolBar.h"
#include "framework/core/IFrontEnd.h"
#include "host/IPlugin.h"
#include "host/IPluginTools.h"
#include "host/Log.h"
#include "host/Reflection.h"
#include "host/World.h"

#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

namespace
{

constexpr char REGISTRY_ROOT[] = "\\Software\\Tellur";

std::string GetText(const char* pszText)
{
    return pszText != nullptr ? pszText : "";
}

// For what is kept for this run alone, until a program names a folder of its own.
std::string GetTemporaryFolder()
{
    std::error_code error;
    return std::filesystem::temp_directory_path(error).string();
}

} // namespace

CEditorHost::CEditorHost(IHostFace& face)
    : m_Face(face)
    , m_FrontEndBefore(SetFrontEnd(face.GetFrontEnd()))
    , m_ProgressBefore(SetProgressSink(this))
    , m_Engine(std::make_unique<CEngineHost>())
    , m_PaintLayer(std::make_unique<CPaintLayer>(m_Engine->GetCWorld()))
    , m_Changes(m_Engine->GetCWorld())
    , m_Input(m_Registry, m_Observers, m_Changes)
    , m_History(m_Registry, m_Input, m_Observers, m_Changes)
    , m_Protection(m_Engine->GetCWorld(), m_Input, m_History, m_Observers)
    , m_Level(m_Engine->GetCWorld(),
              m_History,
              m_Registry,
              m_Input,
              m_Observers,
              m_Protection,
              m_Changes,
              GetTemporaryFolder())
    , m_Ground(m_Engine->GetCWorld(), m_Input, m_History, m_Observers, m_Protection, m_Level)
{
    // A mode that is left gets the release of its drag while it is still current.
    m_Modes.SetDragEnd([this] { m_Input.EndDrag(); });
    m_PaintLayer->SetListener([this] { m_Face.RedrawViews(); });
}

CEditorHost::~CEditorHost()
{
    DestroyPluginObjects();
    m_PaintLayer->SetListener(nullptr);
    SetProgressSink(m_ProgressBefore);
    SetFrontEnd(m_FrontEndBefore);
}

bool CEditorHost::PrepareWindows()
{
    return m_Face.PrepareWindows();
}

void CEditorHost::RenderFrame()
{
    m_Input.Guard("CEditorHost::RenderFrame",
                  [this]
                  {
                      m_Engine->BeginFrame();
                      m_Modes.RenderCurrentMode();
                  });
}

void CEditorHost::NotifyPanelClosed()
{
    m_Settings.SetPanelOpen(false);
    m_Input.Notify(NOTIFY_PANEL_CLOSED);
}

bool CEditorHost::SwitchPanel()
{
    m_Input.EndDrag();
    const bool bKnown = m_PanelHandle != 0;
    const bool bFirst = !bKnown && !m_Settings.IsPanelOpen(); // none has had a panel so far
    for (IPlugin* pPlugin : bFirst ? m_Registry.GetInput() : std::vector<IPlugin*>())
    {
        pPlugin->Activate(true);
    }
    return bFirst || (bKnown && m_Input.SendCommand(m_PanelHandle + PANEL_COMMAND));
}

void CEditorHost::LoadSettings()
{
    m_Settings.Load(m_Registry.GetSettings());
}

bool CEditorHost::SaveSettings()
{
    return m_Settings.Save(m_Registry.GetSettings());
}

void CEditorHost::DestroyPluginObjects()
{
    m_Input.ForgetDrag();
    // Modes, undo records and processes are code of the plug-in's library, so all of them go before
    // it.
    m_Modes.DestroyModes();
    m_History.GetStack().Clear();
    m_Registry.Clear();
    m_Settings.ClearRegistered();
    m_Caption.clear();
    m_PanelHandle = 0;
    GetFrontEnd().SetCursor(nullptr); // cursors are resources of the plug-in's library
    GetFrontEnd().ReleaseCapture();
}

ITextureManager* CEditorHost::GetTextureManager()
{
    return &m_Engine->GetTextures();
}

void CEditorHost::RegisterProcess(IEditorAction* pProcess)
{
    m_Registry.AddProcess(pProcess);
}

IPaintLayer* CEditorHost::GetPaintLayer()
{
    return m_PaintLayer.get();
}

void CEditorHost::TurnCamera(ViewId view, float fDegrees)
{
    m_Face.TurnCamera(view, fDegrees);
}

void CEditorHost::LookFromDirection(ICamera* pCamera, float fX, float fY)
{
    m_Face.LookFromDirection(pCamera, fX, fY);
}

void CEditorHost::SetViewToggle(ViewId view, bool bOn)
{
    m_Face.SetViewToggle(view, bOn);
}

bool CEditorHost::IsKeyboardNavigationOn()
{
    return m_Face.IsKeyboardNavigationOn();
}

bool CEditorHost::IsCameraBackKeyDown()
{
    return m_Face.IsCameraKeyDown(ECameraKey::Back);
}

bool CEditorHost::IsCameraRightKeyDown()
{
    return m_Face.IsCameraKeyDown(ECameraKey::Right);
}

bool CEditorHost::IsCameraForwardKeyDown()
{
    return m_Face.IsCameraKeyDown(ECameraKey::Forward);
}

bool CEditorHost::IsCameraLeftKeyDown()
{
    return m_Face.IsCameraKeyDown(ECameraKey::Left);
}

void CEditorHost::OnTerrainChanged()
{
    ++m_Counters.nTerrainChanged;
}

void CEditorHost::RefreshAfterReload()
{
    m_Level.TellReloaded();
}

void CEditorHost::RegisterSetting(const char* pszName,
                                  ERTTIType eType,
                                  void* pValue,
                                  const char* pszEditFlags)
{
    m_Settings.Register(pszName, eType, pValue, pszEditFlags);
}

bool CEditorHost::PromptText(const char* pszTitle, const char* pszLabel, std::string& strAnswer)
{
    return m_Face.PromptText(pszTitle, pszLabel, strAnswer);
}

std::string CEditorHost::BrowseForFile(EFileDialog eKind,
                                       const char* pszDefaultExtension,
                                       const char* pszInitialName,
                                       const char* pszInitialFolder,
                                       const char* pszFilter)
{
    std::string strPath = m_Face.BrowseForFile(
        eKind, pszDefaultExtension, pszInitialName, pszInitialFolder, pszFilter);
    if (eKind == FILE_DIALOG_OPEN && strPath.find('"') != std::string::npos)
    {
        // What plug-ins open they name in files of theirs, which a quotation mark makes unreadable.
        const std::string strFault =
            strPath + ": a file with a quotation mark in its path cannot be used here";
        CrashLog("[CEditorHost::BrowseForFile] %s\n", strFault.c_str());
        GetFrontEnd().MessageBox(strFault.c_str(), MB_OK | MB_ICONEXCLAMATION);
        return {};
    }
    return strPath;
}

void CEditorHost::RedrawViews()
{
    m_Face.RedrawViews();
}

ViewId CEditorHost::GetActiveView()
{
    return m_Face.GetActiveView();
}

IViewWindow* CEditorHost::GetViewWindow(ViewId view)
{
    return m_Face.GetViewWindow(view);
}

void CEditorHost::RefreshView(ViewId view)
{
    ++m_Counters.nRefreshes;
    m_Face.RefreshView(view);
}

bool CEditorHost::HandlesViewAction(ViewId view, uint32_t uActionHandle)
{
    return m_Face.HandlesViewAction(view, uActionHandle);
}

void CEditorHost::OpenPluginView(const CRuntimeClass* pClass)
{
    m_Settings.SetPanelOpen(true); // what the user wants, also where no window can be shown
    m_Face.OpenPluginView(pClass);
}

void CEditorHost::ClosePluginView()
{
    m_Settings.SetPanelOpen(false);
    m_Face.ClosePluginView();
}

ModeManager* CEditorHost::GetModeManager()
{
    return &m_Modes;
}

bool CEditorHost::CreatePluginToolBar(CToolBar* pToolBar, uint32_t uResourceId)
{
    if (pToolBar == nullptr || !pToolBar->LoadToolBar(uResourceId))
    {
        return false;
    }
    m_Registry.AddToolBar(pToolBar);
    return true;
}

void CEditorHost::InsertPluginMenu(
    int iPosition, IPlugin* pPlugin, CMenu* pPopup, const char* pszTitle, const char* pszParent)
{
    if (pPopup != nullptr)
    {
        m_Registry.AddMenu({iPosition, pPlugin, pPopup, GetText(pszTitle), GetText(pszParent)});
    }
}

bool CEditorHost::QueryEntityClass(const char* pszClassName)
{
    return pszClassName != nullptr && std::strcmp(pszClassName, ENVIRONMENT_CLASS) == 0 &&
           m_Engine->GetWorld()->GetEnvironment() != nullptr;
}

void CEditorHost::SetPluginViewState(EPluginViewState /*eState*/,
                                     uint32_t uActionHandle,
                                     uint32_t /*uReserved*/)
{
    m_PanelHandle = uActionHandle;
}

void CEditorHost::GetEnvironmentFile(const char* pszClassName,
                                     uint32_t /*uActionHandle*/,
                                     EEnvironmentRequest eRequest,
                                     const std::string* pIn,
                                     std::string* pOut)
{
    if (!QueryEntityClass(pszClassName))
    {
        return;
    }
    if (eRequest == ENVIRONMENT_FULL_PATH && pIn != nullptr && pOut != nullptr)
    {
        *pOut = m_Level.GetHeights().GetFile(*pIn);
    }
    // The terrain tells CLevelHeights, which makes a step of undo of it.
    else if (eRequest == ENVIRONMENT_RELOAD)
    {
        m_Engine->GetWorld()->ReloadTerrain();
    }
}

void CEditorHost::RegisterPluginA(IPlugin* pPlugin)
{
    m_Registry.AddInput(pPlugin);
}

void CEditorHost::UnregisterPluginA(IPlugin* pPlugin)
{
    m_Registry.RemoveInput(pPlugin);
}

void CEditorHost::RegisterPluginB(IPlugin* pPlugin)
{
    m_Registry.AddSettings(pPlugin);
}

void CEditorHost::UnregisterPluginB(IPlugin* pPlugin)
{
    m_Registry.RemoveSettings(pPlugin);
}

const char* CEditorHost::GetRegistryRoot()
{
    return REGISTRY_ROOT;
}

void CEditorHost::SetModeCaption(const char* pszCaption)
{
    m_Caption = GetText(pszCaption);
    m_Face.OnCaptionChanged(m_Caption.c_str());
}

const char* CEditorHost::LookupText(int32_t iId, const void* /*pObject*/)
{
    const CRTTIObject* pObject = m_Engine->FindObjectById(iId);
    return pObject != nullptr ? pObject->GetClassNameA() : nullptr;
}

void CEditorHost::AddUndo(CUndo* pUndo)
{
    std::string strText;
    try
    {
        strText = GetUndoText();
    }
    catch (const std::bad_alloc&)
    {
        strText.clear(); // a step without a name can be undone, too
    }
    m_History.Add(pUndo, std::move(strText));
}

// A step of a stroke is named after its tool, any other after the mode that it came from.
std::string CEditorHost::GetUndoText() const
{
    auto* pTools = m_Input.IsMouseEvent() ? m_Registry.FindInterface<IPluginTools>() : nullptr;
    return pTools != nullptr ? pTools->GetToolName() : m_Caption;
}

void CEditorHost::RegisterActions(const std::vector<SActionDescriptor>& actions)
{
    m_Registry.AddActions(actions);
}

int CEditorHost::PickTerrain(ViewId view, ViewPoint point, SVec3& hit, uint32_t /*uReserved*/)
{
    if (!m_Face.PickTerrain(view, point, hit))
    {
        return PICK_MISS;
    }
    m_Input.NoteHit(hit);
    return PICK_HIT;
}

bool CEditorHost::OnProgress(const char* pszWhat, float fDone)
{
    return m_Face.OnProgress(pszWhat, fDone);
}
