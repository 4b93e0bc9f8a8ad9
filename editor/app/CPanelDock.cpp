#include "editor/app/CPanelDock.h"

#include "framework/core/CRuntimeClass.h"
#include "framework/qt/WidgetAccess.h"
#include "framework/widgets/CFormView.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>
#include <utility>

CPanelDock::CPanelDock(QWidget* pParent, SPanelEvents events)
    : QDockWidget("Terrain", pParent)
    , m_Events(std::move(events))
{
    setObjectName("panel");
    m_LeaveTimer.setSingleShot(true);
    m_LeaveTimer.callOnTimeout(this, [this] { LeaveField(); });
    hide();
    // By itself it would show a dock without a panel.
    QAction* pSwitch = toggleViewAction();
    disconnect(pSwitch, nullptr, this, nullptr);
    connect(pSwitch,
            &QAction::triggered,
            this,
            [this, pSwitch]
            {
                m_Events.onSwitch();
                pSwitch->setChecked(m_pView != nullptr);
            });
    connect(qApp,
            &QApplication::focusChanged,
            this,
            [this](QWidget*, QWidget* pNow) { OnFocus(pNow); });
}

CPanelDock::~CPanelDock()
{
    Close();
}

bool CPanelDock::Open(const CRuntimeClass* pClass)
{
    Close();
    m_pView.reset(pClass != nullptr ? pClass->Create() : nullptr);
    if (m_pView == nullptr || !m_pView->Create(nullptr))
    {
        m_pView.reset();
        return false;
    }
    auto* pArea = qobject_cast<QScrollArea*>(GetWidget(*m_pView));
    if (pArea != nullptr)
    {
        // As narrow as can be without cutting the form off at the side.
        pArea->setMinimumWidth(pArea->widget()->minimumSizeHint().width() +
                               pArea->verticalScrollBar()->sizeHint().width());
    }
    setWidget(GetWidget(*m_pView));
    m_pView->ShowWindow(true);
    show();
    raise();
    KeepOnScreen();
    return true;
}

// A floating one may come from another screen, and grow with what is in it.
void CPanelDock::KeepOnScreen()
{
    if (!isFloating())
    {
        return;
    }
    const QRect frame = frameGeometry();
    const QScreen* pScreen = QGuiApplication::screenAt(frame.center());
    pScreen = pScreen != nullptr ? pScreen : parentWidget()->screen();
    const QRect room = pScreen->availableGeometry();
    // What the system draws around it is not known before it is shown.
    resize(std::min(width(), room.width()), std::min(height(), room.height()));
    move(std::clamp(x(), room.left(), room.right() + 1 - width()),
         std::clamp(y(), room.top(), room.bottom() + 1 - height()));
}

void CPanelDock::UpdateView()
{
    if (m_pView != nullptr)
    {
        m_pView->UpdateView();
    }
}

void CPanelDock::TakeFocus()
{
    if (m_pView == nullptr)
    {
        return;
    }
    raise();
    activateWindow(); // it may float
    // The chain is a ring through the window: it leaves the form once all of its controls were
    // seen.
    QWidget* pForm = GetWidget(*m_pView);
    for (QWidget* pNext = pForm->nextInFocusChain(); pForm->isAncestorOf(pNext);
         pNext = pNext->nextInFocusChain())
    {
        const auto* pField = qobject_cast<const QLineEdit*>(pNext);
        const bool bUsable = pNext->isEnabled() && pNext->isVisible() &&
                             (pField == nullptr || !pField->isReadOnly());
        if (bUsable && (pNext->focusPolicy() & Qt::TabFocus) != 0)
        {
            pNext->setFocus(Qt::TabFocusReason);
            return;
        }
    }
}

void CPanelDock::Close()
{
    m_pView.reset(); // takes its widget along
    hide();
}

void CPanelDock::closeEvent(QCloseEvent* pEvent)
{
    pEvent->accept();
    if (m_pView == nullptr || m_bKeptOpen || qApp->isSavingSession())
    {
        return;
    }
    m_Events.onSwitch();
    if (m_pView != nullptr)
    {
        Close();
        m_Events.onClosed();
    }
}

void CPanelDock::OnFocus(QWidget* pNow)
{
    if (qobject_cast<QLineEdit*>(pNow) != nullptr && isAncestorOf(pNow))
    {
        pNow->installEventFilter(this); // before those of the form, once
    }
}

bool CPanelDock::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    const bool bKey =
        pEvent->type() == QEvent::ShortcutOverride || pEvent->type() == QEvent::KeyPress;
    const int iKey = bKey ? static_cast<QKeyEvent*>(pEvent)->key() : 0;
    const bool bLeaves = iKey == Qt::Key_Return || iKey == Qt::Key_Enter || iKey == Qt::Key_Escape;
    if (!bLeaves)
    {
        return QDockWidget::eventFilter(pWatched, pEvent);
    }
    if (pEvent->type() == QEvent::ShortcutOverride)
    {
        pEvent->accept(); // a field that is left by it ends no other work
        return true;
    }
    // The field does first what the key does there.
    m_LeaveTimer.start(0);
    return false;
}

void CPanelDock::LeaveField()
{
    const QWidget* pFocus = QApplication::focusWidget();
    if (m_pView != nullptr && pFocus != nullptr && isAncestorOf(pFocus) &&
        QApplication::activeModalWidget() == nullptr)
    {
        m_Events.onLeave();
    }
}
