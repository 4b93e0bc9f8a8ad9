#include "framework/widgets/CListBox.h"

#include "framework/widgets/IWindowNode.h"

namespace
{

IListNode* GetList(IWindowNode* pNode)
{
    return pNode != nullptr ? pNode->GetList() : nullptr;
}

} // namespace

int CListBox::AddString(const char* pszText)
{
    IListNode* pList = GetList(GetNode());
    return pList != nullptr ? pList->AddItem(pszText) : -1;
}

void CListBox::ResetContent()
{
    if (IListNode* pList = GetList(GetNode()))
    {
        pList->RemoveItems();
    }
}

int CListBox::GetCount() const
{
    const IListNode* pList = GetList(GetNode());
    return pList != nullptr ? pList->GetItemCount() : 0;
}

std::string CListBox::GetItemText(int iItem) const
{
    const IListNode* pList = GetList(GetNode());
    return pList != nullptr ? pList->GetItemText(iItem) : std::string();
}

void CListBox::SetItemData(int iItem, uintptr_t uData)
{
    if (IListNode* pList = GetList(GetNode()))
    {
        pList->SetItemNumber(iItem, uData);
    }
}

uintptr_t CListBox::GetItemData(int iItem) const
{
    const IListNode* pList = GetList(GetNode());
    return pList != nullptr ? pList->GetItemNumber(iItem) : 0;
}

void CListBox::SetCurSel(int iItem)
{
    if (IListNode* pList = GetList(GetNode()))
    {
        pList->Select(iItem);
    }
}

int CListBox::GetCurSel() const
{
    const IListNode* pList = GetList(GetNode());
    return pList != nullptr ? pList->GetSelected() : -1;
}
