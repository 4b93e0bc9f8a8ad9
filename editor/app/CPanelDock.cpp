#include "editor/app/CPanelDock.h"

#include "editor/app/ScreenRoom.h"
#include "editor/core/Words.h"
#include "framework/core/CRuntimeClass.h"
#include "framework/qt/WidgetAccess.h"
#include "framework/widgets/CFormView.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QGroupBox>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>
#include <utility>

namespace
{

constexpr int LEAST_WIDTH = 120;

} // namespace

CPanelDock::CPanelDock(QWidget* pParent, SPanelEvents events)
    : QDockWidget(Words("Terrain"), pParent)
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
        m_FormWidth = pArea->widget()->minimumSizeHint().width() +
                      pArea->verticalScrollBar()->sizeHint().width();
        pArea->setMinimumWidth(LEAST_WIDTH); // narrower than its form it scrolls
    }
    SetFolded(m_Folded);
    setWidget(GetWidget(*m_pView));
    m_pView->ShowWindow(true);
    show();
    raise();
    // The window was arranged while there was nothing in the dock, which is narrow then.
    const bool bPlaced = std::exchange(m_bPlaced, false);
    WidenDock(*this, bPlaced && m_PlacedWidth > 0 ? m_PlacedWidth : m_FormWidth);
    if (isFloating())
    {
        KeepOnScreen(*this, parentWidget()); // it grows with what is in it
    }
    return true;
}

void CPanelDock::FitWidth()
{
    WidenDock(*this, m_FormWidth);
}

QStringList CPanelDock::GetFolded() const
{
    return m_pView != nullptr ? GetFoldedGroups(*m_pView) : m_Folded;
}

void CPanelDock::SetFolded(const QStringList& titles)
{
    m_Folded = titles;
    if (m_pView != nullptr)
    {
        FoldGroups(*m_pView, titles);
    }
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
        // The titles of groups work, too, but nobody comes for them.
        const bool bUsable = pNext->isEnabled() && pNext->isVisible() &&
                             qobject_cast<const QGroupBox*>(pNext) == nullptr &&
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
    m_Folded = GetFolded();
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
