#include "tellur/proplist/CPropCtrlEdit.h"

#include "framework/widgets/CListCtrl.h"
#include "host/EngineHost.h"
#include "host/Reflection.h"
#include "tellur/proplist/CPropRowModel.h"
#include "tellur/proplist/CPropTextHooks.h"
#include "tellur/proplist/PropText.h"

namespace
{

constexpr size_t TEXT_LIMIT = 4096; // characters
constexpr char MARK = '&';

bool HoldsPath(const CRTTIField& field)
{
    return field.GetType() == RTTI_STRING &&
           (field.GetEditFlags() & (RTTI_EDIT_BROWSE_FILE | RTTI_EDIT_BROWSE_FOLDER)) != 0;
}

} // namespace

std::string ExpandTextMacros(const std::string& strText, const ITextMacroTable* pTable)
{
    const std::string strSource = strText.substr(0, TEXT_LIMIT);
    std::string strExpanded;
    size_t i = 0;
    while (i < strSource.size())
    {
        const size_t iEnd = strSource[i] == MARK ? strSource.find(MARK, i + 1) : std::string::npos;
        if (iEnd == std::string::npos)
        {
            strExpanded += strSource[i];
            ++i;
            continue;
        }
        const std::string strName = strSource.substr(i + 1, iEnd - i - 1);
        const char* pszValue =
            strName.empty() ? "&" : (pTable != nullptr ? pTable->Find(strName.c_str()) : nullptr);
        strExpanded += pszValue != nullptr ? pszValue : strSource.substr(i, iEnd - i + 1);
        i = iEnd + 1;
    }
    return strExpanded;
}

CPropCtrlEdit::CPropCtrlEdit(const SPropEditorContext& context, SPropRow& row, uint32_t uId)
    : CPropInPlaceCtrl(context, row, uId)
    , m_bExpanding(HoldsPath(*row.pField))
{
}

bool CPropCtrlEdit::CreateEditor()
{
    if (!CreateEdit(CONTROL_NO_TAB, m_Context.list, GetEditorId(), {}))
    {
        return false;
    }
    SetLimitText(static_cast<int>(TEXT_LIMIT));
    return true;
}

std::string CPropCtrlEdit::GetText() const
{
    if (m_Row.bDifferent)
    {
        return PROP_DIFFERENT_VALUES;
    }
    if (m_bExpanding && !HasFocus())
    {
        IPropListCtrlUser* pUser = m_Context.model.GetUser();
        EngineHost* pEngine = pUser != nullptr ? pUser->GetEngineHost() : nullptr;
        return ExpandTextMacros(m_ValueText,
                                pEngine != nullptr ? pEngine->GetTextMacroTable() : nullptr);
    }
    return m_ValueText;
}

void CPropCtrlEdit::Show(const std::string& strText)
{
    m_Shown = strText;
    if (GetWindowText() != strText)
    {
        SetWindowText(strText.c_str());
    }
}

void CPropCtrlEdit::SetValueText(const std::string& strText)
{
    const bool bSame = strText == m_ValueText && HasFocus();
    m_ValueText = strText;
    if (!bSame || !IsTyped()) // a refresh with the old value does not disturb who types
    {
        Show(GetText());
    }
}

void CPropCtrlEdit::Commit()
{
    if (m_bAbandoned || !IsWindow())
    {
        return;
    }
    if (IsTyped())
    {
        const std::string strTyped = m_Context.hooks.ParseText(m_Row, GetWindowText());
        m_Shown = GetWindowText(); // handed over once, also when the focus goes meanwhile
        Apply(strTyped);
    }
    // What the objects took, or the old value when the text was none.
    if (!m_bAbandoned)
    {
        m_ValueText = m_Row.strText;
        Show(GetText());
    }
}

void CPropCtrlEdit::TakeFocus()
{
    SetFocus();
    SetSel(0, -1);
}

bool CPropCtrlEdit::TranslateKey(const SKeyEvent& key)
{
    if (key.uKey == KEY_ENTER)
    {
        Commit();
        SetSel(0, -1);
        return true;
    }
    if (key.uKey == KEY_ESCAPE)
    {
        if (!IsTyped())
        {
            m_Context.list.SetFocus();
            return true;
        }
        Show(GetText());
        SetSel(0, -1);
        return true;
    }
    return false;
}

// The program's own keys wait while a text is edited.
bool CPropCtrlEdit::TakesShortcut(const SKeyEvent& key)
{
    return key.bControl || key.uKey == KEY_ENTER || key.uKey == KEY_DELETE ||
           key.uKey == KEY_ESCAPE;
}

void CPropCtrlEdit::OnSetFocus()
{
    // A path shows the macros themselves while somebody edits it.
    if (m_bExpanding && !m_bAbandoned && !IsTyped())
    {
        Show(GetText());
    }
}

void CPropCtrlEdit::OnKillFocus()
{
    Commit();
}
