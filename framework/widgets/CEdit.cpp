#include "framework/widgets/CEdit.h"

#include "framework/widgets/IWindowNode.h"

namespace
{

IEditNode* GetEdit(IWindowNode* pNode)
{
    return pNode != nullptr ? pNode->GetEdit() : nullptr;
}

} // namespace

bool CEdit::CreateEdit(uint32_t uStyle, CWindow& parent, uint32_t uId, const SRect& rect)
{
    return CreateControl(EControlKind::Edit, nullptr, uStyle, parent, uId, rect);
}

void CEdit::SetLimitText(int nMost)
{
    if (IEditNode* pEdit = GetEdit(GetNode()))
    {
        pEdit->SetLimit(nMost);
    }
}

void CEdit::SetReadOnly(bool bReadOnly)
{
    if (IEditNode* pEdit = GetEdit(GetNode()))
    {
        pEdit->SetLocked(bReadOnly);
    }
}

bool CEdit::IsReadOnly() const
{
    const IEditNode* pEdit = GetEdit(GetNode());
    return pEdit != nullptr && pEdit->IsLocked();
}

void CEdit::SetSel(int iFrom, int iTo)
{
    if (IEditNode* pEdit = GetEdit(GetNode()))
    {
        pEdit->SelectText(iFrom, iTo);
    }
}

void CEdit::GetSel(int& iFrom, int& iTo) const
{
    iFrom = 0;
    iTo = 0;
    if (const IEditNode* pEdit = GetEdit(GetNode()))
    {
        pEdit->GetSelection(iFrom, iTo);
    }
}

void CEdit::MarkText(const char* pszWhy)
{
    if (IEditNode* pEdit = GetEdit(GetNode()))
    {
        pEdit->MarkText(pszWhy);
    }
}
