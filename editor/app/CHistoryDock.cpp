#include "editor/app/CHistoryDock.h"

#include "editor/core/CUndoStack.h"

#include <QListWidget>

CHistoryDock::CHistoryDock(QWidget* pParent,
                           const CUndoStack& stack,
                           std::function<void(size_t)> goTo)
    : QDockWidget("History", pParent)
    , m_Stack(stack)
    , m_GoTo(std::move(goTo))
    , m_pList(new QListWidget(this))
{
    setObjectName("history");
    m_pList->setObjectName("history-list");
    setWidget(m_pList);
    connect(m_pList,
            &QListWidget::itemClicked,
            this,
            [this](const QListWidgetItem* pItem) { GoTo(m_pList->row(pItem)); });
    Follow();
}

void CHistoryDock::Follow()
{
    const size_t nDone = m_Stack.GetCount();
    const size_t nAll = nDone + m_Stack.GetRedoCount();
    m_pList->clear();
    const size_t nGone = m_Stack.GetGivenUpCount();
    m_pList->addItem(nGone > 0 ? QString("Older steps were given up: %1").arg(nGone)
                               : QString("Start"));
    for (size_t i = 0; i < nAll; ++i)
    {
        m_pList->addItem(QString::fromStdString(m_Stack.GetText(i)));
        if (i >= nDone)
        {
            m_pList->item(m_pList->count() - 1)
                ->setForeground(palette().color(QPalette::Disabled, QPalette::Text));
        }
    }
    m_pList->setCurrentRow(static_cast<int>(nDone));
}

void CHistoryDock::GoTo(int iRow)
{
    // The first row is the state before all steps, so the number of a row is that of the steps that
    // are done there.
    if (iRow >= 0 && static_cast<size_t>(iRow) != m_Stack.GetCount())
    {
        m_GoTo(static_cast<size_t>(iRow));
        Follow();
    }
}
