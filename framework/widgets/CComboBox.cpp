#include "framework/widgets/CComboBox.h"

#include "framework/qt/CWindowNode.h"
#include "framework/qt/ControlWidgets.h"

namespace
{

CDropDown* GetCombo(CWindowNode* pNode)
{
    return pNode != nullptr ? pNode->GetAs<CDropDown>() : nullptr;
}

} // namespace

bool CComboBox::CreateCombo(CWindow& parent, uint32_t uId, const SRect& rect)
{
    return CreateControl(EControlKind::DropDownList, nullptr, 0, parent, uId, rect);
}

int CComboBox::AddString(const char* pszText)
{
    CDropDown* pCombo = GetCombo(GetNode());
    if (pCombo == nullptr)
    {
        return -1;
    }
    const int iShown = pCombo->currentIndex();
    pCombo->addItem(QString::fromUtf8(pszText));
    pCombo->Select(iShown); // the first item does not become the selected one by itself
    return pCombo->count() - 1;
}

void CComboBox::ResetContent()
{
    if (CDropDown* pCombo = GetCombo(GetNode()))
    {
        pCombo->clear();
        pCombo->Select(-1);
    }
}

int CComboBox::GetCount() const
{
    const CDropDown* pCombo = GetCombo(GetNode());
    return pCombo != nullptr ? pCombo->count() : 0;
}

std::string CComboBox::GetItemText(int iItem) const
{
    const CDropDown* pCombo = GetCombo(GetNode());
    return pCombo != nullptr ? pCombo->itemText(iItem).toStdString() : std::string();
}

int CComboBox::FindString(const char* pszText) const
{
    const CDropDown* pCombo = GetCombo(GetNode());
    return pCombo != nullptr ? pCombo->findText(QString::fromUtf8(pszText),
                                                Qt::MatchExactly | Qt::MatchCaseSensitive)
                             : -1;
}

void CComboBox::SetItemData(int iItem, uintptr_t uData)
{
    if (CDropDown* pCombo = GetCombo(GetNode()))
    {
        pCombo->setItemData(iItem, qulonglong{uData});
    }
}

uintptr_t CComboBox::GetItemData(int iItem) const
{
    const CDropDown* pCombo = GetCombo(GetNode());
    return pCombo != nullptr ? pCombo->itemData(iItem).toULongLong() : 0;
}

void CComboBox::SetCurSel(int iItem)
{
    if (CDropDown* pCombo = GetCombo(GetNode()))
    {
        pCombo->Select(iItem);
    }
}

int CComboBox::GetCurSel() const
{
    const CDropDown* pCombo = GetCombo(GetNode());
    return pCombo != nullptr ? pCombo->currentIndex() : -1;
}

void CComboBox::ShowDropDown(bool bShow)
{
    if (CDropDown* pCombo = GetCombo(GetNode()))
    {
        bShow ? pCombo->showPopup() : pCombo->hidePopup();
    }
}
