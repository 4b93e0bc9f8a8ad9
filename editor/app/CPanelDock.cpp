#include "editor/app/CPanelDock.h"

#include "framework/core/CRuntimeClass.h"
#include "framework/qt/WidgetAccess.h"
#include "framework/widgets/CFormView.h"

#include <QCloseEvent>
#include <QScrollArea>
#include <QScrollBar>

CPanelDock::CPanelDock(QWidget* pParent, std::function<void()> onClosed)
    : QDockWidget("Terrain", pParent)
    , m_OnClosed(std::move(onClosed))
{
    setObjectName("panel");
    hide();
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
    return true;
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
    // The chain is a ring through the window: it leaves the form once all of its controls were
    // seen.
    QWidget* pForm = GetWidget(*m_pView);
    for (QWidget* pNext = pForm->nextInFocusChain(); pForm->isAncestorOf(pNext);
         pNext = pNext->nextInFocusChain())
    {
        if (pNext->isEnabled() && pNext->isVisible() && (pNext->focusPolicy() & Qt::TabFocus) != 0)
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
    if (m_pView != nullptr)
    {
        Close();
        m_OnClosed();
    }
}
