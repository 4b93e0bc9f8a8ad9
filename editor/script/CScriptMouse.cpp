#include "editor/script/CScriptMouse.h"

#include "editor/core/CEditorHost.h"
#include "editor/script/CScriptCall.h"
#include "editor/script/CScriptCursor.h"
#include "host/IPlugin.h"
#include "host/IPluginStrokes.h"
#include "host/IPluginTools.h"

#include <chrono>
#include <cmath>

namespace
{

double GetMilliseconds(std::chrono::steady_clock::time_point since)
{
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - since)
        .count();
}

} // namespace

CScriptMouse::CScriptMouse(CEditorHost& host, CScriptCursor& cursor, ViewId view, IPlugin* pPlugin)
    : m_Host(host)
    , m_Cursor(cursor)
    , m_View(view)
    , m_Strokes(dynamic_cast<IPluginStrokes*>(pPlugin))
    , m_Tools(dynamic_cast<IPluginTools*>(pPlugin))
{
}

bool CScriptMouse::SetKeys(const std::string& strKeys)
{
    const bool bBoth = strKeys == "ctrl+alt";
    const bool bControl = bBoth || strKeys == "ctrl";
    const bool bAlt = bBoth || strKeys == "alt";
    if (!bControl && !bAlt && !strKeys.empty())
    {
        return false;
    }
    m_KeyFlags = (bControl ? MOUSE_CONTROL : 0U) | (bAlt ? MOUSE_ALT : 0U);
    m_Cursor.SetKeys(bControl, bAlt);
    return true;
}

bool CScriptMouse::Play(EMouseEvent eEvent,
                        ECursorTarget eTarget,
                        const CScriptCall& call,
                        std::string& strWhy)
{
    size_t iStepPlace = 0;
    if (eTarget == ECursorTarget::Position)
    {
        m_Cursor.PointAtPosition(call.GetFloat(0), call.GetFloat(1));
        iStepPlace = 2;
    }
    else if (eTarget == ECursorTarget::Hit)
    {
        const SVec3 hit = call.GetVec3(0);
        if (!std::isfinite(hit.x) || !std::isfinite(hit.y) || !std::isfinite(hit.z))
        {
            strWhy = "the hit point is not finite";
            return false;
        }
        m_Cursor.PointAtHit(hit);
        iStepPlace = 1;
    }
    else
    {
        m_Cursor.PointAtNothing();
    }
    Send(eEvent, eEvent == EMouseEvent::Move ? call.GetInt(iStepPlace) : 0);
    return true;
}

void CScriptMouse::EndDrag()
{
    if (m_Strokes != nullptr && m_Drags.IsRunning())
    {
        m_Drags.End(m_Strokes->TakeDragStatistics());
    }
}

void CScriptMouse::LetGo()
{
    m_bDown = false;
    const auto start = std::chrono::steady_clock::now();
    m_Host.GetInput().EndDrag();
    if (m_Drags.IsRunning())
    {
        m_Drags.AddEvent(GetMilliseconds(start));
    }
    EndDrag();
}

void CScriptMouse::Send(EMouseEvent eEvent, int32_t iStep)
{
    if (eEvent == EMouseEvent::Press && m_Strokes != nullptr)
    {
        EndDrag();
        m_Strokes->TakeDragStatistics(); // what happened before the drag is not its work
        m_Drags.Begin(m_Tools != nullptr ? m_Tools->GetFunctionName() : "");
    }
    m_bDown = eEvent == EMouseEvent::Press || (m_bDown && eEvent == EMouseEvent::Move);
    const auto start = std::chrono::steady_clock::now();
    if (eEvent == EMouseEvent::Press)
    {
        m_Host.GetInput().SendButtonDown(m_View, m_KeyFlags | MOUSE_LEFT, {});
    }
    else if (eEvent == EMouseEvent::Release)
    {
        m_Host.GetInput().SendButtonUp(m_View, m_KeyFlags, {});
    }
    else
    {
        const uint32_t uFlags = m_KeyFlags | (m_bDown ? MOUSE_LEFT : 0U);
        m_Host.GetInput().SendMouseMove(
            m_View, uFlags, {}, {0, m_bDown ? MOUSE_BUTTON_LEFT : 0}, {0, iStep});
    }
    m_Drags.AddEvent(GetMilliseconds(start));
    if (eEvent == EMouseEvent::Release)
    {
        EndDrag();
    }
    // After the clock has stopped: the time of a drag is what the plug-in took for its events.
    m_Host.RenderFrame();
}
