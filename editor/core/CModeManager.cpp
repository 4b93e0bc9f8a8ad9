#include "editor/core/CModeManager.h"

#include "host/IEditorMode.h"

CModeManager::CModeManager() = default;

CModeManager::~CModeManager()
{
    DestroyModes();
}

int CModeManager::RegisterMode(IEditorMode* pMode, int iGroup)
{
    if (pMode == nullptr)
    {
        return NO_MODE;
    }
    for (size_t i = 0; i < m_Modes.size(); ++i)
    {
        if (m_Modes[i].pMode.get() == pMode)
        {
            return static_cast<int>(i);
        }
    }
    const int iModeId = static_cast<int>(m_Modes.size());
    m_Modes.push_back({std::unique_ptr<IEditorMode>(pMode), iGroup});
    pMode->SetId(static_cast<uint32_t>(iModeId));
    return iModeId;
}

bool CModeManager::ActivateMode(int iModeId, int /*iParameter*/)
{
    IEditorMode* pMode = FindMode(iModeId);
    if (pMode == nullptr)
    {
        return false;
    }
    if (iModeId == m_CurrentId)
    {
        return true;
    }
    if (!pMode->IsAvailable() || !CanDeactivateCurrentMode() ||
        (m_Guard != nullptr && !m_Guard->MayActivate(iModeId)))
    {
        return false;
    }
    EndDrag();
    // The release of a drag may have changed the mode itself, even to the wanted one.
    if (m_CurrentId != iModeId)
    {
        ForceDeactivate();
    }
    if (m_CurrentId != NO_MODE)
    {
        return m_CurrentId == iModeId; // what left has made a mode current itself
    }
    // Current before it hears of it: from Activate it may already leave itself.
    m_CurrentId = iModeId;
    m_bSuspended = false;
    pMode->Activate();
    if (m_Guard != nullptr)
    {
        m_Guard->OnActivated(iModeId);
    }
    return true;
}

bool CModeManager::DeactivateMode(int /*iParameter*/)
{
    if (!CanDeactivateCurrentMode())
    {
        return false;
    }
    ForceDeactivate();
    return true;
}

bool CModeManager::CanDeactivateCurrentMode()
{
    IEditorMode* pMode = FindMode(m_CurrentId);
    return pMode == nullptr || pMode->CanDeactivate();
}

int CModeManager::GetCurrentModeGroup()
{
    return m_CurrentId == NO_MODE ? MODE_GROUP_NONE
                                  : m_Modes[static_cast<size_t>(m_CurrentId)].iGroup;
}

bool CModeManager::IsModeAvailable(int iModeId)
{
    IEditorMode* pMode = FindMode(iModeId);
    return pMode != nullptr && pMode->IsAvailable();
}

void CModeManager::OnLButtonDown(ViewId view, uint32_t uFlags, const SButtonBlock* pBlock)
{
    IEditorMode* pMode = FindMode(m_CurrentId);
    if (pMode != nullptr && pBlock != nullptr)
    {
        pMode->OnLButtonDown(view, PackPoint(pBlock->x, pBlock->y), uFlags);
    }
}

void CModeManager::OnMouseMove(ViewId view,
                               uint32_t uFlags,
                               const SPointBlock* pPoint,
                               const SWheelBlock* pWheel,
                               const SStepBlock* pStep)
{
    IEditorMode* pMode = FindMode(m_CurrentId);
    if (pMode != nullptr && pPoint != nullptr && pWheel != nullptr && pStep != nullptr)
    {
        // The interface of modes has numbers for the blocks, which are valid for the call.
        pMode->OnMouseMove(view,
                           uFlags,
                           PackPoint(pPoint->x, pPoint->y),
                           reinterpret_cast<uintptr_t>(pWheel),
                           reinterpret_cast<uintptr_t>(pStep));
    }
}

void CModeManager::OnLButtonUp(ViewId view, uint32_t uFlags, const SButtonBlock* pBlock)
{
    IEditorMode* pMode = FindMode(m_CurrentId);
    if (pMode != nullptr && pBlock != nullptr)
    {
        pMode->OnLButtonUp(view, PackPoint(pBlock->x, pBlock->y), uFlags);
    }
}

void CModeManager::OnAction(ViewId view, int iAction, uint32_t uCount)
{
    if (IEditorMode* pMode = FindMode(m_CurrentId))
    {
        pMode->OnAction(view, iAction, uCount);
    }
}

void CModeManager::Notify(uintptr_t uFirst, uintptr_t uSecond, uintptr_t uThird)
{
    if (IEditorMode* pMode = FindMode(m_CurrentId))
    {
        pMode->Notify(uFirst, uSecond, uThird);
    }
}

void CModeManager::RenderCurrentMode()
{
    if (IEditorMode* pMode = FindMode(m_CurrentId))
    {
        pMode->Render();
    }
}

bool CModeManager::SetModeCursor()
{
    IEditorMode* pMode = FindMode(m_CurrentId);
    return pMode != nullptr && pMode->SetCursor();
}

void CModeManager::SuspendCurrentMode(bool bSuspended)
{
    IEditorMode* pMode = FindMode(m_CurrentId);
    if (pMode != nullptr && bSuspended != m_bSuspended)
    {
        m_bSuspended = bSuspended;
        pMode->Suspend(bSuspended);
    }
}

void CModeManager::EndDrag()
{
    if (m_EndDrag)
    {
        m_EndDrag();
    }
}

void CModeManager::ForceDeactivate()
{
    EndDrag(); // as long as the mode can be reached: plug-ins forward to their own group only
    SuspendCurrentMode(false);
    // Not current any more while it is leaving: what it calls from Deactivate sees the new state,
    // and cannot make it leave a second time. Its release may have left it already.
    IEditorMode* pMode = FindMode(m_CurrentId);
    m_CurrentId = NO_MODE;
    if (pMode != nullptr)
    {
        pMode->Deactivate();
    }
}

void CModeManager::DestroyModes()
{
    m_bSuspended = false;
    m_CurrentId = NO_MODE;
    m_Modes.clear();
}

ViewPoint CModeManager::PackPoint(int32_t iX, int32_t iY)
{
    return (static_cast<uint32_t>(iX) & 0xFFFFU) | (static_cast<uint32_t>(iY) << 16U);
}

IEditorMode* CModeManager::FindMode(int iModeId) const
{
    return iModeId >= 0 && static_cast<size_t>(iModeId) < m_Modes.size()
               ? m_Modes[static_cast<size_t>(iModeId)].pMode.get()
               : nullptr;
}
