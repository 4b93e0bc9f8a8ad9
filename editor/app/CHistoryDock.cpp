#include "editor/app/CHistoryDock.h"

#include "editor/core/CUndoStack.h"

#include <QListWidget>

CHistoryDock::CHistoryDock(QWidget* pParent, CUndoStack& stack, std::function<void()> onStep)
    : QDockWidget("History", pParent)
    , m_Stack(stack)
    , m_OnStep(std::move(onStep))
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
    m_pList->addItem("Start");
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
    if (iRow >= 0 && static_cast<size_t>(iRow) != m_Stack.GetCount())
    {
        m_Stack.GoTo(static_cast<size_t>(iRow));
        Follow();
        m_OnStep();
    }
}
