#include "tellur/proplist/CPropRowMenu.h"

#include "framework/core/CMenu.h"
#include "framework/core/PopupMenu.h"
#include "host/Reflection.h"
#include "tellur/proplist/CPropRowModel.h"
#include "tellur/proplist/PropClasses.h"

#include <algorithm>
#include <climits>

namespace
{

constexpr size_t AT_THE_END = SIZE_MAX;

} // namespace

CPropRowMenu::CPropRowMenu(CPropRowModel& model)
    : m_Model(model)
{
}

PropObjects CPropRowMenu::GetObjects() const
{
    const SPropRow* pRow = m_Model.FindRow(m_Key);
    return pRow != nullptr ? pRow->FindTargets() : PropObjects();
}

void CPropRowMenu::Open(const SPropRow& row, SScreenPoint at)
{
    if (m_Model.GetUser() == nullptr)
    {
        return;
    }
    m_Key = row.strKey;
    CMenu menu;
    Fill(menu, row);
    const uint32_t uChosen = menu.GetItemCount() > 0 ? TrackPopupMenu(menu, at) : 0;
    // Much may have happened while the menu was open.
    SPropRow* pTarget = m_Model.FindRow(m_Key);
    if (uChosen != 0 && pTarget != nullptr)
    {
        Run(*pTarget, uChosen);
    }
}

void CPropRowMenu::Fill(CMenu& menu, const SPropRow& row) const
{
    if (row.pField == nullptr)
    {
        return;
    }
    const auto add = [&menu](uint32_t uCommand, const char* pszText)
    {
        menu.InsertItem(AT_THE_END, uCommand, pszText);
    };
    IPropListCtrlUser& user = *m_Model.GetUser();
    const bool bPointer = GetPointedClass(*row.pField) != nullptr;
    const PropObjects objects = bPointer ? row.FindTargets() : PropObjects();
    const bool bCommands = !objects.empty() && user.QueryFlag();
    if (row.IsEditable() && bPointer && row.iElement >= 0)
    {
        add(PROP_COMMAND_REMOVE, "Remove object from list");
    }
    if (bCommands)
    {
        add(PROP_COMMAND_SELECT, "Select object(s)");
        add(PROP_COMMAND_SELECT_CHAIN, "Select chain of objects");
        add(PROP_COMMAND_MAKE_PUBLIC, "Make this object public");
    }
    if (!row.bDifferent)
    {
        add(PROP_COMMAND_COPY, "Copy attribute");
    }
    if (CanPaste(row))
    {
        add(PROP_COMMAND_PASTE, "Paste attribute");
    }
    user.AddContextMenuItems(menu, row.pField, row.iElement);
    const bool bDeletable = std::none_of(
        objects.begin(), objects.end(), [](const auto* p) { return p->IsStaticObject(); });
    if (bCommands && bDeletable)
    {
        menu.InsertSeparator(AT_THE_END);
        add(PROP_COMMAND_DELETE, "Delete object(s)");
    }
}

void CPropRowMenu::Run(SPropRow& row, uint32_t uCommand)
{
    switch (uCommand)
    {
    case PROP_COMMAND_REMOVE:
        m_Model.RemoveElement(row);
        break;
    case PROP_COMMAND_COPY:
        m_Copied.Copy(row);
        break;
    case PROP_COMMAND_PASTE:
        if (CanPaste(row))
        {
            // A copy lives through what the value brings.
            m_Model.SetValue(row, std::string(m_Copied.GetText()), nullptr);
        }
        break;
    default:
        m_Model.GetUser()->Notify(uCommand);
        m_Model.RefreshValues();
        break;
    }
}

bool CPropRowMenu::CanPaste(const SPropRow& row) const
{
    return m_Copied.Fits(row, *m_Model.GetUser());
}
