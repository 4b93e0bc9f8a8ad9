// What of a view takes the events of the mouse and the keyboard.

#include "editor/app/CBrushHand.h"
#include "editor/app/CCursorNote.h"
#include "editor/app/CViewHands.h"
#include "editor/app/CViewWidget.h"
#include "editor/core/CEditorHost.h"
#include "editor/core/Words.h"
#include "host/IPluginTools.h"

#include <QApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QTabletEvent>

bool CViewWidget::event(QEvent* pEvent)
{
    switch (pEvent->type())
    {
    case QEvent::Enter:
        m_Events.onActive(m_View);
        m_Parts.host.GetModes().SetModeCursor();
        TakeKeyboard();
        break;
    case QEvent::WindowActivate: // a dialog lay over the cursor, or the window has just come
        if (QApplication::widgetAt(QCursor::pos()) == this)
        {
            SeeCursor();
            const QWidget* pFocus = window()->focusWidget();
            if (pFocus == nullptr || dynamic_cast<const CViewWidget*>(pFocus) != nullptr)
            {
                TakeKeyboard();
            }
        }
        break;
    case QEvent::Leave:
        LoseCursor();
        Update();
        break;
    case QEvent::ShortcutOverride:
        if (m_pHand->TakesKey(*static_cast<QKeyEvent*>(pEvent)))
        {
            pEvent->accept();
            return true;
        }
        break;
    default:
        break;
    }
    return QOpenGLWidget::event(pEvent);
}

void CViewWidget::Update()
{
    update();
    if (m_Parts.hand.bProtect || m_Parts.host.GetModes().GetCurrentModeId() != NO_MODE)
    {
        m_Events.onMark();
    }
    m_Events.onFrame(m_View);
}

void CViewWidget::mousePressEvent(QMouseEvent* pEvent)
{
    if (!CViewMouse::TakesButton(*pEvent))
    {
        pEvent->ignore();
        return;
    }
    m_Events.onActive(m_View);
    m_Keys.EndTap();
    m_Mouse.Press(*pEvent, devicePixelRatioF());
    ShowKeys(pEvent->modifiers());
    Update();
}

void CViewWidget::mouseMoveEvent(QMouseEvent* pEvent)
{
    if (m_Mouse.Move(*pEvent, devicePixelRatioF()))
    {
        ShowKeys(pEvent->modifiers());
        Update();
    }
}

void CViewWidget::mouseReleaseEvent(QMouseEvent* pEvent)
{
    if (!CViewMouse::TakesButton(*pEvent))
    {
        pEvent->ignore();
        return;
    }
    const bool bMenu = m_Mouse.Release(*pEvent, devicePixelRatioF());
    ShowKeys(pEvent->modifiers());
    Update();
    if (bMenu)
    {
        m_Events.onMenu(m_View, pEvent->globalPosition().toPoint());
    }
}

void CViewWidget::tabletEvent(QTabletEvent* pEvent)
{
    m_Mouse.Pen(*pEvent);
    pEvent->ignore(); // an event of the mouse follows, with all that belongs to it
}

void CViewWidget::wheelEvent(QWheelEvent* pEvent)
{
    m_Keys.EndTap();
    m_Mouse.Wheel(*pEvent, devicePixelRatioF());
    pEvent->accept();
    Update();
}

void CViewWidget::ShowKeys(Qt::KeyboardModifiers modifiers)
{
    m_bSmooth = m_Keys.IsSmoothing(modifiers);
    const bool bStroke = m_Input.IsStroking() && m_pTools != nullptr && m_pTools->HeedsMinMax();
    const bool bMin = modifiers.testFlag(Qt::ControlModifier) || m_Parts.hand.bRaise;
    const bool bMax = modifiers.testFlag(Qt::AltModifier) || m_Parts.hand.bLower;
    const bool bTaking = modifiers.testFlag(Qt::ControlModifier);
    m_pNote->SetState(m_Parts.hand.bProtect ? (bTaking ? Words("unprotect") : Words("protect"))
                      : bStroke && bMin     ? Words("min")
                      : bStroke && bMax     ? Words("max")
                                            : "");
}

// The mark shows what a press would do with the keys that are held now.
void CViewWidget::FollowKey(const QKeyEvent& event)
{
    if (!event.isAutoRepeat())
    {
        Update();
    }
}

void CViewWidget::keyPressEvent(QKeyEvent* pEvent)
{
    const bool bTaken = m_pHand->Press(*pEvent) || m_Keys.Set(*pEvent, true);
    ShowKeys(QGuiApplication::queryKeyboardModifiers());
    FollowKey(*pEvent);
    if (!bTaken)
    {
        QOpenGLWidget::keyPressEvent(pEvent);
    }
}

void CViewWidget::keyReleaseEvent(QKeyEvent* pEvent)
{
    const bool bTaken = m_pHand->Release(*pEvent) || m_Keys.Set(*pEvent, false);
    ShowKeys(QGuiApplication::queryKeyboardModifiers());
    FollowKey(*pEvent);
    if (!bTaken)
    {
        QOpenGLWidget::keyReleaseEvent(pEvent);
    }
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

void CViewWidget::LoseCursor()
{
    if (!m_pHand->IsHeld())
    {
        m_Input.Leave();
    }
}

void CViewWidget::SeeCursor()
{
    const QPoint cursor = mapFromGlobal(QCursor::pos());
    ShowKeys(QGuiApplication::queryKeyboardModifiers());
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
        const QPointF at = CViewMouse::GetDevicePosition(cursor, devicePixelRatioF());
        m_Input.Move(static_cast<float>(at.x()), static_cast<float>(at.y()), 0);
    }
    Update();
}

void CViewWidget::focusOutEvent(QFocusEvent* pEvent)
{
    m_pHand->End();
    m_Keys.Release(dynamic_cast<CViewWidget*>(QApplication::focusWidget()) == nullptr);
    m_pNote->SetState("");
    m_bSmooth = false;
    if (pEvent->reason() == Qt::MenuBarFocusReason || pEvent->reason() == Qt::PopupFocusReason)
    {
        m_Input.End(); // a menu takes the mouse, and the release with it
    }
    QOpenGLWidget::focusOutEvent(pEvent);
}
