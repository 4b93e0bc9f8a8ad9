#include "tellur/proplist/CPropCtrlCombobox.h"

#include "framework/widgets/CListCtrl.h"
#include "host/Reflection.h"
#include "tellur/proplist/PropClasses.h"
#include "tellur/proplist/PropText.h"

#include <algorithm>

bool CPropCtrlComboboxBase::CreateEditor()
{
    return CreateCombo(m_Context.list, GetEditorId(), {});
}

void CPropCtrlComboboxBase::Fill()
{
    ResetContent();
    m_bUnfilled = false;
    m_bWithDifferent = m_Row.bDifferent;
    if (m_bWithDifferent)
    {
        AddString(PROP_DIFFERENT_VALUES);
    }
    for (const std::string& strChoice : GetChoices())
    {
        AddString(strChoice.c_str());
    }
}

void CPropCtrlComboboxBase::SetValueText(const std::string& strText)
{
    m_ValueText = strText;
    // The item of different values comes and goes with them.
    if (m_bUnfilled || m_bWithDifferent != m_Row.bDifferent)
    {
        Fill();
    }
    SetCurSel(m_Row.bDifferent ? 0 : FindString(GetChoice().c_str()));
}

bool CPropCtrlComboboxBase::OnNotify(SNotification& notification)
{
    if (notification.eKind != ENotify::SelectionChanged)
    {
        return false;
    }
    const std::string strChosen = GetItemText(GetCurSel());
    if (strChosen != PROP_DIFFERENT_VALUES)
    {
        Apply(strChosen);
        if (!m_bAbandoned)
        {
            SetValueText(m_Row.strText); // the old one again when it was refused
        }
    }
    return true;
}

std::vector<std::string> CPropCtrlCombobox::GetChoices() const
{
    std::vector<std::string> choices;
    const CEnumInfo* pInfo = m_Row.pField->GetEnumInfo();
    if (m_Row.pField->GetType() == RTTI_ENUM && pInfo != nullptr)
    {
        for (const CEnumInfo::SEntry& entry : pInfo->GetInfo())
        {
            choices.push_back(entry.strName);
        }
    }
    return choices;
}

std::vector<std::string> CPropCtrlClassCombobox::GetChoices() const
{
    std::vector<std::string> choices = {PROP_NULL};
    for (const CRTTI* pClass : FindConcreteClasses(GetPointedClass(*m_Row.pField)))
    {
        choices.emplace_back(pClass->GetClassNameA());
    }
    return choices;
}

std::string CPropCtrlClassCombobox::GetChoice() const
{
    const PropObjects pointed =
        m_Row.objects.empty() ? PropObjects() : GetPointed(*m_Row.pField, m_Row.objects.front());
    const auto iTarget = static_cast<size_t>(std::max(m_Row.iElement, 0));
    const bool bThere = iTarget < pointed.size() && pointed[iTarget] != nullptr;
    return bThere ? pointed[iTarget]->GetClassNameA() : PROP_NULL;
}
