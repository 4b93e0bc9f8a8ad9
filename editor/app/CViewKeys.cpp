#include "editor/app/CViewKeys.h"

#include "editor/app/KeyChords.h"
#include "editor/app/SEditorSettings.h"
#include "editor/app/SHandState.h"
#include "editor/core/CKeyBindings.h"

#include <QGuiApplication>
#include <QKeyEvent>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <string>
#include <utility>

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

CViewKeys::CViewKeys(const CKeyBindings& keys,
                     const SEditorSettings& settings,
                     SHandState& hand,
                     std::function<void()> onFly,
                     std::function<void()> onTap)
    : m_Keys(keys)
    , m_Settings(settings)
    , m_Hand(hand)
    , m_OnFly(std::move(onFly))
    , m_OnTap(std::move(onTap))
{
}

bool CViewKeys::Set(const QKeyEvent& event, bool bDown)
{
    const bool bTaken = SetStrokeKey(event, bDown) || SetFlyKey(event, bDown);
    FollowTap(event, bDown);
    return bTaken;
}

// A key that is held until the keyboard repeats it is held for a stroke, and so is one that another
// event comes between.
void CViewKeys::FollowTap(const QKeyEvent& event, bool bDown)
{
    const bool bWas = std::exchange(m_bTap, false);
    const bool bAlone = !event.isAutoRepeat() && event.modifiers() == Qt::NoModifier &&
                        QGuiApplication::mouseButtons() == Qt::NoButton;
    if (!bAlone || !IsHeldKey(m_Keys.FindById(std::string(STROKE_COMMAND) + "join"), event))
    {
        return;
    }
    m_bTap = bDown;
    if (bWas && !bDown)
    {
        m_OnTap(); // the views may stand elsewhere now
    }
}

bool CViewKeys::SetFlyKey(const QKeyEvent& event, bool bDown)
{
    m_FlyKeys.bFast = event.modifiers().testFlag(Qt::ShiftModifier);
    // Shift makes the flight faster and is no part of the key.
    SKeyChord chord = GetChord(event);
    chord.uModifiers &= ~static_cast<uint32_t>(KEY_SHIFT);
    for (const SFlyKey& key : FLY_KEYS)
    {
        const SKeyCommand* pCommand = m_Keys.FindById(std::string(FLY_COMMAND) + key.pszName);
        // A release counts whatever modifiers are held by then, or the camera would fly on.
        const bool bSame = pCommand != nullptr && pCommand->key.uKey == chord.uKey &&
                           (!bDown || pCommand->key == chord);
        if (!bSame)
        {
            continue;
        }
        if (!event.isAutoRepeat())
        {
            m_FlyKeys.*key.pHeld = bDown && m_Settings.bKeyboardNavigation;
            m_FlyClock.start();
            m_OnFly();
        }
        return true;
    }
    return false;
}

bool CViewKeys::SetStrokeKey(const QKeyEvent& event, bool bDown)
{
    bool bTaken = false;
    for (const SStrokeKey& key : STROKE_KEYS)
    {
        if (IsHeldKey(m_Keys.FindById(std::string(STROKE_COMMAND) + key.pszName), event))
        {
            if (!event.isAutoRepeat())
            {
                m_Hand.*key.pHeld = bDown;
                ClosePath(key.pHeld == &SHandState::bLine && bDown);
            }
            bTaken = true;
        }
    }
    if (IsHeldKey(m_Keys.FindById(std::string(STROKE_COMMAND) + "smooth"), event))
    {
        // Not taken: it may be a modifier, which others look at, too.
        m_bSmooth = bDown;
    }
    return bTaken;
}

// While clicks set a path the key of straight lines leads it back to its beginning.
void CViewKeys::ClosePath(bool bWanted)
{
    if (bWanted && m_Hand.path.IsOn())
    {
        m_Hand.path.Close();
        m_OnFly(); // another picture
    }
}

void CViewKeys::Release(bool bStroke)
{
    m_FlyKeys = {};
    m_bSmooth = m_bTap = false;
    if (bStroke)
    {
        for (const SStrokeKey& key : STROKE_KEYS)
        {
            m_Hand.*key.pHeld = false;
        }
    }
}

// Shift may have gone down while another window had the keyboard; and with a key that flies it
// means faster.
bool CViewKeys::IsSmoothing(Qt::KeyboardModifiers modifiers) const
{
    const SKeyCommand* pCommand = m_Keys.FindById(std::string(STROKE_COMMAND) + "smooth");
    const bool bShift = pCommand != nullptr && pCommand->key.uKey == Qt::Key_Shift;
    return (bShift ? modifiers.testFlag(Qt::ShiftModifier) : m_bSmooth) && !IsFlying();
}

bool CViewKeys::IsFlying() const
{
    return std::any_of(std::begin(FLY_KEYS),
                       std::end(FLY_KEYS),
                       [&](const SFlyKey& key) { return m_FlyKeys.*key.pHeld; });
}

bool CViewKeys::IsFlyKeyDown(const char* pszName) const
{
    return std::any_of(std::begin(FLY_KEYS),
                       std::end(FLY_KEYS),
                       [&](const SFlyKey& key)
                       { return m_FlyKeys.*key.pHeld && std::strcmp(key.pszName, pszName) == 0; });
}

bool CViewKeys::TakeFlight(float& fSeconds)
{
    if (!IsFlying() || !m_FlyClock.isValid())
    {
        return false;
    }
    fSeconds = static_cast<float>(static_cast<double>(m_FlyClock.nsecsElapsed()) * 1e-9);
    m_FlyClock.start();
    return true;
}
