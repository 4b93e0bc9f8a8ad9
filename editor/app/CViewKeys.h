#pragma once

#include "editor/view/CViewNavigator.h"

#include <QElapsedTimer>
#include <Qt>

#include <functional>

class CKeyBindings;
class QKeyEvent;
struct SEditorSettings;
struct SHandState;

// The keys that act on a view as long as they are held: they fly its camera, and change what a
// stroke does. Which keys they are is looked up at each event, so new bindings count at once. Owned
// by the view. UI thread.
class CViewKeys
{
public:
    // Borrowed. hand: of all views of the window. onFly: the camera begins to fly, or ends. onTap:
    // the key that joins strokes was pressed and let go with nothing done meanwhile.
    CViewKeys(const CKeyBindings& keys,
              const SEditorSettings& settings,
              SHandState& hand,
              std::function<void()> onFly,
              std::function<void()> onTap);

    // To be called when a key went down, or up again. True when it is one of these, and nobody
    // else's.
    bool Set(const QKeyEvent& event, bool bDown);

    void EndTap() { m_bTap = false; } // the mouse has done something while a key is held

    // To be called when the view has lost the keyboard: its own keys count as released. bStroke:
    // those of strokes, too, since no other view has the keyboard, which would see them released.
    void Release(bool bStroke);

    // Whether a key of this name is held: "forward", "back", "left", "right", "up" or "down".
    bool IsFlyKeyDown(const char* pszName) const;
    // Whether what a press would draw now smooths.
    bool IsSmoothing(Qt::KeyboardModifiers modifiers) const;
    // True while the camera flies; fSeconds is then the time since a key went down, or since the
    // last call.
    bool TakeFlight(float& fSeconds);

    const SFlyKeys& GetFlyKeys() const { return m_FlyKeys; }

private:
    bool SetFlyKey(const QKeyEvent& event, bool bDown);
    bool SetStrokeKey(const QKeyEvent& event, bool bDown);
    void FollowTap(const QKeyEvent& event, bool bDown);
    void ClosePath(bool bWanted);
    bool IsFlying() const;

    const CKeyBindings& m_Keys;
    const SEditorSettings& m_Settings;
    SHandState& m_Hand;
    std::function<void()> m_OnFly;
    std::function<void()> m_OnTap;
    SFlyKeys m_FlyKeys;
    QElapsedTimer m_FlyClock;
    bool m_bSmooth = false; // its key is held
    bool m_bTap = false;    // the key that joins strokes went down, and nothing came since
};
