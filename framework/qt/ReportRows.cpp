// Columns, rows and cells of the report view, as its object asks for them.

#include "framework/qt/CReportView.h"
#include "framework/qt/CWindowNode.h"

#include <QHeaderView>

#include <algorithm>
#include <cmath>

int CReportView::FromPixels(int iLength) const
{
    return static_cast<int>(std::lround(iLength / devicePixelRatioF()));
}

QStandardItem* CReportView::GetCell(int iRow, int iColumn) const
{
    return m_Model.item(iRow, iColumn);
}

int CReportView::InsertColumn(int iColumn, const char* pszTitle, int iWidth)
{
    const int iPlace = std::clamp(iColumn, 0, m_Model.columnCount());
    m_Model.insertColumn(iPlace);
    m_Model.setHorizontalHeaderItem(iPlace, new QStandardItem(QString::fromUtf8(pszTitle)));
    SetWidthOfColumn(iPlace, iWidth);
    return iPlace;
}

int CReportView::GetColumnCount() const
{
    return m_Model.columnCount();
}

int CReportView::GetWidthOfColumn(int iColumn) const
{
    return static_cast<int>(std::lround(columnWidth(iColumn) * devicePixelRatioF()));
}

void CReportView::SetWidthOfColumn(int iColumn, int iWidth)
{
    // A width that is set by code is told to nobody, even while a mouse button is held.
    const QSignalBlocker quiet(header());
    setColumnWidth(iColumn, FromPixels(iWidth));
    FollowCells();
}

int CReportView::InsertRow(int iRow, const char* pszText)
{
    const int iPlace = std::clamp(iRow, 0, m_Model.rowCount());
    // Every cell gets an item, because texts and tips are set on items that are there.
    QList<QStandardItem*> cells = {new QStandardItem(QString::fromUtf8(pszText))};
    for (int iColumn = 1; iColumn < m_Model.columnCount(); ++iColumn)
    {
        cells.append(new QStandardItem);
    }
    m_Model.insertRow(iPlace, cells); // the model's
    FollowCells();
    return iPlace;
}

void CReportView::RemoveRow(int iRow)
{
    if (iRow >= 0)
    {
        const QSignalBlocker quiet(selectionModel()); // nobody has chosen another row
        m_Model.removeRow(iRow);
        FollowCells();
    }
}

void CReportView::RemoveRows()
{
    const QSignalBlocker quiet(selectionModel());
    m_Model.removeRows(0, m_Model.rowCount());
    FollowCells();
}

int CReportView::GetRowCount() const
{
    return m_Model.rowCount();
}

void CReportView::SetCellText(int iRow, int iColumn, const char* pszText)
{
    if (QStandardItem* pCell = GetCell(iRow, iColumn))
    {
        pCell->setText(QString::fromUtf8(pszText));
    }
}

std::string CReportView::GetCellText(int iRow, int iColumn) const
{
    const QStandardItem* pCell = GetCell(iRow, iColumn);
    return pCell != nullptr ? pCell->text().toStdString() : std::string();
}

void CReportView::SetRowNumber(int iRow, uintptr_t uData)
{
    if (QStandardItem* pCell = GetCell(iRow, 0))
    {
        pCell->setData(qulonglong{uData}, Qt::UserRole);
    }
}

uintptr_t CReportView::GetRowNumber(int iRow) const
{
    const QStandardItem* pCell = GetCell(iRow, 0);
    return pCell != nullptr ? pCell->data(Qt::UserRole).toULongLong() : 0;
}

void CReportView::SetRowTip(int iRow, const char* pszText)
{
    for (int iColumn = 0; iColumn < m_Model.columnCount(); ++iColumn)
    {
        if (QStandardItem* pCell = GetCell(iRow, iColumn))
        {
            pCell->setToolTip(QString::fromUtf8(pszText));
        }
    }
}

void CReportView::ShowRow(int iRow)
{
    scrollTo(m_Model.index(iRow, 0));
}

SRect CReportView::GetCellRect(int iRow, int iColumn) const
{
    const QModelIndex cell = m_Model.index(iRow, iColumn);
    return cell.isValid() ? CWindowNode::Find(this)->ToPixels(visualRect(cell)) : SRect();
}

bool CReportView::FindCell(SPoint point, int& iRow, int& iColumn) const
{
    const QModelIndex cell = indexAt(QPoint(FromPixels(point.x), FromPixels(point.y)));
    if (!cell.isValid())
    {
        return false;
    }
    iRow = cell.row();
    iColumn = cell.column();
    return true;
}

void CReportView::PlaceWindow(CWindow& window, int iRow, int iColumn, int iLeft, int iRight)
{
    const CWindowNode* pNode = CWindowNode::GetOf(window);
    if (pNode == nullptr)
    {
        return;
    }
    Remove(*pNode->GetWidget());
    m_Placed.push_back(
        {pNode->GetWidget(), m_Model.index(iRow, iColumn), FromPixels(iLeft), FromPixels(iRight)});
    FollowCells();
}

void CReportView::RemoveWindow(CWindow& window)
{
    if (const CWindowNode* pNode = CWindowNode::GetOf(window))
    {
        Remove(*pNode->GetWidget());
        pNode->GetWidget()->hide();
    }
}
