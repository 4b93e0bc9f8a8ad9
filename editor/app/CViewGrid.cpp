#include "editor/app/CViewGrid.h"

namespace
{

constexpr size_t ONE_ROW = 2; // the most that stand beside each other while there is one row
constexpr int EVEN = 10000;   // shares of what is alike

} // namespace

CViewGrid::CViewGrid(QWidget* pParent)
    : QSplitter(Qt::Vertical, pParent)
{
    setChildrenCollapsible(false);
    for (QSplitter*& pRow : m_Rows)
    {
        pRow = new QSplitter(Qt::Horizontal, this);
        pRow->setChildrenCollapsible(false);
        addWidget(pRow);
        connect(pRow, &QSplitter::splitterMoved, this, [this, pRow] { FollowRow(*pRow); });
    }
    m_Rows[1]->hide();
}

void CViewGrid::Place(const std::vector<QWidget*>& cells)
{
    const size_t nUpper = cells.size() > ONE_ROW ? (cells.size() + 1) / 2 : cells.size();
    m_bAlone = false;
    for (size_t i = 0; i < cells.size(); ++i)
    {
        QSplitter& row = *m_Rows[i < nUpper ? 0 : 1];
        const int iPlace = static_cast<int>(i < nUpper ? i : i - nUpper);
        // One that stays where it is keeps the context that it draws with.
        if (row.indexOf(cells[i]) != iPlace)
        {
            row.insertWidget(iPlace, cells[i]);
        }
        cells[i]->show();
    }
    for (QSplitter* pRow : m_Rows)
    {
        pRow->setSizes(QList<int>(pRow->count(), EVEN));
        pRow->setVisible(pRow->count() > 0);
    }
    setSizes({EVEN, EVEN});
}

void CViewGrid::ShowAlone(QWidget* pCell)
{
    const bool bAlone = pCell != nullptr;
    if (bAlone && !m_bAlone)
    {
        m_Shares = GetShares();
    }
    for (QSplitter* pRow : m_Rows)
    {
        for (int i = 0; i < pRow->count(); ++i)
        {
            pRow->widget(i)->setVisible(!bAlone || pRow->widget(i) == pCell);
        }
        pRow->setVisible(bAlone ? pRow->indexOf(pCell) >= 0 : pRow->count() > 0);
    }
    if (m_bAlone && !bAlone)
    {
        m_bAlone = false;
        SetShares(m_Shares);
    }
    m_bAlone = bAlone;
}

QList<int> CViewGrid::GetShares() const
{
    if (m_bAlone)
    {
        return m_Shares;
    }
    QList<int> shares = sizes();
    for (const QSplitter* pRow : m_Rows)
    {
        shares += pRow->sizes();
    }
    return shares;
}

bool CViewGrid::SetShares(const QList<int>& shares)
{
    qsizetype nWanted = count();
    for (const QSplitter* pRow : m_Rows)
    {
        nWanted += pRow->count();
    }
    if (shares.size() != nWanted)
    {
        return false;
    }
    setSizes(shares.mid(0, count()));
    qsizetype iNext = count();
    for (QSplitter* pRow : m_Rows)
    {
        pRow->setSizes(shares.mid(iNext, pRow->count()));
        iNext += pRow->count();
    }
    return true;
}

void CViewGrid::FollowRow(const QSplitter& moved)
{
    for (QSplitter* pRow : m_Rows)
    {
        if (pRow != &moved && pRow->count() == moved.count())
        {
            pRow->setSizes(moved.sizes());
        }
    }
}
