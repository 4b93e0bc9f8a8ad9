#include "framework/widgets/CEdit.h"

#include "framework/qt/CWindowNode.h"

#include <QLineEdit>

namespace
{

QLineEdit* GetLineEdit(CWindowNode* pNode)
{
    return pNode != nullptr ? pNode->GetAs<QLineEdit>() : nullptr;
}

} // namespace

bool CEdit::CreateEdit(uint32_t uStyle, CWindow& parent, uint32_t uId, const SRect& rect)
{
    return CreateControl(EControlKind::Edit, nullptr, uStyle, parent, uId, rect);
}

void CEdit::SetLimitText(int nMost)
{
    if (QLineEdit* pEdit = GetLineEdit(GetNode()))
    {
        pEdit->setMaxLength(nMost);
    }
}

void CEdit::SetReadOnly(bool bReadOnly)
{
    if (QLineEdit* pEdit = GetLineEdit(GetNode()))
    {
        pEdit->setReadOnly(bReadOnly);
    }
}

bool CEdit::IsReadOnly() const
{
    const QLineEdit* pEdit = GetLineEdit(GetNode());
    return pEdit != nullptr && pEdit->isReadOnly();
}

void CEdit::SetSel(int iFrom, int iTo)
{
    QLineEdit* pEdit = GetLineEdit(GetNode());
    if (pEdit == nullptr)
    {
        return;
    }
    if (iFrom < 0)
    {
        pEdit->deselect();
        return;
    }
    const int iEnd = iTo < 0 ? static_cast<int>(pEdit->text().size()) : iTo;
    pEdit->setSelection(iFrom, iEnd - iFrom);
}

void CEdit::GetSel(int& iFrom, int& iTo) const
{
    const QLineEdit* pEdit = GetLineEdit(GetNode());
    iFrom = 0;
    iTo = 0;
    if (pEdit != nullptr)
    {
        iFrom = pEdit->hasSelectedText() ? pEdit->selectionStart() : pEdit->cursorPosition();
        iTo = pEdit->hasSelectedText() ? pEdit->selectionEnd() : iFrom;
    }
}
