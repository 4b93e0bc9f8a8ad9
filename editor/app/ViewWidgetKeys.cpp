#include "editor/app/CBrushHand.h"
#include "editor/app/CCursorNote.h"
#include "editor/app/CViewWidget.h"
#include "editor/app/KeyChords.h"
#include "editor/app/SEditorSettings.h"
#include "editor/core/CKeyBindings.h"
#include "host/IPluginTools.h"

#include <QApplication>
#include <QCursor>
#include <QKeyEvent>

#include <algorithm>
#include <cstring>
#include <iterator>

// The keys that act on a view as long as they are held.

namespace
{

struct SFlyKey
{
    const char* pszName;
    bool SFlyKeys::*pHeld;
};

constexpr SFlyKey FLY_KEYS[] = {
    {"forward", &SFlyKeys::bForward},
    {"back", &SFlyKeys::bBack},
    {"left", &SFlyKeys::bLeft},
    {"right", &SFlyKeys::bRight},
    {"up", &SFlyKeys::bUp},
    {"down", &SFlyKeys::bDown},
};

struct SStrokeKey
{
    const char* pszName;
    bool SHandState::*pHeld;
};

constexpr SStrokeKey STROKE_KEYS[] = {
    {"line", &SHandState::bLine},
    {"join", &SHandState::bJoin},
    {"raise", &SHandState::bRaise},
    {"lower", &SHandState::bLower},
};

// A key that is held counts whatever modifiers come with it; its release always.
bool IsHeldKey(const SKeyCommand* pCommand, const QKeyEvent& event)
{
    return pCommand != nullptr && pCommand->key.uKey != 0 &&
           pCommand->key.uKey == static_cast<uint32_t>(event.key());
}

} // namespace

void CViewWidget::ShowKeys(Qt::KeyboardModifiers modifiers)
{
    const bool bStroke = m_Input.IsStroking() && m_pTools != nullptr && m_pTools->HeedsMinMax();
    const bool bMin = modifiers.testFlag(Qt::ControlModifier) || m_Parts.hand.bRaise;
    const bool bMax = modifiers.testFlag(Qt::AltModifier) || m_Parts.hand.bLower;
    m_pNote->SetState(bStroke && bMin ? "min" : bStroke && bMax ? "max" : "");
}

void CViewWidget::keyPressEvent(QKeyEvent* pEvent)
{
    const bool bTaken =
        m_pHand->Press(*pEvent) || SetStrokeKey(*pEvent, true) || SetFlyKey(*pEvent, true);
    ShowKeys(QGuiApplication::queryKeyboardModifiers());
    if (!bTaken)
    {
        QOpenGLWidget::keyPressEvent(pEvent);
    }
}

void CViewWidget::keyReleaseEvent(QKeyEvent* pEvent)
{
    const bool bTaken =
        m_pHand->Release(*pEvent) || SetStrokeKey(*pEvent, false) || SetFlyKey(*pEvent, false);
    ShowKeys(QGuiApplication::queryKeyboardModifiers());
    if (!bTaken)
    {
        QOpenGLWidget::keyReleaseEvent(pEvent);
    }
}

bool CViewWidget::SetFlyKey(const QKeyEvent& event, bool bDown)
{
    m_FlyKeys.bFast = event.modifiers().testFlag(Qt::ShiftModifier);
    SKeyChord chord = GetChord(event);
    chord.uModifiers &= ~static_cast<uint32_t>(KEY_SHIFT);
    for (const SFlyKey& key : FLY_KEYS)
    {
        const SKeyCommand* pCommand = m_Parts.keys.FindById(std::string(FLY_COMMAND) + key.pszName);
        const bool bSame = pCommand != nullptr && pCommand->key.uKey == chord.uKey &&
                           (!bDown || pCommand->key == chord);
        if (!bSame)
        {
            continue;
        }
        if (!event.isAutoRepeat())
        {
            m_FlyKeys.*key.pHeld = bDown && m_Parts.settings.bKeyboardNavigation;
            m_FlyClock.start();
            update();
        }
        return true;
    }
    return false;
}

bool CViewWidget::SetStrokeKey(const QKeyEvent& event, bool bDown)
{
    bool bTaken = false;
    for (const SStrokeKey& key : STROKE_KEYS)
    {
        if (IsHeldKey(m_Parts.keys.FindById(std::string(STROKE_COMMAND) + key.pszName), event))
        {
            if (!event.isAutoRepeat())
            {
                m_Parts.hand.*key.pHeld = bDown;
            }
            bTaken = true;
        }
    }
    if (IsHeldKey(m_Parts.keys.FindById(std::string(STROKE_COMMAND) + "smooth"), event))
    {
        m_bSmooth = bDown;
    }
    return bTaken;
}

// Shift may have gone down while another window had the keyboard; and with a key that flies it
// means faster.
bool CViewWidget::IsSmoothing(Qt::KeyboardModifiers modifiers) const
{
    const SKeyCommand* pCommand = m_Parts.keys.FindById(std::string(STROKE_COMMAND) + "smooth");
    const bool bShift = pCommand != nullptr && pCommand->key.uKey == Qt::Key_Shift;
    return (bShift ? modifiers.testFlag(Qt::ShiftModifier) : m_bSmooth) && !IsFlying();
}

bool CViewWidget::IsFlying() const
{
    return std::any_of(std::begin(FLY_KEYS),
                       std::end(FLY_KEYS),
                       [&](const SFlyKey& key) { return m_FlyKeys.*key.pHeld; });
}

bool CViewWidget::IsFlyKeyDown(const char* pszName) const
{
    return std::any_of(std::begin(FLY_KEYS),
                       std::end(FLY_KEYS),
                       [&](const SFlyKey& key)
                       { return m_FlyKeys.*key.pHeld && std::strcmp(key.pszName, pszName) == 0; });
}

void CViewWidget::Fly()
{
    if (!IsFlying() || !m_FlyClock.isValid())
    {
        return;
    }
    const double fSeconds = static_cast<double>(m_FlyClock.nsecsElapsed()) * 1e-9;
    m_FlyClock.start();
    if (m_Navigator.Fly(GetTerrain(), m_FlyKeys, static_cast<float>(fSeconds)))
    {
        m_Input.RepeatHover();
    }
    m_FrameTimer.start(0);
}

// Keys work in the view that the cursor is in, without a click.
void CViewWidget::TakeKeyboard()
{
    if (isActiveWindow() && QApplication::activePopupWidget() == nullptr &&
        QApplication::activeModalWidget() == nullptr &&
        QGuiApplication::mouseButtons() == Qt::NoButton)
    {
        setFocus(Qt::MouseFocusReason);
    }
}

void CViewWidget::SeeCursor()
{
    const QPoint cursor = mapFromGlobal(QCursor::pos());
    if (m_pHand->IsHeld())
    {
        m_Input.RepeatHover(); // where the key went down
    }
    else if (!rect().contains(cursor))
    {
        m_Input.Leave();
    }
    else if (m_Input.IsIdle())
    {
        const QPointF at = GetDevicePosition(cursor);
        m_Input.Move(static_cast<float>(at.x()), static_cast<float>(at.y()), 0);
    }
    Update();
}

void CViewWidget::focusOutEvent(QFocusEvent* pEvent)
{
    m_pHand->End();
    m_FlyKeys = {};
    m_bSmooth = false;
    if (dynamic_cast<CViewWidget*>(QApplication::focusWidget()) == nullptr)
    {
        for (const SStrokeKey& key : STROKE_KEYS) // another view sees them released
        {
            m_Parts.hand.*key.pHeld = false;
        }
    }
    m_pNote->SetState("");
    if (pEvent->reason() == Qt::MenuBarFocusReason || pEvent->reason() == Qt::PopupFocusReason)
    {
        m_Input.End(); // a menu takes the mouse, and the release with it
    }
    QOpenGLWidget::focusOutEvent(pEvent);
}
