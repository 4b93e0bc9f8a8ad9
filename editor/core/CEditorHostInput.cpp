// What the host sends to the plug-in, and tells its observers of.

#include "editor/core/CEditorHost.h"
#include "host/IPlugin.h"
#include "host/IPluginScript.h"

#include <algorithm>
#include <string_view>

namespace
{

constexpr int32_t NOTIFY_PANEL_CLOSED = 1;
constexpr uint32_t LAST_LOCAL_COMMAND = 0xFF; // a plug-in's commands differ in the low byte

// The class name of a function as a person reads it: "SetHeightFunction" is "Set height".
std::string GetReadableName(std::string strClass)
{
    constexpr std::string_view SUFFIX = "Function";
    if (strClass.ends_with(SUFFIX))
    {
        strClass.resize(strClass.size() - SUFFIX.size());
    }
    std::string strText;
    for (const char c : strClass)
    {
        const bool bWord = c >= 'A' && c <= 'Z' && !strText.empty();
        strText += bWord ? " " : "";
        strText += bWord ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return strText;
}

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
    BeginEvent({.eKind = EHostEvent::ButtonDown, .view = view, .uFlags = uFlags});
    for (IPlugin* pPlugin : m_Registry.GetInput())
    {
        pPlugin->OnLButtonDown(view, uFlags, block.x, block.y, block.dx, block.dy);
    }
    EndEvent();
}

void CEditorHost::SendMouseMove(ViewId view,
                                uint32_t uFlags,
                                const SPointBlock& point,
                                const SWheelBlock& wheel,
                                const SStepBlock& step)
{
    m_DragPoint = {point.x, point.y, step.dx, step.dy};
    BeginEvent({.eKind = EHostEvent::MouseMove,
                .view = view,
                .uFlags = uFlags,
                .step = step,
                .iWheel = wheel.wheel});
    for (IPlugin* pPlugin : m_Registry.GetInput())
    {
        pPlugin->OnMouseMove(
            view, uFlags, point.x, point.y, wheel.wheel, wheel.buttons, step.dx, step.dy);
    }
    EndEvent();
}

void CEditorHost::SendButtonUp(ViewId view, uint32_t uFlags, const SButtonBlock& block)
{
    m_DragView = NO_VIEW;
    BeginEvent({.eKind = EHostEvent::ButtonUp, .view = view, .uFlags = uFlags});
    for (IPlugin* pPlugin : m_Registry.GetInput())
    {
        pPlugin->OnLButtonUp(view, uFlags, block.x, block.y, block.dx, block.dy);
    }
    EndEvent();
}

void CEditorHost::SendAction(ViewId view, int32_t iAction, uint32_t uCount)
{
    BeginEvent({.eKind = EHostEvent::Action, .view = view, .iAction = iAction, .uCount = uCount});
    for (IPlugin* pPlugin : m_Registry.GetInput())
    {
        pPlugin->OnAction(view, iAction, uCount);
    }
    EndEvent();
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
            BeginEvent({.eKind = EHostEvent::Command, .uCommand = uCommand});
            pPlugin->OnCommand(static_cast<int32_t>(uLocal));
            EndEvent();
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

void CEditorHost::AddObserver(IHostObserver* pObserver)
{
    m_Observers.push_back(pObserver);
}

void CEditorHost::RemoveObserver(IHostObserver* pObserver)
{
    m_Observers.erase(std::remove(m_Observers.begin(), m_Observers.end(), pObserver),
                      m_Observers.end());
}

void CEditorHost::BeginEvent(const SHostEvent& event)
{
    for (IHostObserver* pObserver : m_Observers)
    {
        pObserver->OnBeforeEvent(event);
    }
    m_Event = event;
}

void CEditorHost::EndEvent()
{
    const SHostEvent event = m_Event; // an observer may cause another one
    m_Event = {};
    for (IHostObserver* pObserver : m_Observers)
    {
        pObserver->OnEvent(event);
    }
}

void CEditorHost::Tell(EHostEvent eKind)
{
    for (IHostObserver* pObserver : m_Observers)
    {
        pObserver->OnEvent({.eKind = eKind});
    }
}

std::string CEditorHost::GetUndoText() const
{
    const bool bMouse = m_Event.eKind == EHostEvent::ButtonDown ||
                        m_Event.eKind == EHostEvent::MouseMove ||
                        m_Event.eKind == EHostEvent::ButtonUp;
    for (IPlugin* pPlugin : m_Registry.GetInput())
    {
        auto* pScript = dynamic_cast<IPluginScript*>(pPlugin);
        if (bMouse && pScript != nullptr)
        {
            return GetReadableName(pScript->GetFunctionName());
        }
    }
    return m_Caption;
}

void CEditorHost::OnBeforeStep(bool bRedo)
{
    BeginEvent({.eKind = bRedo ? EHostEvent::Redo : EHostEvent::Undo});
}

void CEditorHost::OnStep(bool bRedo)
{
    Tell(bRedo ? EHostEvent::Redo : EHostEvent::Undo);
}
