#include "framework/widgets/CListCtrl.h"

#include "framework/widgets/IReportNode.h"
#include "framework/widgets/IWindowNode.h"

namespace
{

IReportNode* GetReport(IWindowNode* pNode)
{
    return pNode != nullptr ? pNode->GetReport() : nullptr;
}

} // namespace

CListCtrl::~CListCtrl() = default;

int CListCtrl::InsertColumn(int iColumn, const char* pszTitle, int iWidth)
{
    IReportNode* pReport = GetReport(GetNode());
    return pReport != nullptr ? pReport->InsertColumn(iColumn, pszTitle, iWidth) : -1;
}

int CListCtrl::GetColumnCount() const
{
    const IReportNode* pReport = GetReport(GetNode());
    return pReport != nullptr ? pReport->GetColumnCount() : 0;
}

int CListCtrl::GetColumnWidth(int iColumn) const
{
    const IReportNode* pReport = GetReport(GetNode());
    return pReport != nullptr ? pReport->GetWidthOfColumn(iColumn) : 0;
}

void CListCtrl::SetColumnWidth(int iColumn, int iWidth)
{
    if (IReportNode* pReport = GetReport(GetNode()))
    {
        pReport->SetWidthOfColumn(iColumn, iWidth);
    }
}

int CListCtrl::InsertItem(int iItem, const char* pszText)
{
    IReportNode* pReport = GetReport(GetNode());
    return pReport != nullptr ? pReport->InsertRow(iItem, pszText) : -1;
}

void CListCtrl::DeleteItem(int iItem)
{
    if (IReportNode* pReport = GetReport(GetNode()))
    {
        pReport->RemoveRow(iItem);
    }
}

void CListCtrl::DeleteAllItems()
{
    if (IReportNode* pReport = GetReport(GetNode()))
    {
        pReport->RemoveRows();
    }
}

int CListCtrl::GetItemCount() const
{
    const IReportNode* pReport = GetReport(GetNode());
    return pReport != nullptr ? pReport->GetRowCount() : 0;
}

void CListCtrl::SetCellText(int iItem, int iColumn, const char* pszText)
{
    if (IReportNode* pReport = GetReport(GetNode()))
    {
        pReport->SetCellText(iItem, iColumn, pszText);
    }
}

std::string CListCtrl::GetCellText(int iItem, int iColumn) const
{
    const IReportNode* pReport = GetReport(GetNode());
    return pReport != nullptr ? pReport->GetCellText(iItem, iColumn) : std::string();
}

void CListCtrl::SetItemData(int iItem, uintptr_t uData)
{
    if (IReportNode* pReport = GetReport(GetNode()))
    {
        pReport->SetRowNumber(iItem, uData);
    }
}

uintptr_t CListCtrl::GetItemData(int iItem) const
{
    const IReportNode* pReport = GetReport(GetNode());
    return pReport != nullptr ? pReport->GetRowNumber(iItem) : 0;
}

void CListCtrl::SetItemIndent(int iItem, int iLevels)
{
    if (IReportNode* pReport = GetReport(GetNode()))
    {
        pReport->SetIndent(iItem, iLevels);
    }
}

void CListCtrl::SetItemImage(int iItem, int iImage)
{
    if (IReportNode* pReport = GetReport(GetNode()))
    {
        pReport->SetImage(iItem, iImage);
    }
}

void CListCtrl::SetItemToolTip(int iItem, const char* pszText)
{
    if (IReportNode* pReport = GetReport(GetNode()))
    {
        pReport->SetRowTip(iItem, pszText);
    }
}

void CListCtrl::SetImageList(const CImageList* pImages)
{
    if (IReportNode* pReport = GetReport(GetNode()))
    {
        pReport->SetImages(pImages);
    }
}

void CListCtrl::SelectItem(int iItem)
{
    if (IReportNode* pReport = GetReport(GetNode()))
    {
        pReport->Select(iItem);
    }
}

int CListCtrl::GetSelectedItem() const
{
    const IReportNode* pReport = GetReport(GetNode());
    return pReport != nullptr ? pReport->GetSelected() : -1;
}

void CListCtrl::EnsureVisible(int iItem)
{
    if (IReportNode* pReport = GetReport(GetNode()))
    {
        pReport->ShowRow(iItem);
    }
}

SRect CListCtrl::GetCellRect(int iItem, int iColumn) const
{
    const IReportNode* pReport = GetReport(GetNode());
    return pReport != nullptr ? pReport->GetCellRect(iItem, iColumn) : SRect();
}

bool CListCtrl::HitTest(SPoint point, int& iItem, int& iColumn) const
{
    const IReportNode* pReport = GetReport(GetNode());
    return pReport != nullptr ? pReport->FindCell(point, iItem, iColumn) : false;
}

void CListCtrl::PlaceOverCell(CWindow& window, int iItem, int iColumn, int iLeft, int iRight)
{
    if (IReportNode* pReport = GetReport(GetNode()))
    {
        pReport->PlaceWindow(window, iItem, iColumn, iLeft, iRight);
    }
}

void CListCtrl::RemoveFromCell(CWindow& window)
{
    if (IReportNode* pReport = GetReport(GetNode()))
    {
        pReport->RemoveWindow(window);
    }
}
