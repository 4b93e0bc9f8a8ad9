#include "framework/widgets/CListBox.h"

#include "framework/qt/CWindowNode.h"

#include <QListWidget>

namespace
{

QListWidget* GetList(CWindowNode* pNode)
{
    return pNode != nullptr ? pNode->GetAs<QListWidget>() : nullptr;
}

QListWidgetItem* GetItem(CWindowNode* pNode, int iItem)
{
    const QListWidget* pList = GetList(pNode);
    return pList != nullptr ? pList->item(iItem) : nullptr;
}

} // namespace

int CListBox::AddString(const char* pszText)
{
    QListWidget* pList = GetList(GetNode());
    if (pList == nullptr)
    {
        return -1;
    }
    pList->addItem(QString::fromUtf8(pszText));
    return pList->count() - 1;
}

void CListBox::ResetContent()
{
    if (QListWidget* pList = GetList(GetNode()))
    {
        const QSignalBlocker quiet(pList);
        pList->clear();
    }
}

int CListBox::GetCount() const
{
    const QListWidget* pList = GetList(GetNode());
    return pList != nullptr ? pList->count() : 0;
}

std::string CListBox::GetItemText(int iItem) const
{
    const QListWidgetItem* pItem = GetItem(GetNode(), iItem);
    return pItem != nullptr ? pItem->text().toStdString() : std::string();
}

void CListBox::SetItemData(int iItem, uintptr_t uData)
{
    if (QListWidgetItem* pItem = GetItem(GetNode(), iItem))
    {
        pItem->setData(Qt::UserRole, qulonglong{uData});
    }
}

uintptr_t CListBox::GetItemData(int iItem) const
{
    const QListWidgetItem* pItem = GetItem(GetNode(), iItem);
    return pItem != nullptr ? pItem->data(Qt::UserRole).toULongLong() : 0;
}

void CListBox::SetCurSel(int iItem)
{
    if (QListWidget* pList = GetList(GetNode()))
    {
        const QSignalBlocker quiet(pList);
        pList->clearSelection();
        pList->setCurrentRow(iItem);
    }
}

int CListBox::GetCurSel() const
{
    const QListWidget* pList = GetList(GetNode());
    if (pList == nullptr)
    {
        return -1;
    }
    const QList<QListWidgetItem*> selected = pList->selectedItems();
    return selected.isEmpty() ? -1 : pList->row(selected.front());
}
