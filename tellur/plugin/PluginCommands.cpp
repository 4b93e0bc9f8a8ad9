// Commands, actions, input and notifications: what the host tells the plug-in while it runs.

#include "framework/core/CResourceScope.h"
#include "framework/core/CRuntimeClass.h"
#include "framework/core/ResourceModule.h"
#include "host/ActionIds.h"
#include "host/EditorHost.h"
#include "host/IEditorAction.h"
#include "host/Log.h"
#include "host/ModeManager.h"
#include "host/Notice.h"
#include "host/NumberText.h"
#include "host/Reflection.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/CommandIds.h"
#include "tellur/modification/CHeightTiles.h"
#include "tellur/painting/CModeEditTerrainType.h"
#include "tellur/panel/CTellurView.h"
#include "tellur/plugin/CEditorAction.h"
#include "tellur/plugin/IPluginImpl.h"
#include "tellur/resources/PluginResources.h"

#include <cstdio>
#include <cstring>

namespace
{

constexpr uint32_t DEFAULT_TOGGLE_KEY = 84; // the letter T
constexpr const char* HEIGHT_FIELD = "m_Height";

} // namespace

uint32_t IPluginImpl::MapResourceId(uint32_t uResourceId) const
{
    if (uResourceId == 0)
    {
        return 0;
    }
    for (uint32_t uCommand = 1; uCommand <= COMMAND_LAST; ++uCommand)
    {
        if (COMMAND_RESOURCE_IDS[uCommand - 1] == uResourceId)
        {
            return GetGlobalCommand(uCommand);
        }
    }
    return m_ActionHandle;
}

void IPluginImpl::GetCommandText(int32_t iPlugin, int32_t iCommand, char* pszBuffer)
{
    const CResourceScope scope(&GetPluginResources());
    if (pszBuffer == nullptr || iPlugin != static_cast<int32_t>((m_ActionHandle >> 8U) & 0x3FU))
    {
        return;
    }
    std::string strText;
    if (iCommand >= 1 && iCommand <= static_cast<int32_t>(COMMAND_LAST) &&
        iCommand != COMMAND_APPLY_PICKED_HEIGHT)
    {
        LoadStringResource(COMMAND_RESOURCE_IDS[iCommand - 1], strText);
    }
    std::memcpy(pszBuffer, strText.c_str(), strText.size() + 1);
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

bool IPluginImpl::SetMode(int32_t iModeId, int32_t iParameter)
{
    if (m_pEditorHost == nullptr)
    {
        return false;
    }
    ModeManager* pModes = m_pEditorHost->GetModeManager();
    if (iModeId == NO_MODE)
    {
        return pModes->DeactivateMode(iParameter);
    }
    if (!pModes->IsModeAvailable(iModeId))
    {
        LogR("[IPluginImpl::SetMode] mode %d not available\n", iModeId);
        return false;
    }
    if (!pModes->CanDeactivateCurrentMode())
    {
        LogR("[IPluginImpl::SetMode] current mode cannot be deactivated\n");
        return false;
    }
    return pModes->ActivateMode(iModeId, iParameter);
}

void IPluginImpl::EnableTerraforming(bool bEnable)
{
    if (m_pEditorHost == nullptr)
    {
        return;
    }
    ModeManager* pModes = m_pEditorHost->GetModeManager();
    const bool bAlreadyTerraforming = pModes->GetCurrentModeId() == m_TerraformingModeId;
    if (bAlreadyTerraforming == bEnable)
    {
        LogR("[IPluginImpl::EnableTerraforming] bAlreadyTerraforming == bEnable\n");
        return;
    }
    if (bEnable)
    {
        SetMode(m_TerraformingModeId, 0);
    }
    else
    {
        const std::string strTool = GetToolName(); // gone with the mode
        if (pModes->DeactivateMode(0))
        {
            Notice(((strTool.empty() ? "The tool" : strTool) + " was put away").c_str());
        }
    }
}

void IPluginImpl::SetToolBarButton(uint32_t uCommand, bool bPressed)
{
    m_ToolBar.PressButton(GetGlobalCommand(uCommand), bPressed);
    m_ToolBar.CheckButton(GetGlobalCommand(uCommand), bPressed);
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
        ApplyPickedHeight();
        break;
    case COMMAND_EXPORT_EXTENT:
        SetMode(m_ExportExtentModeId, 0);
        break;
    case COMMAND_EDIT_BITMAP:
        Open2DDrawDlg();
        break;
    default:
        break;
    }
}

void IPluginImpl::TogglePanel()
{
    if (m_pPanel != nullptr)
    {
        m_pPanel->StoreExtentLimits();
        SetToolBarButton(COMMAND_TOGGLE_PANEL, false);
        m_pEditorHost->ClosePluginView();
        return;
    }
    SetToolBarButton(COMMAND_TOGGLE_PANEL, true);
    m_pEditorHost->SetPluginViewState(PLUGIN_VIEW_OPENS, m_ActionHandle, 0);
    m_pEditorHost->OpenPluginView(&CTellurView::GetRuntimeClass());
}

bool IPluginImpl::Open2DDrawDlg()
{
    if (m_pEditTerrainTypeMode == nullptr)
    {
        return false;
    }
    if (m_p2DDrawDlg == nullptr)
    {
        auto pDialog = std::make_unique<CTerrain2DDrawDlg>();
        if (!pDialog->Create(nullptr))
        {
            return false;
        }
        m_p2DDrawDlg = std::move(pDialog);
        m_p2DDrawDlg->SetUser(m_pEditTerrainTypeMode);
        m_p2DDrawDlg->SetExtentPointer(m_pEditTerrainTypeMode->GetBrushHalfSize());
        m_p2DDrawDlg->LoadColours();
        m_p2DDrawDlg->SetBrushShape(m_pEditTerrainTypeMode->GetBrushShape(),
                                    CTerrain2DDrawDlg::DEFAULT_SHAPE);
    }
    m_p2DDrawDlg->ShowWindow(true);
    return true;
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

CRTTIField* IPluginImpl::FindHeightField() const
{
    const CRTTIObject* pObject =
        m_pCurrentBrush != nullptr ? m_pCurrentBrush->GetRTTIObject() : nullptr;
    return pObject != nullptr ? pObject->FindField(HEIGHT_FIELD) : nullptr;
}

void IPluginImpl::ApplyPickedHeight()
{
    CRTTIField* pField = m_pPanel != nullptr ? FindHeightField() : nullptr;
    if (pField != nullptr && pField->GetType() == RTTI_FLOAT)
    {
        m_pCurrentBrush->GetRTTIObject()->SetFieldFloatEditor(pField, m_PickedHeight);
        m_pPanel->RefreshBrushControls();
    }
}

bool IPluginImpl::IsModeGroupCurrent() const
{
    return m_pEditorHost != nullptr &&
           m_pEditorHost->GetModeManager()->GetCurrentModeGroup() == MODE_GROUP_TERRAIN;
}

void IPluginImpl::OnAction(ViewId view, int32_t iAction, uint32_t uCount)
{
    const CResourceScope scope(&GetPluginResources());
    if (m_pEditorHost == nullptr)
    {
        return;
    }
    ModeManager* pModes = m_pEditorHost->GetModeManager();
    if (iAction == ACTION_TOGGLE_TERRAFORMING)
    {
        EnableTerraforming(pModes->GetCurrentModeId() != m_TerraformingModeId);
        m_pEditorHost->RefreshView(view);
    }
    if (IsModeGroupCurrent())
    {
        pModes->OnAction(view, iAction, uCount);
    }
}

void IPluginImpl::OnLButtonDown(
    ViewId view, uint32_t uFlags, int32_t iX, int32_t iY, int32_t iDx, int32_t iDy)
{
    if (IsModeGroupCurrent())
    {
        const SButtonBlock block = {iX, iY, iDx, iDy};
        m_pEditorHost->GetModeManager()->OnLButtonDown(view, uFlags, &block);
    }
}

void IPluginImpl::OnLButtonUp(
    ViewId view, uint32_t uFlags, int32_t iX, int32_t iY, int32_t iDx, int32_t iDy)
{
    if (IsModeGroupCurrent())
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
    if (IsModeGroupCurrent())
    {
        const SPointBlock point = {iX, iY};
        const SWheelBlock wheel = {iWheel, iButtons};
        const SStepBlock step = {iDx, iDy};
        m_pEditorHost->GetModeManager()->OnMouseMove(view, uFlags, &point, &wheel, &step);
    }
}

void IPluginImpl::Notify(uintptr_t uFirst, uintptr_t uSecond, uintptr_t uThird)
{
    if (IsModeGroupCurrent())
    {
        m_pEditorHost->GetModeManager()->Notify(uFirst, uSecond, uThird);
    }
}

bool IPluginImpl::CanPickHeight(ViewId view) const
{
    return m_pEditorHost != nullptr && m_pPanel != nullptr && view != NO_VIEW &&
           FindHeightField() != nullptr;
}

bool IPluginImpl::PickHeight(ViewId view, ViewPoint point, float& fHeight) const
{
    SVec3 hit;
    const bool bHit = m_pEditorHost->PickTerrain(view, point, hit, 0) == PICK_HIT;
    fHeight = bHit ? hit.y : -1.0F;
    return bHit;
}

bool IPluginImpl::AddContextMenuItems(CMenu* pMenu,
                                      ViewId view,
                                      ViewPoint point,
                                      uint32_t /*uReserved*/)
{
    const CResourceScope scope(&GetPluginResources());
    if (pMenu == nullptr || !CanPickHeight(view))
    {
        return false;
    }
    PickHeight(view, point, m_PickedHeight);
    const std::string strHeight = FormatNumber(static_cast<double>(m_PickedHeight), 2);
    char szText[128]; // the largest float has 39 digits before the point
    std::snprintf(szText, sizeof(szText), "Set m_Height to %5s", strHeight.c_str());
    pMenu->InsertItem(0, GetGlobalCommand(COMMAND_APPLY_PICKED_HEIGHT), szText);
    return true;
}

bool IPluginImpl::HasContextMenuItems(ViewId view, ViewPoint point, uint32_t /*uReserved*/)
{
    float fHeight = 0.0F;
    return CanPickHeight(view) && PickHeight(view, point, fHeight);
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
        if (m_pPanel != nullptr)
        {
            m_pPanel->FillResolutionList();
        }
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
