// What the host sends to the plug-in, and tells its observers of.

#include "editor/core/CEditorHost.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "framework/core/IFrontEnd.h"
#include "host/IPlugin.h"
#include "host/IPluginPainting.h"
#include "host/IPluginStrokes.h"
#include "host/IPluginTools.h"
#include "host/Log.h"

#include <algorithm>
#include <utility>

namespace
{

constexpr uint32_t LAST_LOCAL_COMMAND = 0xFF; // a plug-in's commands differ in the low byte

} // namespace

template <typename TInterface> TInterface* CEditorHost::FindInterface() const
{
    for (IPlugin* pPlugin : m_Registry.GetInput())
    {
        if (auto* pFound = dynamic_cast<TInterface*>(pPlugin))
        {
            return pFound;
        }
    }
    return nullptr;
}

void CEditorHost::NotifyPlugins(int32_t iCode)
{
    Guard("CEditorHost::NotifyPlugins",
          [&]
          {
              for (IPlugin* pPlugin : m_Registry.GetInput())
              {
                  pPlugin->OnHostNotify(iCode, 0);
              }
          });
}

template <typename TSend>
void CEditorHost::SendEvent(const char* pszOperation, const SHostEvent& event, TSend send)
{
    TellBefore(event);
    const SHostEvent outer = std::exchange(m_Event, event);
    Guard(pszOperation,
          [&]
          {
              for (IPlugin* pPlugin : m_Registry.GetInput())
              {
                  send(*pPlugin);
              }
          });
    const SHostEvent done = std::exchange(m_Event, outer); // with the point that was hit
    m_Changes.Follow(m_Engine->GetCWorld().GetCTerrain());
    Tell(done);
}

void CEditorHost::SendButtonDown(ViewId view, uint32_t uFlags, const SButtonBlock& block)
{
    if (m_DragView != view)
    {
        EndDrag();
    }
    m_DragView = view;
    m_DragPoint = block;
    m_Changes.Start(m_Engine->GetCWorld().GetCTerrain());
    SendEvent("CEditorHost::SendButtonDown",
              {.eKind = EHostEvent::ButtonDown, .view = view, .uFlags = uFlags},
              [&](IPlugin& plugin)
              { plugin.OnLButtonDown(view, uFlags, block.x, block.y, block.dx, block.dy); });
}

void CEditorHost::SendMouseMove(ViewId view,
                                uint32_t uFlags,
                                const SPointBlock& point,
                                const SWheelBlock& wheel,
                                const SStepBlock& step)
{
    if (IsDragging() && m_DragView != view)
    {
        return;
    }
    m_DragPoint = {point.x, point.y, step.dx, step.dy};
    SendEvent("CEditorHost::SendMouseMove",
              {.eKind = EHostEvent::MouseMove,
               .view = view,
               .uFlags = uFlags,
               .step = step,
               .iWheel = wheel.wheel},
              [&](IPlugin& plugin)
              {
                  plugin.OnMouseMove(
                      view, uFlags, point.x, point.y, wheel.wheel, wheel.buttons, step.dx, step.dy);
              });
}

void CEditorHost::SendButtonUp(ViewId view, uint32_t uFlags, const SButtonBlock& block)
{
    if (IsDragging() && m_DragView != view)
    {
        EndDrag();
        return;
    }
    FinishDrag(view, uFlags, block);
}

void CEditorHost::FinishDrag(ViewId view, uint32_t uFlags, const SButtonBlock& block)
{
    const bool bDragging = IsDragging();
    m_DragView = NO_VIEW;
    SendEvent("CEditorHost::SendButtonUp",
              {.eKind = EHostEvent::ButtonUp, .view = view, .uFlags = uFlags},
              [&](IPlugin& plugin)
              { plugin.OnLButtonUp(view, uFlags, block.x, block.y, block.dx, block.dy); });
    if (bDragging)
    {
        GetFrontEnd().ReleaseCapture(); // the mode took it, and gives it back only as it likes
    }
}

void CEditorHost::EndDrag()
{
    if (IsDragging())
    {
        FinishDrag(m_DragView, 0, m_DragPoint);
    }
}

void CEditorHost::OnNoMemory(const char* pszOperation)
{
    auto* pStrokes = FindInterface<IPluginStrokes>();
    const bool bDropped = pStrokes != nullptr && pStrokes->DropDrag();
    CrashLog(
        "[%s] not enough memory%s\n", pszOperation, bDropped ? "; the stroke is taken back" : "");
    if (IsDragging())
    {
        // What else began with the press is ended by its release; a dropped one ignores it.
        const ViewId view = std::exchange(m_DragView, NO_VIEW);
        const SButtonBlock& at = m_DragPoint;
        Guard(pszOperation,
              [&]
              {
                  for (IPlugin* pPlugin : m_Registry.GetInput())
                  {
                      pPlugin->OnLButtonUp(view, 0, at.x, at.y, at.dx, at.dy);
                  }
              });
        GetFrontEnd().ReleaseCapture();
    }
    if (bDropped)
    {
        Tell({.eKind = EHostEvent::DragDropped});
    }
}

void CEditorHost::SendAction(ViewId view, int32_t iAction, uint32_t uCount)
{
    SendEvent("CEditorHost::SendAction",
              {.eKind = EHostEvent::Action, .view = view, .iAction = iAction, .uCount = uCount},
              [&](IPlugin& plugin) { plugin.OnAction(view, iAction, uCount); });
}

bool CEditorHost::SendCommand(uint32_t uCommand)
{
    IPlugin* pTarget = nullptr;
    uint32_t uLocal = 0;
    for (IPlugin* pPlugin : m_Registry.GetInput())
    {
        uint32_t uHandle = 0;
        pPlugin->GetActionHandle(&uHandle);
        const bool bOwn = uCommand - uHandle >= 1 && uCommand - uHandle <= LAST_LOCAL_COMMAND;
        if (bOwn && pTarget == nullptr)
        {
            pTarget = pPlugin;
            uLocal = uCommand - uHandle;
        }
    }
    if (pTarget == nullptr)
    {
        return false;
    }
    SendEvent("CEditorHost::SendCommand",
              {.eKind = EHostEvent::Command, .uCommand = uCommand},
              [&](IPlugin& plugin)
              {
                  if (&plugin == pTarget)
                  {
                      plugin.OnCommand(static_cast<int32_t>(uLocal));
                  }
              });
    return true;
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

template <typename TTell> void CEditorHost::TellEach(TTell tell)
{
    for (IHostObserver* pObserver : m_Observers)
    {
        try
        {
            tell(*pObserver);
        }
        catch (const std::bad_alloc&)
        {
            CrashLog("[CEditorHost] not enough memory to follow what happens\n");
            pObserver->OnMissedEvent();
        }
    }
}

void CEditorHost::TellBefore(const SHostEvent& event)
{
    TellEach([&](IHostObserver& observer) { observer.OnBeforeEvent(event); });
}

void CEditorHost::Tell(const SHostEvent& event)
{
    TellEach([&](IHostObserver& observer) { observer.OnEvent(event); });
}

std::string CEditorHost::GetUndoText() const
{
    const bool bMouse = m_Event.eKind == EHostEvent::ButtonDown ||
                        m_Event.eKind == EHostEvent::MouseMove ||
                        m_Event.eKind == EHostEvent::ButtonUp;
    auto* pTools = bMouse ? FindInterface<IPluginTools>() : nullptr;
    return pTools != nullptr ? pTools->GetToolName() : m_Caption;
}

bool CEditorHost::Undo()
{
    bool bUndone = false;
    Guard("CEditorHost::Undo", [&] { bUndone = m_Undo.Undo(); });
    return bUndone;
}

bool CEditorHost::GoToStep(size_t nPosition)
{
    bool bThere = false;
    Guard("CEditorHost::GoToStep", [&] { bThere = m_Undo.GoTo(nPosition); });
    return bThere;
}

bool CEditorHost::Redo()
{
    bool bRedone = false;
    Guard("CEditorHost::Redo", [&] { bRedone = m_Undo.Redo(); });
    return bRedone;
}

void CEditorHost::StepPaint(bool bRedo)
{
    const SHostEvent event = {.eKind = bRedo ? EHostEvent::PaintRedo : EHostEvent::PaintUndo};
    if (auto* pPainting = FindInterface<IPluginPainting>())
    {
        bool bStepped = false;
        TellBefore(event);
        Guard("CEditorHost::StepPaint", [&] { bStepped = pPainting->StepPaint(bRedo); });
        if (bStepped)
        {
            Tell(event);
        }
    }
}

void CEditorHost::OnBeforeStep(bool bRedo)
{
    TellBefore({.eKind = bRedo ? EHostEvent::Redo : EHostEvent::Undo});
}

void CEditorHost::OnStep(bool bRedo)
{
    Tell({.eKind = bRedo ? EHostEvent::Redo : EHostEvent::Undo});
}
