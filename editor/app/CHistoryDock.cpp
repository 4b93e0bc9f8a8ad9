#include "editor/app/CHistoryDock.h"

#include "editor/core/CUndoStack.h"
#include "editor/core/Words.h"

#include <QDateTime>
#include <QListWidget>
#include <QLocale>

namespace
{

// Fainter than the others and still easy to read; what a desktop greys out need not be.
QColor GetUndoneColor(const QPalette& palette)
{
    constexpr int TEXT = 65; // percent, the rest is the ground's
    const QColor text = palette.color(QPalette::Active, QPalette::Text); // also while it is grey
    const QColor base = palette.color(QPalette::Active, QPalette::Base);
    const auto mix = [](int iText, int iBase)
    {
        return (iText * TEXT + iBase * (100 - TEXT)) / 100;
    };
    return {mix(text.red(), base.red()),
            mix(text.green(), base.green()),
            mix(text.blue(), base.blue())};
}

} // namespace

CHistoryDock::CHistoryDock(QWidget* pParent,
                           const CUndoStack& stack,
                           std::function<void(size_t)> goTo)
    : QDockWidget(Words("History"), pParent)
    , m_Stack(stack)
    , m_GoTo(std::move(goTo))
    , m_pList(new QListWidget(this))
{
    setObjectName("history");
    m_pList->setObjectName("history-list");
    m_pList->setAccessibleName(Words("Steps of the history"));
    m_pList->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // the tip has all of it
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
    const size_t nGone = m_Stack.GetGivenUpCount();
    // Asked for at each move of the mouse.
    const std::string strState = std::to_string(m_Stack.GetStateId()) + ' ' +
                                 std::to_string(nDone) + ' ' + std::to_string(nAll) + ' ' +
                                 std::to_string(nGone) +
                                 (nAll > 0 ? m_Stack.GetDetail(nAll - 1) : std::string());
    if (strState == m_Shown && m_pList->count() > 0)
    {
        return;
    }
    m_Shown = strState;
    m_pList->clear();
    m_pList->addItem(nGone > 0 ? QString(Words("Older steps were given up: %1")).arg(nGone)
                               : QString(Words("Start")));
    for (size_t i = 0; i < nAll; ++i)
    {
        const QString strDetail = QString::fromStdString(m_Stack.GetDetail(i));
        auto* pItem = new QListWidgetItem(QString::fromStdString(m_Stack.GetText(i)) +
                                              (strDetail.isEmpty() ? "" : ": " + strDetail),
                                          m_pList);
        pItem->setToolTip(pItem->text() + "\n" +
                          QLocale().toString(QDateTime::fromSecsSinceEpoch(m_Stack.GetTime(i)),
                                             "d MMM yyyy, HH:mm:ss"));
        if (i >= nDone)
        {
            QFont font = pItem->font();
            font.setItalic(true);
            pItem->setFont(font);
            pItem->setForeground(GetUndoneColor(palette()));
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
