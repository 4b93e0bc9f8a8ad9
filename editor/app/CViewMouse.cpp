#include "editor/app/CViewMouse.h"

#include "editor/app/CCursorNote.h"
#include "editor/app/CViewHands.h"
#include "editor/app/CViewInput.h"
#include "editor/app/CViewKeys.h"

#include <QMouseEvent>
#include <QPointingDevice>
#include <QTabletEvent>
#include <QWheelEvent>

#include <cmath>

namespace
{

constexpr double NOTCH = 120.0;   // of a wheel, in eighths of a degree
constexpr double ROUNDING = 1e-3; // of positions that were divided by the scale

uint32_t GetFlags(Qt::KeyboardModifiers modifiers)
{
    return (modifiers.testFlag(Qt::ShiftModifier) ? MOUSE_SHIFT : 0U) |
           (modifiers.testFlag(Qt::ControlModifier) ? MOUSE_CONTROL : 0U) |
           (modifiers.testFlag(Qt::AltModifier) ? MOUSE_ALT : 0U);
}

EViewButton GetButton(const QMouseEvent& event)
{
    return event.button() == Qt::LeftButton    ? EViewButton::Left
           : event.button() == Qt::RightButton ? EViewButton::Right
                                               : EViewButton::Middle;
}

bool IsTouchpad(const QWheelEvent& event)
{
    const QPointingDevice* pDevice = event.pointingDevice();
    return pDevice != nullptr && pDevice->type() == QInputDevice::DeviceType::TouchPad;
}

} // namespace

CViewMouse::CViewMouse(CViewInput& input,
                       CCursorNote& note,
                       CViewHands& hand,
                       const CViewKeys& keys,
                       const SMouseBindings& bindings)
    : m_Input(input)
    , m_Note(note)
    , m_Hand(hand)
    , m_Keys(keys)
    , m_Bindings(bindings)
{
    m_BuildTimer.callOnTimeout([this] { BuildUp(); });
}

void CViewMouse::BuildUp()
{
    m_Input.GetStroke().BuildUp();
    if (m_Input.GetBuildMilliseconds() == 0) // the host has ended the stroke
    {
        m_BuildTimer.stop();
    }
}

QPointF CViewMouse::GetDevicePosition(const QPointF& position, double fScale)
{
    return {std::floor(position.x() * fScale + ROUNDING) + 0.5,
            std::floor(position.y() * fScale + ROUNDING) + 0.5};
}

bool CViewMouse::TakesButton(const QMouseEvent& event)
{
    return event.button() == Qt::LeftButton || event.button() == Qt::RightButton ||
           event.button() == Qt::MiddleButton;
}

void CViewMouse::Press(const QMouseEvent& event, double fScale)
{
    m_Hand.End();
    const QPointF at = GetDevicePosition(event.position(), fScale);
    m_Note.FollowCursor(event.position().toPoint());
    const EViewButton eButton = GetViewButton(event);
    if (m_Input.IsIdle())
    {
        m_HeldButton = event.button();
        m_Held = eButton;
    }
    m_Input.Press(eButton,
                  static_cast<float>(at.x()),
                  static_cast<float>(at.y()),
                  GetFlags(event.modifiers()),
                  m_Keys.IsSmoothing(event.modifiers()));
    if (m_Input.GetBuildMilliseconds() > 0)
    {
        m_BuildTimer.start(m_Input.GetBuildMilliseconds());
    }
}

bool CViewMouse::Move(const QMouseEvent& event, double fScale)
{
    ++m_Moves;
    const QPointF at = GetDevicePosition(event.position(), fScale);
    m_Note.FollowCursor(event.position().toPoint());
    if (m_Hand.Move(event.position()))
    {
        return false;
    }
    if (event.buttons() == Qt::NoButton && (m_Input.IsStroking() || m_Input.IsProtecting()))
    {
        m_Input.End(); // another window took the release
    }
    m_Input.Move(
        static_cast<float>(at.x()), static_cast<float>(at.y()), GetFlags(event.modifiers()));
    return true;
}

bool CViewMouse::Release(const QMouseEvent& event, double fScale)
{
    if (event.button() == Qt::LeftButton)
    {
        m_BuildTimer.stop();
    }
    const QPointF at = GetDevicePosition(event.position(), fScale);
    if (!m_Input.IsIdle() && event.button() != m_HeldButton)
    {
        return false; // it has begun nothing
    }
    // The modifiers may be up by now: the button ends what it has begun.
    const bool bHeld = event.button() == m_HeldButton;
    const bool bClick = m_Input.Release(bHeld ? m_Held : GetButton(event),
                                        static_cast<float>(at.x()),
                                        static_cast<float>(at.y()),
                                        GetFlags(event.modifiers()));
    return bClick && event.button() == Qt::RightButton;
}

EViewButton CViewMouse::GetViewButton(const QMouseEvent& event) const
{
    switch (m_Bindings.Find(event.button(), event.modifiers()))
    {
    case ECameraMove::Orbit:
        return EViewButton::Right;
    case ECameraMove::Pan:
        return EViewButton::Middle;
    case ECameraMove::Zoom:
        return EViewButton::Zoom;
    case ECameraMove::None:
        break;
    }
    return GetButton(event);
}

void CViewMouse::Pen(const QTabletEvent& event)
{
    const bool bRelease = event.type() == QEvent::TabletRelease;
    if (event.buttons() != Qt::NoButton && !bRelease) // lifted, it has no pressure to go by
    {
        m_Input.GetStroke().SetPressure(static_cast<float>(event.pressure()));
    }
}

void CViewMouse::Wheel(const QWheelEvent& event, double fScale)
{
    m_Hand.End();
    const QPointF at = GetDevicePosition(event.position(), fScale);
    const QPoint pixels = event.pixelDelta();
    const bool bFingers = event.phase() != Qt::NoScrollPhase || IsTouchpad(event);
    if (bFingers && m_Bindings.bFingersPan && !pixels.isNull() &&
        !event.modifiers().testFlag(Qt::ControlModifier) && !m_Input.IsStroking())
    {
        m_Input.Scroll(static_cast<float>(at.x()),
                       static_cast<float>(at.y()),
                       static_cast<float>(pixels.x() * fScale),
                       static_cast<float>(pixels.y() * fScale));
        return;
    }
    // Alt turns the wheel of some desktops sideways.
    const QPoint delta = event.angleDelta();
    const int iDelta = delta.y() != 0 ? delta.y() : delta.x();
    m_Input.Wheel(
        static_cast<float>(at.x()), static_cast<float>(at.y()), static_cast<float>(iDelta / NOTCH));
}
