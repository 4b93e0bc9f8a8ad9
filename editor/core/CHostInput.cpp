#include "editor/core/CHostInput.h"

#include "editor/core/CChangeCount.h"
#include "editor/core/CHostObservers.h"
#include "editor/core/CPluginRegistry.h"
#include "editor/core/IDragOwner.h"
#include "editor/core/IStepKeeper.h"
#include "framework/core/IFrontEnd.h"
#include "host/IPlugin.h"
#include "host/Log.h"

#include <utility>

namespace
{

constexpr uint32_t LAST_LOCAL_COMMAND = 0xFF; // a plug-in's commands differ in the low byte
constexpr size_t COMMAND_TEXT_SIZE = 1024;    // as IPlugin::GetCommandText says

} // namespace

CHostInput::CHostInput(const CPluginRegistry& registry,
                       CHostObservers& observers,
                       CChangeCount& changes)
    : m_Registry(registry)
    , m_Observers(observers)
    , m_Changes(changes)
{
}

template <typename TSend>
void CHostInput::SendEvent(const char* pszOperation, const SHostEvent& event, TSend send)
{
    m_Observers.TellBefore(event);
    // An event may happen inside another one, which is the present one again afterwards.
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
    m_Changes.Follow();
    m_Observers.Tell(done);
}

void CHostInput::SendButtonDown(ViewId view, uint32_t uFlags, const SButtonBlock& block)
{
    if (m_DragView != view)
    {
        EndDrag();
    }
    if (m_pSteps != nullptr)
    {
        m_pSteps->OnPress(view);
    }
    m_DragView = view;
    m_DragPoint = block;
    m_Track = {};
    // The undo record that comes with the release counts from here.
    m_Changes.Start();
    SendEvent("CEditorHost::SendButtonDown",
              {.eKind = EHostEvent::ButtonDown, .view = view, .uFlags = uFlags},
              [&](IPlugin& plugin)
              { plugin.OnLButtonDown(view, uFlags, block.x, block.y, block.dx, block.dy); });
}

void CHostInput::SendMouseMove(ViewId view,
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
    m_Track.nMoves += IsDragging() ? 1 : 0;
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

void CHostInput::SendButtonUp(ViewId view, uint32_t uFlags, const SButtonBlock& block)
{
    if (IsDragging() && m_DragView != view)
    {
        EndDrag();
        return;
    }
    FinishDrag(view, uFlags, block);
}

void CHostInput::SetPointForm(const SPointForm& form)
{
    m_PointForm = form;
    if (auto* pStrokes = m_Registry.FindInterface<IPluginStrokes>())
    {
        pStrokes->SetPointForm(form);
    }
}

void CHostInput::FinishDrag(ViewId view, uint32_t uFlags, const SButtonBlock& block)
{
    const bool bDragging = IsDragging();
    // The drag is over before the plug-ins hear of it: what they do at the release may ask for its
    // end, and must not send another one.
    m_DragView = NO_VIEW;
    SendEvent("CEditorHost::SendButtonUp",
              {.eKind = EHostEvent::ButtonUp, .view = view, .uFlags = uFlags},
              [&](IPlugin& plugin)
              { plugin.OnLButtonUp(view, uFlags, block.x, block.y, block.dx, block.dy); });
    SetPointForm({});
    if (bDragging)
    {
        GetFrontEnd().ReleaseCapture(); // the mode took it, and gives it back only as it likes
    }
}

void CHostInput::EndDrag(bool bMaySend)
{
    if (!IsDragging())
    {
        return;
    }
    FinishDrag(m_DragView, 0, m_DragPoint);
    if (IDragOwner* pOwner = std::exchange(m_pOwner, nullptr))
    {
        pOwner->OnDragEnded(bMaySend);
    }
}

void CHostInput::OnNoMemory(const char* pszOperation)
{
    // First the drag is given up, which needs no memory and gives some back.
    auto* pStrokes = m_Registry.FindInterface<IPluginStrokes>();
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
    SetPointForm({});
    m_pOwner = nullptr;
    if (bDropped)
    {
        if (m_pSteps != nullptr)
        {
            m_pSteps->OnDropped();
        }
        m_Observers.Tell({.eKind = EHostEvent::DragDropped});
    }
}

void CHostInput::SendAction(ViewId view, int32_t iAction, uint32_t uCount)
{
    SendEvent("CEditorHost::SendAction",
              {.eKind = EHostEvent::Action, .view = view, .iAction = iAction, .uCount = uCount},
              [&](IPlugin& plugin) { plugin.OnAction(view, iAction, uCount); });
}

// The plug-in that a command belongs to, null for none, and its number there.
IPlugin* CHostInput::FindOwner(uint32_t uCommand, uint32_t& uLocal) const
{
    for (IPlugin* pPlugin : m_Registry.GetInput())
    {
        uint32_t uHandle = 0;
        pPlugin->GetActionHandle(&uHandle);
        // A plug-in's commands are the numbers behind its handle.
        uLocal = uCommand - uHandle;
        if (uLocal >= 1 && uLocal <= LAST_LOCAL_COMMAND)
        {
            return pPlugin;
        }
    }
    return nullptr;
}

std::string CHostInput::GetCommandText(uint32_t uCommand) const
{
    uint32_t uLocal = 0;
    IPlugin* pOwner = FindOwner(uCommand, uLocal);
    char szText[COMMAND_TEXT_SIZE] = {};
    if (pOwner != nullptr)
    {
        pOwner->GetCommandText(
            GetPluginIndex(uCommand - uLocal), static_cast<int32_t>(uLocal), szText);
    }
    return szText;
}

bool CHostInput::SendCommand(uint32_t uCommand)
{
    uint32_t uLocal = 0;
    IPlugin* pTarget = FindOwner(uCommand, uLocal);
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

void CHostInput::Notify(int32_t iCode)
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

bool CHostInput::IsMouseEvent() const
{
    return m_Event.eKind == EHostEvent::ButtonDown || m_Event.eKind == EHostEvent::MouseMove ||
           m_Event.eKind == EHostEvent::ButtonUp;
}

void CHostInput::NoteHit(const SVec3& hit)
{
    m_Event.bHit = true;
    m_Event.hit = hit;
    if (IsDragging())
    {
        m_Track.first = m_Track.bHit ? m_Track.first : hit;
        m_Track.bHit = true;
        m_Track.last = hit;
    }
}
