#include "tests/support/FakeHost.h"

#include <algorithm>
#include <utility>

namespace
{

const char* OrNull(const char* pszText)
{
    return pszText != nullptr ? pszText : "null";
}

void AddButton(
    FakeCalls* pCalls, const char* pszCall, ViewId view, uint32_t uFlags, const SButtonBlock& block)
{
    AddCall(pCalls,
            "Modes.%s(%u, %u, %d %d %d %d)",
            pszCall,
            view,
            uFlags,
            block.x,
            block.y,
            block.dx,
            block.dy);
}

ViewPoint Pack(int32_t iX, int32_t iY)
{
    return (static_cast<uint32_t>(iX) & 0xFFFFU) | (static_cast<uint32_t>(iY) << 16U);
}

} // namespace

int CFakeModeManager::RegisterMode(IEditorMode* pMode, int iGroup)
{
    if (pMode == nullptr)
    {
        return -1;
    }
    AddCall(pCalls, "Modes.RegisterMode(%s, %d)", OrNull(pMode->GetName()), iGroup);
    const int iId = static_cast<int>(modes.size());
    modes.push_back({std::unique_ptr<IEditorMode>(pMode), iGroup});
    pMode->SetId(static_cast<uint32_t>(iId));
    return iId;
}

IEditorMode* CFakeModeManager::GetCurrent() const
{
    return iCurrent >= 0 ? modes[static_cast<size_t>(iCurrent)].pMode.get() : nullptr;
}

bool CFakeModeManager::ActivateMode(int iModeId, int iParameter)
{
    AddCall(pCalls, "Modes.ActivateMode(%d, %d)", iModeId, iParameter);
    if (!IsModeAvailable(iModeId) || !CanDeactivateCurrentMode())
    {
        return false;
    }
    if (IEditorMode* pOld = GetCurrent())
    {
        iCurrent = -1;
        pOld->Deactivate();
    }
    iCurrent = iModeId;
    GetCurrent()->Activate();
    return true;
}

bool CFakeModeManager::DeactivateMode(int iParameter)
{
    AddCall(pCalls, "Modes.DeactivateMode(%d)", iParameter);
    if (!CanDeactivateCurrentMode())
    {
        return false;
    }
    if (IEditorMode* pOld = GetCurrent())
    {
        iCurrent = -1;
        pOld->Deactivate();
    }
    return true;
}

bool CFakeModeManager::CanDeactivateCurrentMode()
{
    IEditorMode* pMode = GetCurrent();
    return mayDeactivate.value_or(pMode == nullptr || pMode->CanDeactivate());
}

int CFakeModeManager::GetCurrentModeGroup()
{
    return iCurrent >= 0 ? modes[static_cast<size_t>(iCurrent)].iGroup : -1;
}

bool CFakeModeManager::IsModeAvailable(int iModeId)
{
    return iModeId >= 0 && iModeId < static_cast<int>(modes.size()) &&
           modes[static_cast<size_t>(iModeId)].pMode->IsAvailable();
}

void CFakeModeManager::OnLButtonDown(ViewId view, uint32_t uFlags, const SButtonBlock* pBlock)
{
    AddButton(pCalls, "OnLButtonDown", view, uFlags, *pBlock);
    if (IEditorMode* pMode = GetCurrent())
    {
        pMode->OnLButtonDown(view, Pack(pBlock->x, pBlock->y), uFlags);
    }
}

void CFakeModeManager::OnMouseMove(ViewId view,
                                   uint32_t uFlags,
                                   const SPointBlock* pPoint,
                                   const SWheelBlock* pWheel,
                                   const SStepBlock* pStep)
{
    AddCall(pCalls,
            "Modes.OnMouseMove(%u, %u, %d %d, %d %d, %d %d)",
            view,
            uFlags,
            pPoint->x,
            pPoint->y,
            pWheel->wheel,
            pWheel->buttons,
            pStep->dx,
            pStep->dy);
    if (IEditorMode* pMode = GetCurrent())
    {
        pMode->OnMouseMove(view,
                           uFlags,
                           Pack(pPoint->x, pPoint->y),
                           reinterpret_cast<uintptr_t>(pWheel),
                           reinterpret_cast<uintptr_t>(pStep));
    }
}

void CFakeModeManager::OnLButtonUp(ViewId view, uint32_t uFlags, const SButtonBlock* pBlock)
{
    AddButton(pCalls, "OnLButtonUp", view, uFlags, *pBlock);
    if (IEditorMode* pMode = GetCurrent())
    {
        pMode->OnLButtonUp(view, Pack(pBlock->x, pBlock->y), uFlags);
    }
}

void CFakeModeManager::OnAction(ViewId view, int iAction, uint32_t uCount)
{
    AddCall(pCalls, "Modes.OnAction(%u, %d, %u)", view, iAction, uCount);
    if (IEditorMode* pMode = GetCurrent())
    {
        pMode->OnAction(view, iAction, uCount);
    }
}

void CFakeModeManager::Notify(uintptr_t uFirst, uintptr_t uSecond, uintptr_t uThird)
{
    AddCall(pCalls, "Modes.Notify(%zu, %zu, %zu)", uFirst, uSecond, uThird);
    if (IEditorMode* pMode = GetCurrent())
    {
        pMode->Notify(uFirst, uSecond, uThird);
    }
}

CFakeEditorHost::CFakeEditorHost(ITextureManager* pTextures,
                                 ModeManager* pModeManager,
                                 FakeCalls* pCallList)
    : pTextureManager(pTextures)
    , pModes(pModeManager)
    , pCalls(pCallList)
{
}

CFakeEditorHost::~CFakeEditorHost() = default;

void CFakeEditorHost::RegisterProcess(IEditorAction* pProcess)
{
    AddCall(pCalls, "Host.RegisterProcess(%s)", pProcess != nullptr ? pProcess->GetName() : "null");
    processes.emplace_back(pProcess);
}

void CFakeEditorHost::TurnCamera(ViewId view, float fDegrees)
{
    AddCall(pCalls, "Host.TurnCamera(%u, %g)", view, fDegrees);
}

void CFakeEditorHost::LookFromDirection(ICamera* pCamera, float fX, float fY)
{
    AddCall(pCalls,
            "Host.LookFromDirection(%s, %g, %g)",
            pCamera != nullptr ? "camera" : "null",
            fX,
            fY);
}

void CFakeEditorHost::SetViewToggle(ViewId view, bool bOn)
{
    AddCall(pCalls, "Host.SetViewToggle(%u, %d)", view, bOn ? 1 : 0);
}

void CFakeEditorHost::RegisterSetting(const char* pszName,
                                      ERTTIType eType,
                                      void* pValue,
                                      const char* pszEditFlags)
{
    AddCall(
        pCalls, "Host.RegisterSetting(%s, %u, %s)", OrNull(pszName), eType, OrNull(pszEditFlags));
    settings.push_back({OrNull(pszName), eType, pValue, OrNull(pszEditFlags)});
}

bool CFakeEditorHost::PromptText(const char* pszTitle, const char* pszLabel, std::string& strAnswer)
{
    AddCall(pCalls,
            "Host.PromptText(%s, %s, %s)",
            OrNull(pszTitle),
            OrNull(pszLabel),
            strAnswer.c_str());
    if (promptAnswer)
    {
        strAnswer = *promptAnswer;
    }
    return promptAnswer.has_value();
}

std::string CFakeEditorHost::BrowseForFile(EFileDialog eKind,
                                           const char* pszDefaultExtension,
                                           const char* pszInitialName,
                                           const char* pszInitialFolder,
                                           const char* pszFilter)
{
    AddCall(pCalls,
            "Host.BrowseForFile(%d, %s, %s, %s, %s)",
            eKind,
            OrNull(pszDefaultExtension),
            OrNull(pszInitialName),
            OrNull(pszInitialFolder),
            OrNull(pszFilter));
    return strBrowseAnswer;
}

bool CFakeEditorHost::HandlesViewAction(ViewId view, uint32_t uActionHandle)
{
    AddCall(pCalls, "Host.HandlesViewAction(%u, %#x)", view, uActionHandle);
    return bHandlesViewAction;
}

void CFakeEditorHost::OpenPluginView(const CRuntimeClass* pClass)
{
    AddCall(pCalls, "Host.OpenPluginView(%s)", pClass != nullptr ? "class" : "null");
    if (onOpenView)
    {
        onOpenView(pClass);
    }
}

void CFakeEditorHost::ClosePluginView()
{
    AddCall(pCalls, "Host.ClosePluginView()");
    if (onCloseView)
    {
        onCloseView();
    }
}

bool CFakeEditorHost::CreatePluginToolBar(CToolBar* pToolBar, uint32_t uResourceId)
{
    AddCall(pCalls,
            "Host.CreatePluginToolBar(%s, %u)",
            pToolBar != nullptr ? "toolbar" : "null",
            uResourceId);
    return bToolBarWorks;
}

void CFakeEditorHost::InsertPluginMenu(
    int iPosition, IPlugin* /*pPlugin*/, CMenu* pPopup, const char* pszTitle, const char* pszParent)
{
    AddCall(pCalls,
            "Host.InsertPluginMenu(%d, %s, %s, %s)",
            iPosition,
            pPopup != nullptr ? "menu" : "null",
            OrNull(pszTitle),
            OrNull(pszParent));
}

bool CFakeEditorHost::QueryEntityClass(const char* pszClassName)
{
    AddCall(pCalls, "Host.QueryEntityClass(%s)", OrNull(pszClassName));
    return bKnowsEntityClass;
}

void CFakeEditorHost::SetPluginViewState(EPluginViewState eState,
                                         uint32_t uActionHandle,
                                         uint32_t uReserved)
{
    AddCall(pCalls, "Host.SetPluginViewState(%d, %#x, %u)", eState, uActionHandle, uReserved);
}

void CFakeEditorHost::GetEnvironmentFile(const char* pszClassName,
                                         uint32_t uActionHandle,
                                         EEnvironmentRequest eRequest,
                                         const std::string* pIn,
                                         std::string* pOut)
{
    AddCall(pCalls,
            "Host.GetEnvironmentFile(%s, %#x, %u, %s)",
            OrNull(pszClassName),
            uActionHandle,
            eRequest,
            pIn != nullptr ? pIn->c_str() : "null");
    if (pIn != nullptr && pOut != nullptr)
    {
        *pOut = strEnvironmentFolder + *pIn;
    }
}

void CFakeEditorHost::SetModeCaption(const char* pszCaption)
{
    AddCall(pCalls, "Host.SetModeCaption(%s)", OrNull(pszCaption));
}

void CFakeEditorHost::AddUndo(CUndo* pUndo)
{
    AddCall(pCalls, "Host.AddUndo()");
    undos.emplace_back(pUndo);
}

void CFakeEditorHost::RegisterActions(const std::vector<SActionDescriptor>& newActions)
{
    AddCall(pCalls, "Host.RegisterActions(%zu)", newActions.size());
    actions = newActions;
}

int CFakeEditorHost::PickTerrain(ViewId view, ViewPoint point, SVec3& hit, uint32_t uReserved)
{
    AddCall(pCalls, "Host.PickTerrain(%u, %u, %u)", view, point, uReserved);
    SPick pick = lastPick;
    if (!picks.empty())
    {
        pick = picks.front();
        picks.pop_front();
    }
    if (pick.iResult == 1)
    {
        hit = pick.hit;
    }
    return pick.iResult;
}

CFakeContext::CFakeContext(uint32_t uCellsX, uint32_t uCellsZ, const SVec3& size)
    : terrain(uCellsX, uCellsZ, size, &calls)
    , textures(&calls)
    , modes(&calls)
    , host(&textures, &modes, &calls)
    , world(&calls)
    , engine(&world, &calls)
    , m_Previous(SetPluginContext(this))
{
    world.pTerrain = &terrain;
}

CFakeContext::~CFakeContext()
{
    // What belongs to the host may ask for the context while it is destroyed.
    modes.modes.clear();
    host.undos.clear();
    host.processes.clear();
    SetPluginContext(m_Previous);
}

void CFakeContext::SetCurrentBrush(CTellurBrush* pNewBrush)
{
    AddCall(&calls, "Context.SetCurrentBrush(%s)", pNewBrush != nullptr ? "brush" : "null");
    pBrush = pNewBrush;
}

bool CFakeContext::UpdateTerrainNormals()
{
    AddCall(&calls, "Context.UpdateTerrainNormals()");
    Terrain* pTerrain = pWorld != nullptr ? pWorld->GetTerrain() : nullptr;
    return pTerrain != nullptr && pTerrain->UpdateNormals();
}

void CFakeContext::CheckHeightMapWritable()
{
    AddCall(&calls, "Context.CheckHeightMapWritable()");
}

bool CFakeContext::SetMode(int32_t iModeId, int32_t iParameter)
{
    AddCall(&calls, "Context.SetMode(%d, %d)", iModeId, iParameter);
    return iModeId == -1 ? modes.DeactivateMode(iParameter)
                         : modes.ActivateMode(iModeId, iParameter);
}

void CFakeContext::SetToolBarButton(uint32_t uCommand, bool bPressed)
{
    AddCall(&calls, "Context.SetToolBarButton(%u, %d)", uCommand, bPressed ? 1 : 0);
}

FakeCalls CFakeContext::TakeCalls()
{
    return std::exchange(calls, {});
}
