#include "tellur/plugin/IPluginImpl.h"

#include "framework/core/CResourceScope.h"
#include "framework/core/CRuntimeClass.h"
#include "framework/core/ResourceModule.h"
#include "host/ActionIds.h"
#include "host/EditorHost.h"
#include "host/EngineHost.h"
#include "host/IEditorAction.h"
#include "host/ModeManager.h"
#include "host/Terrain.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/CommandIds.h"
#include "tellur/modification/CHeightTiles.h"
#include "tellur/modification/CTerrainModification.h"
#include "tellur/painting/CTerrain2DDrawDlg.h"
#include "tellur/panel/CTellurView.h"
#include "tellur/plugin/CEditorAction.h"
#include "tellur/plugin/CTellurProcessExportTerrainToSTL.h"
#include "tellur/plugin/HeightMapFile.h"
#include "tellur/resources/PluginResources.h"

#include <cstdio>

namespace
{

constexpr uint32_t DEFAULT_TOGGLE_KEY = 84; // the letter T

} // namespace

IPluginImpl::IPluginImpl()
    : SPluginParts(GetBrushes())
    , CPainting(modes)
    , CPluginTools(GetBrushes(), brush, modes, static_cast<CPainting&>(*this), panel)
    , CPluginMark(
          terraforming, brush, static_cast<CPainting&>(*this), static_cast<CPluginTools&>(*this))
    , CPluginStrokes(terraforming, brush, static_cast<CPluginTools&>(*this))
    , CPluginScript(
          {GetBrushes(), GetChanges(), brush, modes, static_cast<CPainting&>(*this), panel})
{
    SetPluginContext(this);
}

IPluginImpl::~IPluginImpl()
{
    // Brushes ask the context for the host while they go, so it stays set until they are gone.
    terraforming.DropSession();
    DestroyDialog();
    menus.DestroyMenu();
    GetFunctions().Clear();
    brush.Clear();
    ClearBrushes();
    FreeKeptTiles();
    SetPluginContext(nullptr);
}

IPlugin* IPluginImpl::Attach(EditorHost* pEditorHost, uint32_t uPlugin, EngineHost* pEngineHost)
{
    m_pEditorHost = pEditorHost;
    m_pEngineHost = pEngineHost;
    m_ActionHandle = MakeActionHandle(uPlugin);
    m_pWorld = m_pEngineHost->GetWorld();
    return this;
}

void IPluginImpl::Initialize()
{
    const CResourceScope scope(&GetPluginResources());
    menus.CreateToolBar();
    menus.CreateMenu(this);
    m_pEditorHost->RegisterPluginA(this);
    m_pEditorHost->RegisterPluginB(this);
    modes.Register(*m_pEditorHost->GetModeManager());
    InitializeFunctionsAndBrushes();
    LoadPredefined();
    brush.Forget();
    terraforming.ReleasePreview();
    terraforming.ApplyOverlay(EEditOverlay::Off);
    panel.ShowOtherBrush();
    RegisterSetting();
    m_pEditorHost->RegisterProcess(new CTellurProcessExportTerrainToSTL);
    CEditorAction::PublishEngineHost(m_pEngineHost);
}

void IPluginImpl::Activate(bool bShow)
{
    if (bShow)
    {
        OnCommand(COMMAND_TOGGLE_PANEL);
    }
}

void IPluginImpl::Shutdown()
{
    m_pEditorHost->UnregisterPluginA(this);
    m_pEditorHost->UnregisterPluginB(this);
}

void IPluginImpl::DestroyObject(uint32_t /*uReserved*/, IPluginObject* pObject)
{
    delete pObject;
}

void IPluginImpl::ReleaseWorldResources()
{
    terraforming.ForgetLevel();
    FreeKeptTiles();
}

uint32_t* IPluginImpl::GetActionHandle(uint32_t* pHandle)
{
    *pHandle = m_ActionHandle;
    return pHandle;
}

int32_t IPluginImpl::GetModeGroup()
{
    return MODE_GROUP_TERRAIN;
}

void IPluginImpl::GetCommandText(int32_t iPlugin, int32_t iCommand, char* pszBuffer)
{
    const CResourceScope scope(&GetPluginResources());
    CopyCommandText(iPlugin, iCommand, pszBuffer);
}

void IPluginImpl::RegisterActions()
{
    const std::vector<SActionDescriptor> actions = {
        {MODE_GROUP_TERRAIN,
         ACTION_TOGGLE_TERRAFORMING,
         "Toggle terrain modification mode",
         DEFAULT_TOGGLE_KEY,
         KEY_CONTROL},
        {MODE_GROUP_TERRAIN, ACTION_BRUSH_LARGER, "Increase Tellur brush size", 0, 0},
        {MODE_GROUP_TERRAIN, ACTION_BRUSH_SMALLER, "Decrease Tellur brush size", 0, 0},
    };
    m_pEditorHost->RegisterActions(actions);
}

void IPluginImpl::OnCommand(int32_t iCommand)
{
    const CResourceScope scope(&GetPluginResources());
    if (m_pEditorHost == nullptr)
    {
        return;
    }
    switch (iCommand)
    {
    case COMMAND_TOGGLE_PANEL:
        TogglePanel();
        break;
    case COMMAND_SAVE_HEIGHT_MAP:
        SaveHeightMap(m_HeightMapPath.c_str());
        break;
    case COMMAND_APPLY_PICKED_HEIGHT:
        heightPick.Apply();
        break;
    case COMMAND_EXPORT_EXTENT:
        SetMode(modes.GetExportExtentId(), 0);
        break;
    case COMMAND_EDIT_BITMAP:
        OpenDialog();
        break;
    default:
        break;
    }
}

void IPluginImpl::TogglePanel()
{
    if (panel.IsOpen())
    {
        panel.StoreExtentLimits();
        SetToolBarButton(COMMAND_TOGGLE_PANEL, false);
        m_pEditorHost->ClosePluginView();
        return;
    }
    SetToolBarButton(COMMAND_TOGGLE_PANEL, true);
    m_pEditorHost->SetPluginViewState(PLUGIN_VIEW_OPENS, m_ActionHandle, 0);
    m_pEditorHost->OpenPluginView(&CTellurView::GetRuntimeClass());
}

void IPluginImpl::OnAction(ViewId view, int32_t iAction, uint32_t uCount)
{
    const CResourceScope scope(&GetPluginResources());
    if (m_pEditorHost == nullptr)
    {
        return;
    }
    ModeManager* pManager = m_pEditorHost->GetModeManager();
    if (iAction == ACTION_TOGGLE_TERRAFORMING)
    {
        EnableTerraforming(pManager->GetCurrentModeId() != modes.GetTerraformingId());
        m_pEditorHost->RefreshView(view);
    }
    if (modes.IsGroupCurrent())
    {
        pManager->OnAction(view, iAction, uCount);
    }
}

void IPluginImpl::OnLButtonDown(
    ViewId view, uint32_t uFlags, int32_t iX, int32_t iY, int32_t iDx, int32_t iDy)
{
    if (modes.IsGroupCurrent())
    {
        const SButtonBlock block = {iX, iY, iDx, iDy};
        m_pEditorHost->GetModeManager()->OnLButtonDown(view, uFlags, &block);
    }
}

void IPluginImpl::OnLButtonUp(
    ViewId view, uint32_t uFlags, int32_t iX, int32_t iY, int32_t iDx, int32_t iDy)
{
    if (modes.IsGroupCurrent())
    {
        const SButtonBlock block = {iX, iY, iDx, iDy};
        m_pEditorHost->GetModeManager()->OnLButtonUp(view, uFlags, &block);
    }
}

void IPluginImpl::OnMouseMove(ViewId view,
                              uint32_t uFlags,
                              int32_t iX,
                              int32_t iY,
                              int32_t iWheel,
                              int32_t iButtons,
                              int32_t iDx,
                              int32_t iDy)
{
    if (modes.IsGroupCurrent())
    {
        const SPointBlock point = {iX, iY};
        const SWheelBlock wheel = {iWheel, iButtons};
        const SStepBlock step = {iDx, iDy};
        m_pEditorHost->GetModeManager()->OnMouseMove(view, uFlags, &point, &wheel, &step);
    }
}

void IPluginImpl::Notify(uintptr_t uFirst, uintptr_t uSecond, uintptr_t uThird)
{
    if (modes.IsGroupCurrent())
    {
        m_pEditorHost->GetModeManager()->Notify(uFirst, uSecond, uThird);
    }
}

bool IPluginImpl::AddContextMenuItems(CMenu* pMenu,
                                      ViewId view,
                                      ViewPoint point,
                                      uint32_t /*uReserved*/)
{
    const CResourceScope scope(&GetPluginResources());
    return heightPick.AddItem(pMenu, view, point);
}

bool IPluginImpl::HasContextMenuItems(ViewId view, ViewPoint point, uint32_t /*uReserved*/)
{
    return heightPick.HasItem(view, point);
}

void IPluginImpl::OnHostNotify(int32_t iCode, uintptr_t /*uReserved*/)
{
    const CResourceScope scope(&GetPluginResources());
    switch (iCode)
    {
    case NOTIFY_PANEL_CLOSED:
        SetToolBarButton(COMMAND_TOGGLE_PANEL, false);
        break;
    case NOTIFY_LEVEL_CHANGED:
        FreeKeptTiles(); // those of the records, which the host has dropped by now
        panel.FillResolutionList();
        break;
    case NOTIFY_HOST_GOES:
        m_pEditorHost = nullptr;
        m_pEngineHost = nullptr;
        m_pWorld = nullptr;
        CEditorAction::PublishEngineHost(nullptr);
        break;
    default:
        break;
    }
}

bool IPluginImpl::UpdateTerrainNormals()
{
    Terrain* pTerrain = GetCurrentTerrain();
    return pTerrain != nullptr && pTerrain->UpdateNormals();
}

bool IPluginImpl::GetToolTipText(SToolTipText& tip) const
{
    const CResourceScope scope(&GetPluginResources());
    if (!tip.bIsWindow)
    {
        return false;
    }
    std::string strText;
    LoadStringResource(tip.uId, strText);
    std::snprintf(tip.szText, sizeof(tip.szText), "%s", strText.c_str());
    tip.pInstance = nullptr;
    return true;
}

void IPluginImpl::CheckHeightMapWritable()
{
    ::CheckHeightMapWritable();
}

bool IPluginImpl::SaveHeightMap(const char* pszPath)
{
    return ::SaveHeightMap(pszPath);
}

void IPluginImpl::ChangeHeightMapResolution(int32_t iVertices)
{
    ::ChangeHeightMapResolution(iVertices);
}

bool IPluginImpl::AddBrushToPredefined(CTellurBrush* pBrush)
{
    const CResourceScope scope(&GetPluginResources());
    return AddToPredefined(pBrush);
}

void IPluginImpl::UsePredefinedBrush(const CTellurBrush& predefined)
{
    const CResourceScope scope(&GetPluginResources());
    if (m_pEditorHost == nullptr)
    {
        return;
    }
    // Without a brush the mode is not available; to try would only log that.
    if (brush.Get() != nullptr &&
        m_pEditorHost->GetModeManager()->GetCurrentModeId() != modes.GetTerraformingId())
    {
        EnableTerraforming(true);
    }
    brush.UseCloneOf(predefined);
    TellTaken(predefined, brush.Get());
}
