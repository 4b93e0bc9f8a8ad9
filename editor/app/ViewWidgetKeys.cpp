#include "editor/app/CCursorNote.h"
#include "editor/app/CViewWidget.h"
#include "editor/app/KeyChords.h"
#include "editor/app/SEditorSettings.h"
#include "editor/core/CKeyBindings.h"

#include <QGuiApplication>
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

} // namespace

void CViewWidget::ShowKeys(Qt::KeyboardModifiers modifiers)
{
    const bool bStroke = m_Input.IsStroking();
    const bool bMin = modifiers.testFlag(Qt::ControlModifier);
    const bool bMax = modifiers.testFlag(Qt::AltModifier);
    m_pNote->SetState(bStroke && bMin ? "min" : bStroke && bMax ? "max" : "");
}

void CViewWidget::keyPressEvent(QKeyEvent* pEvent)
{
    ShowKeys(QGuiApplication::queryKeyboardModifiers());
    if (!SetFlyKey(*pEvent, true))
    {
        QOpenGLWidget::keyPressEvent(pEvent);
    }
}

void CViewWidget::keyReleaseEvent(QKeyEvent* pEvent)
{
    ShowKeys(QGuiApplication::queryKeyboardModifiers());
    if (!SetFlyKey(*pEvent, false))
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

bool CViewWidget::IsFlyKeyDown(const char* pszName) const
{
    return std::any_of(std::begin(FLY_KEYS),
                       std::end(FLY_KEYS),
                       [&](const SFlyKey& key)
                       { return m_FlyKeys.*key.pHeld && std::strcmp(key.pszName, pszName) == 0; });
}

void CViewWidget::Fly()
{
    const bool bHeld = std::any_of(std::begin(FLY_KEYS),
                                   std::end(FLY_KEYS),
                                   [&](const SFlyKey& key) { return m_FlyKeys.*key.pHeld; });
    if (!bHeld || !m_FlyClock.isValid())
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

void CViewWidget::focusOutEvent(QFocusEvent* pEvent)
{
    m_FlyKeys = {};
    m_pNote->SetState("");
    if (pEvent->reason() == Qt::MenuBarFocusReason || pEvent->reason() == Qt::PopupFocusReason)
    {
        m_Input.End(); // a menu takes the mouse, and the release with it
    }
    QOpenGLWidget::focusOutEvent(pEvent);
}
