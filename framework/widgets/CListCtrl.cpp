#include "framework/widgets/CListCtrl.h"

#include "framework/qt/CReportView.h"
#include "framework/qt/CWindowNode.h"

#include <QHeaderView>

#include <algorithm>
#include <cmath>

namespace
{

CReportView* GetView(CWindowNode* pNode)
{
    return pNode != nullptr ? pNode->GetAs<CReportView>() : nullptr;
}

QStandardItem* GetCell(CWindowNode* pNode, int iItem, int iColumn)
{
    CReportView* pView = GetView(pNode);
    return pView != nullptr ? pView->GetModel().item(iItem, iColumn) : nullptr;
}

int FromPixels(const CWindowNode& node, int iLength)
{
    return static_cast<int>(std::lround(iLength / node.GetScale()));
}

} // namespace

CListCtrl::~CListCtrl() = default;

int CListCtrl::InsertColumn(int iColumn, const char* pszTitle, int iWidth)
{
    CReportView* pView = GetView(GetNode());
    if (pView == nullptr)
    {
        return -1;
    }
    QStandardItemModel& model = pView->GetModel();
    const int iPlace = std::clamp(iColumn, 0, model.columnCount());
    model.insertColumn(iPlace);
    model.setHorizontalHeaderItem(iPlace, new QStandardItem(QString::fromUtf8(pszTitle)));
    SetColumnWidth(iPlace, iWidth);
    return iPlace;
}

int CListCtrl::GetColumnCount() const
{
    CReportView* pView = GetView(GetNode());
    return pView != nullptr ? pView->GetModel().columnCount() : 0;
}

int CListCtrl::GetColumnWidth(int iColumn) const
{
    const CReportView* pView = GetView(GetNode());
    return pView != nullptr
               ? static_cast<int>(std::lround(pView->columnWidth(iColumn) * GetNode()->GetScale()))
               : 0;
}

void CListCtrl::SetColumnWidth(int iColumn, int iWidth)
{
    if (CReportView* pView = GetView(GetNode()))
    {
        const QSignalBlocker quiet(pView->header());
        pView->setColumnWidth(iColumn, FromPixels(*GetNode(), iWidth));
        pView->FollowCells();
    }
}

int CListCtrl::InsertItem(int iItem, const char* pszText)
{
    CReportView* pView = GetView(GetNode());
    if (pView == nullptr)
    {
        return -1;
    }
    QStandardItemModel& model = pView->GetModel();
    const int iPlace = std::clamp(iItem, 0, model.rowCount());
    QList<QStandardItem*> cells = {new QStandardItem(QString::fromUtf8(pszText))};
    for (int iColumn = 1; iColumn < model.columnCount(); ++iColumn)
    {
        cells.append(new QStandardItem);
    }
    model.insertRow(iPlace, cells); // the model's
    pView->FollowCells();
    return iPlace;
}

void CListCtrl::DeleteItem(int iItem)
{
    CReportView* pView = GetView(GetNode());
    if (pView != nullptr && iItem >= 0)
    {
        const QSignalBlocker quiet(pView->selectionModel()); // nobody has chosen another row
        pView->GetModel().removeRow(iItem);
        pView->FollowCells();
    }
}

void CListCtrl::DeleteAllItems()
{
    if (CReportView* pView = GetView(GetNode()))
    {
        const QSignalBlocker quiet(pView->selectionModel());
        pView->GetModel().removeRows(0, pView->GetModel().rowCount());
        pView->FollowCells();
    }
}

int CListCtrl::GetItemCount() const
{
    CReportView* pView = GetView(GetNode());
    return pView != nullptr ? pView->GetModel().rowCount() : 0;
}

void CListCtrl::SetCellText(int iItem, int iColumn, const char* pszText)
{
    if (QStandardItem* pCell = GetCell(GetNode(), iItem, iColumn))
    {
        pCell->setText(QString::fromUtf8(pszText));
    }
}

std::string CListCtrl::GetCellText(int iItem, int iColumn) const
{
    const QStandardItem* pCell = GetCell(GetNode(), iItem, iColumn);
    return pCell != nullptr ? pCell->text().toStdString() : std::string();
}

void CListCtrl::SetItemData(int iItem, uintptr_t uData)
{
    if (QStandardItem* pCell = GetCell(GetNode(), iItem, 0))
    {
        pCell->setData(qulonglong{uData}, Qt::UserRole);
    }
}

uintptr_t CListCtrl::GetItemData(int iItem) const
{
    const QStandardItem* pCell = GetCell(GetNode(), iItem, 0);
    return pCell != nullptr ? pCell->data(Qt::UserRole).toULongLong() : 0;
}

void CListCtrl::SetItemIndent(int iItem, int iLevels)
{
    if (CReportView* pView = GetView(GetNode()))
    {
        pView->SetIndent(iItem, iLevels);
    }
}

void CListCtrl::SetItemImage(int iItem, int iImage)
{
    if (CReportView* pView = GetView(GetNode()))
    {
        pView->SetImage(iItem, iImage);
    }
}

void CListCtrl::SetItemToolTip(int iItem, const char* pszText)
{
    for (int iColumn = 0; iColumn < GetColumnCount(); ++iColumn)
    {
        if (QStandardItem* pCell = GetCell(GetNode(), iItem, iColumn))
        {
            pCell->setToolTip(QString::fromUtf8(pszText));
        }
    }
}

void CListCtrl::SetImageList(const CImageList* pImages)
{
    if (CReportView* pView = GetView(GetNode()))
    {
        pView->SetImages(pImages);
    }
}

void CListCtrl::SelectItem(int iItem)
{
    if (CReportView* pView = GetView(GetNode()))
    {
        pView->Select(iItem);
    }
}

int CListCtrl::GetSelectedItem() const
{
    const CReportView* pView = GetView(GetNode());
    return pView != nullptr ? pView->GetSelected() : -1;
}

void CListCtrl::EnsureVisible(int iItem)
{
    if (CReportView* pView = GetView(GetNode()))
    {
        pView->scrollTo(pView->GetModel().index(iItem, 0));
    }
}

SRect CListCtrl::GetCellRect(int iItem, int iColumn) const
{
    CReportView* pView = GetView(GetNode());
    const QModelIndex cell =
        pView != nullptr ? pView->GetModel().index(iItem, iColumn) : QModelIndex();
    return cell.isValid() ? GetNode()->ToPixels(pView->visualRect(cell)) : SRect{};
}

bool CListCtrl::HitTest(SPoint point, int& iItem, int& iColumn) const
{
    const CReportView* pView = GetView(GetNode());
    const QModelIndex cell = pView != nullptr
                                 ? pView->indexAt(QPoint(FromPixels(*GetNode(), point.x),
                                                         FromPixels(*GetNode(), point.y)))
                                 : QModelIndex();
    if (!cell.isValid())
    {
        return false;
    }
    iItem = cell.row();
    iColumn = cell.column();
    return true;
}

void CListCtrl::PlaceOverCell(CWindow& window, int iItem, int iColumn, int iLeft, int iRight)
{
    CReportView* pView = GetView(GetNode());
    const CWindowNode* pWindow = CWindowNode::GetOf(window);
    if (pView != nullptr && pWindow != nullptr)
    {
        pView->Place(*pWindow->GetWidget(),
                     iItem,
                     iColumn,
                     FromPixels(*GetNode(), iLeft),
                     FromPixels(*GetNode(), iRight));
    }
}

void CListCtrl::RemoveFromCell(CWindow& window)
{
    CReportView* pView = GetView(GetNode());
    const CWindowNode* pWindow = CWindowNode::GetOf(window);
    if (pView != nullptr && pWindow != nullptr)
    {
        pView->Remove(*pWindow->GetWidget());
        pWindow->GetWidget()->hide();
    }
}
