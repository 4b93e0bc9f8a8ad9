#include "framework/qt/CWindowNode.h"

#include "framework/qt/KeyNames.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <QWheelEvent>

#include <cmath>
#include <unordered_map>

int CEventGuard::s_Depth = 0;

namespace
{

using Handles = std::unordered_map<uintptr_t, CWindowNode*>;

Handles& GetHandles()
{
    static Handles& s_Handles = *new Handles; // widgets may outlive static objects
    return s_Handles;
}

uintptr_t MakeHandle()
{
    // No handle is given twice, so one that was kept too long names no other window.
    static uintptr_t s_Last = 0;
    return ++s_Last;
}

// By this name Find tells the node from the other child objects of a widget.
const char* const NODE_NAME = "tellur-node";

} // namespace

CWindowNode::CWindowNode(QWidget& widget, EControlKind eKind, uint32_t uId, CWindow* pParent)
    : QObject(&widget)
    , m_pWidget(&widget)
    , m_Kind(eKind)
    , m_Id(uId)
    , m_Handle(MakeHandle())
    , m_pParent(pParent)
{
    setObjectName(NODE_NAME);
    GetHandles()[m_Handle] = this;
    widget.installEventFilter(this);
}

CWindowNode* CWindowNode::Make(QWidget& widget, EControlKind eKind, uint32_t uId, CWindow* pParent)
{
    return new CWindowNode(widget, eKind, uId, pParent);
}

CWindowNode::~CWindowNode()
{
    GetHandles().erase(m_Handle);
    CWindowNode::Detach();
}

CWindowNode* CWindowNode::Find(const QObject* pWidget)
{
    if (pWidget == nullptr)
    {
        return nullptr;
    }
    for (QObject* pChild : pWidget->children())
    {
        if (pChild->objectName() == QLatin1String(NODE_NAME))
        {
            return static_cast<CWindowNode*>(pChild);
        }
    }
    return nullptr;
}

QWidget* CWindowNode::FindWidget(uintptr_t uHandle)
{
    const auto found = GetHandles().find(uHandle);
    return found != GetHandles().end() ? found->second->m_pWidget : nullptr;
}

void CWindowNode::Attach(CWindow& object, bool bOwner)
{
    Detach();
    m_pObject = &object;
    object.m_Node = this;
    object.m_bOwner = bOwner;
}

void CWindowNode::Detach()
{
    if (m_pObject != nullptr)
    {
        m_pObject->m_Node = nullptr;
        m_pObject->m_bOwner = false;
        m_pObject = nullptr;
    }
}

void CWindowNode::Destroy()
{
    Detach();
    m_pParent = nullptr;
    // Its controls may outlive the object they notify, until the event loop turns.
    for (QWidget* pChild : m_pWidget->findChildren<QWidget*>())
    {
        CWindowNode* pNode = Find(pChild);
        if (pNode != nullptr)
        {
            pNode->Detach();
            pNode->m_pParent = nullptr;
        }
    }
    if (CEventGuard::IsInside())
    {
        // Its own event is still running. Without a parent it cannot go earlier together with the
        // window around it.
        m_pWidget->hide();
        m_pWidget->setParent(nullptr);
        m_pWidget->deleteLater();
    }
    else
    {
        delete m_pWidget; // and this
    }
}

bool CWindowNode::Notify(SNotification& notification)
{
    const CEventGuard guard;
    const QPointer<CWindowNode> pThis(this);
    notification.uId = m_Id;
    notification.pFrom = m_pObject;
    // Either handler may destroy this window or the one around it. The guard puts that off until
    // the event loop turns; a window that goes in another way takes this node along.
    if (m_pObject != nullptr && m_pObject->OnNotify(notification))
    {
        return true;
    }
    return pThis != nullptr && m_pParent != nullptr && m_pParent->OnChildNotify(notification);
}

bool CWindowNode::Notify(ENotify eKind)
{
    SNotification notification;
    notification.eKind = eKind;
    return Notify(notification);
}

void CWindowNode::Watch(QWidget& widget)
{
    widget.installEventFilter(this);
}

void CWindowNode::Paint(CDrawContext& context)
{
    if (m_pObject != nullptr)
    {
        m_pObject->OnPaint(context);
    }
}

void CWindowNode::DrawItem(const SDrawItem& item)
{
    if (m_pObject != nullptr)
    {
        m_pObject->DrawItem(item);
    }
}

SRect CWindowNode::ToPixels(const QRect& rect) const
{
    const double fScale = GetScale();
    const auto round = [fScale](int iValue)
    {
        return static_cast<int>(std::lround(iValue * fScale));
    };
    return {round(rect.x()),
            round(rect.y()),
            round(rect.x() + rect.width()),
            round(rect.y() + rect.height())};
}

QRect CWindowNode::FromPixels(const SRect& rect) const
{
    const double fScale = GetScale();
    const auto round = [fScale](int iValue)
    {
        return static_cast<int>(std::lround(iValue / fScale));
    };
    const QPoint corner(round(rect.left), round(rect.top));
    return {corner, QSize(round(rect.right) - corner.x(), round(rect.bottom) - corner.y())};
}

void CWindowNode::DoDefault()
{
    QEvent* pEvent = m_pEvent;
    // The event goes to the widget itself, past its filters, and only once: by the null pointer
    // eventFilter sees that it must not go to the widget again.
    m_pEvent = nullptr;
    if (pEvent != nullptr)
    {
        m_pWatched->event(pEvent);
    }
}

bool CWindowNode::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    const CEventGuard guard;
    // Events nest: a handler that shows a dialog or moves the focus brings others before it
    // returns.
    QObject* pOuterWatched = std::exchange(m_pWatched, pWatched);
    QEvent* pOuterEvent = std::exchange(m_pEvent, pEvent);
    const QPointer<CWindowNode> pThis(this);
    const bool bHandled = Handle(pWatched, pEvent);
    if (pThis == nullptr)
    {
        return true;
    }
    const bool bDefaultDone = m_pEvent == nullptr;
    m_pWatched = pOuterWatched;
    m_pEvent = pOuterEvent;
    return bHandled || bDefaultDone;
}

bool CWindowNode::Handle(QObject* pWatched, QEvent* pEvent)
{
    switch (pEvent->type())
    {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
        return HandleMouse(*static_cast<QMouseEvent*>(pEvent));
    case QEvent::KeyPress:
        return HandleKey(*static_cast<QKeyEvent*>(pEvent));
    case QEvent::ShortcutOverride:
        return HandleShortcut(*static_cast<QKeyEvent*>(pEvent));
    case QEvent::ToolTip:
        return HandleToolTip(*pEvent);
    case QEvent::Wheel:
        // What can be turned turns only under the focus, everything else scrolls the view around.
        if ((m_Kind == EControlKind::Slider || m_Kind == EControlKind::DropDownList) &&
            !m_pWidget->hasFocus())
        {
            pEvent->ignore();
            return true;
        }
        return false;
    case QEvent::FocusIn:
    case QEvent::FocusOut:
    case QEvent::Resize:
    case QEvent::Show:
        HandleState(pWatched == m_pWidget, pEvent->type());
        return false;
    default:
        return false;
    }
}

void CWindowNode::HandleState(bool bOwn, int iType)
{
    const QPointer<CWindowNode> pThis(this);
    if (m_pObject == nullptr || (!bOwn && iType != QEvent::Resize))
    {
        // Nobody to tell but the parent.
    }
    else if (iType == QEvent::FocusIn)
    {
        m_pObject->OnSetFocus();
    }
    else if (iType == QEvent::FocusOut)
    {
        m_pObject->OnKillFocus();
    }
    else if (iType == QEvent::Resize)
    {
        m_pObject->OnSize();
    }
    else
    {
        m_pObject->OnShow();
    }
    if (pThis != nullptr && bOwn && iType == QEvent::FocusOut && m_Kind == EControlKind::Edit)
    {
        Notify(ENotify::FocusLost);
    }
}

bool CWindowNode::HandleMouse(QMouseEvent& event)
{
    const bool bLeft = event.button() == Qt::LeftButton;
    if (m_pObject == nullptr || (event.type() != QEvent::MouseMove && !bLeft))
    {
        return false;
    }
    const double fScale = GetScale();
    const QPointF point = event.position() * fScale;
    const QPoint screen = event.globalPosition().toPoint();
    const SMouseEvent mouse = {
        {static_cast<int>(std::floor(point.x())), static_cast<int>(std::floor(point.y()))},
        {screen.x(), screen.y()},
        event.modifiers().testFlag(Qt::ControlModifier),
        event.modifiers().testFlag(Qt::ShiftModifier)};
    switch (event.type())
    {
    case QEvent::MouseButtonPress:
        return m_pObject->OnLButtonDown(mouse);
    case QEvent::MouseButtonRelease:
        return m_pObject->OnLButtonUp(mouse);
    case QEvent::MouseButtonDblClick:
        return m_pObject->OnLButtonDblClk(mouse);
    default:
        return m_pObject->OnMouseMove(mouse);
    }
}

bool CWindowNode::HandleKey(const QKeyEvent& event)
{
    const SKeyEvent key = MakeKeyEvent(event);
    const QPointer<CWindowNode> pThis(this);
    // A key that the control under the focus did not want comes again to the windows around it,
    // which were asked already.
    const QWidget* pFocus = QApplication::focusWidget();
    bool bHandled = false;
    if (pFocus == nullptr || pFocus == m_pWidget || !m_pWidget->isAncestorOf(pFocus))
    {
        // Whoever takes the key may end this window, and with it the chain of parents that is asked
        // next.
        bHandled = m_pObject != nullptr && m_pObject->TranslateKey(key);
        CWindow* pAround = pThis != nullptr ? m_pParent : nullptr;
        while (pAround != nullptr && !bHandled)
        {
            bHandled = pAround->TranslateKey(key);
            pAround = pThis != nullptr ? pAround->GetParent() : nullptr;
        }
    }
    return bHandled || pThis == nullptr || (m_pObject != nullptr && m_pObject->OnKeyDown(key));
}

bool CWindowNode::HandleShortcut(QKeyEvent& event)
{
    if (m_pObject == nullptr || !m_pObject->TakesShortcut(MakeKeyEvent(event)))
    {
        return false;
    }
    event.accept();
    return true;
}

bool CWindowNode::HandleToolTip(QEvent& event)
{
    if (!m_pWidget->toolTip().isEmpty())
    {
        return false; // it has something of its own to say
    }
    const QHelpEvent& help = static_cast<QHelpEvent&>(event);
    auto* pView = GetAs<QAbstractItemView>();
    if (pView != nullptr && m_pWatched == pView->viewport())
    {
        const QString strTip = pView->indexAt(help.pos()).data(Qt::ToolTipRole).toString();
        if (!strTip.isEmpty())
        {
            QToolTip::showText(help.globalPos(), strTip, pView->viewport());
            return true;
        }
    }
    // The nearest window around that has tips on and knows a text answers.
    for (CWindow* pAround = m_pParent; pAround != nullptr; pAround = pAround->GetParent())
    {
        if (pAround->m_bToolTips)
        {
            SToolTipText tip;
            tip.bIsWindow = true;
            tip.uId = m_Id;
            if (pAround->OnToolTipText(tip) && tip.szText[0] != '\0')
            {
                QToolTip::showText(help.globalPos(), QString::fromUtf8(tip.szText), m_pWidget);
                return true;
            }
        }
    }
    return false;
}
