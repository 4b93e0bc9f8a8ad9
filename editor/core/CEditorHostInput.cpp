// What the host sends to the plug-in.

#include "editor/core/CEditorHost.h"
#include "host/IPlugin.h"

namespace
{

constexpr int32_t NOTIFY_PANEL_CLOSED = 1;
constexpr uint32_t LAST_LOCAL_COMMAND = 0xFF; // a plug-in's commands differ in the low byte

} // namespace

void CEditorHost::NotifyPlugins(int32_t iCode)
{
    for (IPlugin* pPlugin : m_Registry.GetInput())
    {
        pPlugin->OnHostNotify(iCode, 0);
    }
}

void CEditorHost::SendButtonDown(ViewId view, uint32_t uFlags, const SButtonBlock& block)
{
    m_DragView = view;
    m_DragPoint = block;
    for (IPlugin* pPlugin : m_Registry.GetInput())
    {
        pPlugin->OnLButtonDown(view, uFlags, block.x, block.y, block.dx, block.dy);
    }
}

void CEditorHost::SendMouseMove(ViewId view,
                                uint32_t uFlags,
                                const SPointBlock& point,
                                const SWheelBlock& wheel,
                                const SStepBlock& step)
{
    m_DragPoint = {point.x, point.y, step.dx, step.dy};
    for (IPlugin* pPlugin : m_Registry.GetInput())
    {
        pPlugin->OnMouseMove(
            view, uFlags, point.x, point.y, wheel.wheel, wheel.buttons, step.dx, step.dy);
    }
}

void CEditorHost::SendButtonUp(ViewId view, uint32_t uFlags, const SButtonBlock& block)
{
    m_DragView = NO_VIEW;
    for (IPlugin* pPlugin : m_Registry.GetInput())
    {
        pPlugin->OnLButtonUp(view, uFlags, block.x, block.y, block.dx, block.dy);
    }
}

void CEditorHost::SendAction(ViewId view, int32_t iAction, uint32_t uCount)
{
    for (IPlugin* pPlugin : m_Registry.GetInput())
    {
        pPlugin->OnAction(view, iAction, uCount);
    }
}

void CEditorHost::SendNotify(uintptr_t uFirst, uintptr_t uSecond, uintptr_t uThird)
{
    for (IPlugin* pPlugin : m_Registry.GetInput())
    {
        pPlugin->Notify(uFirst, uSecond, uThird);
    }
}

bool CEditorHost::SendCommand(uint32_t uCommand)
{
    for (IPlugin* pPlugin : m_Registry.GetInput())
    {
        uint32_t uHandle = 0;
        pPlugin->GetActionHandle(&uHandle);
        const uint32_t uLocal = uCommand - uHandle;
        if (uLocal >= 1 && uLocal <= LAST_LOCAL_COMMAND)
        {
            pPlugin->OnCommand(static_cast<int32_t>(uLocal));
            return true;
        }
    }
    return false;
}

void CEditorHost::EndDrag()
{
    if (m_DragView != NO_VIEW)
    {
        SendButtonUp(m_DragView, 0, m_DragPoint);
    }
}

void CEditorHost::NotifyPanelClosed()
{
    m_Settings.SetPanelOpen(false);
    NotifyPlugins(NOTIFY_PANEL_CLOSED);
}
