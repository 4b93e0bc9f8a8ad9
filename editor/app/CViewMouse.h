#pragma once

#include "editor/app/CViewInput.h"

#include <QPointF>
#include <QTimer>

#include <cstdint>

class CCursorNote;
class CViewHands;
class CViewKeys;
class QMouseEvent;
class QTabletEvent;
class QWheelEvent;
struct SMouseBindings;

// Gives the window system's events of the mouse in one view to whoever they are meant for: the
// value that a key holds, or the view's input. Positions of events are the widget's; fScale is
// device pixels for each of those. Owned by the view, as all that is borrowed here. UI thread.
class CViewMouse
{
public:
    CViewMouse(CViewInput& input,
               CCursorNote& note,
               CViewHands& hand,
               const CViewKeys& keys,
               const SMouseBindings& bindings);

    // Whether the button means something in a view; the others are not handed on.
    static bool TakesButton(const QMouseEvent& event);
    void Press(const QMouseEvent& event, double fScale);
    // False while a key holds a value, which the move has changed.
    bool Move(const QMouseEvent& event, double fScale);
    // True when it was a click that asks for the context menu.
    bool Release(const QMouseEvent& event, double fScale);
    // Takes the pressure of a pen; what else it does comes as an event of the mouse.
    void Pen(const QTabletEvent& event);
    void Wheel(const QWheelEvent& event, double fScale);

    // The middle of the device pixel that a position lies in.
    static QPointF GetDevicePosition(const QPointF& position, double fScale);

    uint64_t GetMoveCount() const { return m_Moves; } // for measurements and tests

private:
    void BuildUp();
    EViewButton GetViewButton(const QMouseEvent& event) const;

    CViewInput& m_Input;
    CCursorNote& m_Note;
    CViewHands& m_Hand;
    const CViewKeys& m_Keys;
    const SMouseBindings& m_Bindings;
    Qt::MouseButton m_HeldButton = Qt::NoButton; // that has begun what runs
    EViewButton m_Held = EViewButton::Left;      // and what it is to the view
    QTimer m_BuildTimer;                         // runs while a stroke builds up
    uint64_t m_Moves = 0;
};
