#include "framework/widgets/CComboBox.h"

#include "framework/widgets/IWindowNode.h"

namespace
{

IComboNode* GetCombo(IWindowNode* pNode)
{
    return pNode != nullptr ? pNode->GetCombo() : nullptr;
}

} // namespace

bool CComboBox::CreateCombo(CWindow& parent, uint32_t uId, const SRect& rect)
{
    return CreateControl(EControlKind::DropDownList, nullptr, 0, parent, uId, rect);
}

int CComboBox::AddString(const char* pszText)
{
    IComboNode* pList = GetCombo(GetNode());
    return pList != nullptr ? pList->AddItem(pszText) : -1;
}

void CComboBox::ResetContent()
{
    if (IComboNode* pList = GetCombo(GetNode()))
    {
        pList->RemoveItems();
    }
}

int CComboBox::GetCount() const
{
    const IComboNode* pList = GetCombo(GetNode());
    return pList != nullptr ? pList->GetItemCount() : 0;
}

std::string CComboBox::GetItemText(int iItem) const
{
    const IComboNode* pList = GetCombo(GetNode());
    return pList != nullptr ? pList->GetItemText(iItem) : std::string();
}

int CComboBox::FindString(const char* pszText) const
{
    const IComboNode* pList = GetCombo(GetNode());
    return pList != nullptr ? pList->FindItem(pszText) : -1;
}

void CComboBox::SetItemData(int iItem, uintptr_t uData)
{
    if (IComboNode* pList = GetCombo(GetNode()))
    {
        pList->SetItemNumber(iItem, uData);
    }
}

uintptr_t CComboBox::GetItemData(int iItem) const
{
    const IComboNode* pList = GetCombo(GetNode());
    return pList != nullptr ? pList->GetItemNumber(iItem) : 0;
}

void CComboBox::SetCurSel(int iItem)
{
    if (IComboNode* pList = GetCombo(GetNode()))
    {
        pList->Select(iItem);
    }
}

int CComboBox::GetCurSel() const
{
    const IComboNode* pList = GetCombo(GetNode());
    return pList != nullptr ? pList->GetSelected() : -1;
}

void CComboBox::ShowDropDown(bool bShow)
{
    if (IComboNode* pList = GetCombo(GetNode()))
    {
        pList->ShowList(bShow);
    }
}
