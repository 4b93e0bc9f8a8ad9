#pragma once

#include "editor/app/SHeldKey.h"

#include <QPointF>
#include <QTimer>

#include <functional>
#include <optional>

class CCursorNote;
class CKeyBindings;
class CViewInput;
class QKeyEvent;
struct SRenderSettings;

constexpr char SUN_COMMAND[] = "light.hold_sun";

// While its key is held, the mouse of a view turns the sun: sideways where it stands, up and down
// how high. Owned by the view's hands, the rest is borrowed. UI thread.
class CSunHand
{
public:
    // pRender: of all views; null for views whose sun stands still. onTurn: they are to be drawn.
    // onEnd: the mouse is the view's again.
    CSunHand(SRenderSettings* pRender,
             const CKeyBindings& keys,
             CViewInput& input,
             CCursorNote& note,
             std::function<void()> onTurn,
             std::function<void()> onEnd);

    bool IsHeld() const { return m_bHeld; }

    // As CBrushHand.
    bool Press(const QKeyEvent& event);
    bool Release(const QKeyEvent& event);
    bool Move(const QPointF& position);
    bool TakesKey(const QKeyEvent& event) const;
    void End();

private:
    bool IsOwnKey(const QKeyEvent& event) const;
    void Set(float fYaw, float fPitch);
    void Show();

    SRenderSettings* m_pRender;
    const CKeyBindings& m_Keys;
    CViewInput& m_Input;
    CCursorNote& m_Note;
    std::function<void()> m_OnTurn;
    std::function<void()> m_OnEnd;
    bool m_bHeld = false;
    SHeldKey m_Held;
    float m_Yaw = 0.0F; // when it went down
    float m_Pitch = 0.0F;
    QPointF m_At; // of the mouse
    std::optional<QPointF> m_Start;
    QTimer m_NoteTimer; // the note stays as long as the key is held
};
