// The menu of a row: copied attributes and commands on objects.

#include "framework/core/CMenu.h"
#include "framework/core/PopupMenu.h"
#include "host/EngineHost.h"
#include "host/Reflection.h"
#include "tellur/proplist/CPropListCtrl.h"
#include "tellur/proplist/PropClasses.h"
#include "tellur/proplist/PropText.h"

#include <algorithm>
#include <climits>

namespace
{

constexpr size_t AT_THE_END = SIZE_MAX;

bool IsPointer(const CRTTIField& field)
{
    return GetPointedClass(field) != nullptr;
}

// One pointer: a pointer field, or an element of a list.
bool IsSingle(const CRTTIField& field, int iElement)
{
    return field.GetType() == RTTI_POINTER || iElement >= 0;
}

} // namespace

PropObjects CPropListCtrl::GetMenuObjects() const
{
    const SPropRow* pRow = FindRow(m_MenuKey);
    if (pRow == nullptr)
    {
        return {};
    }
    if (pRow->pField == nullptr || !IsPointer(*pRow->pField))
    {
        return pRow->objects;
    }
    PropObjects pointed;
    for (CRTTIObject* pObject : pRow->objects)
    {
        const PropObjects own = GetPointed(*pRow->pField, pObject);
        if (pRow->iElement < 0)
        {
            pointed.insert(pointed.end(), own.begin(), own.end());
        }
        else if (static_cast<size_t>(pRow->iElement) < own.size())
        {
            pointed.push_back(own[static_cast<size_t>(pRow->iElement)]);
        }
    }
    std::erase(pointed, nullptr);
    return pointed;
}

void CPropListCtrl::OpenMenu(int iItem, SScreenPoint at)
{
    SPropRow* pRow = GetRowOf(iItem);
    if (pRow == nullptr || m_pUser == nullptr)
    {
        return;
    }
    SelectItem(iItem);
    BeginEdit(pRow);
    m_MenuKey = pRow->strKey;
    CMenu menu;
    FillMenu(menu, *pRow);
    const uint32_t uChosen = menu.GetItemCount() > 0 ? TrackPopupMenu(menu, at) : 0;
    // Much may have happened while the menu was open.
    SPropRow* pTarget = FindRow(m_MenuKey);
    if (uChosen != 0 && pTarget != nullptr)
    {
        RunCommand(*pTarget, uChosen);
    }
}

void CPropListCtrl::FillMenu(CMenu& menu, const SPropRow& row)
{
    if (row.pField == nullptr)
    {
        return;
    }
    const auto add = [&menu](uint32_t uCommand, const char* pszText)
    {
        menu.InsertItem(AT_THE_END, uCommand, pszText);
    };
    const bool bEditable = (row.pField->GetFlags() & RTTI_FIELD_EDIT) != 0;
    const bool bPointer = IsPointer(*row.pField);
    const PropObjects objects = bPointer ? GetMenuObjects() : PropObjects();
    const bool bCommands = !objects.empty() && m_pUser->QueryFlag();
    if (bEditable && bPointer && row.iElement >= 0)
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
    m_pUser->AddContextMenuItems(menu, row.pField, row.iElement);
    const bool bDeletable = std::none_of(
        objects.begin(), objects.end(), [](const auto* p) { return p->IsStaticObject(); });
    if (bCommands && bDeletable)
    {
        menu.InsertSeparator(AT_THE_END);
        add(PROP_COMMAND_DELETE, "Delete object(s)");
    }
}

void CPropListCtrl::RunCommand(SPropRow& row, uint32_t uCommand)
{
    switch (uCommand)
    {
    case PROP_COMMAND_REMOVE:
    {
        std::vector<std::string> words = SplitWords(row.pField->ToString(row.objects.front()));
        if (static_cast<size_t>(row.iElement) < words.size())
        {
            words.erase(words.begin() + row.iElement);
            m_pUser->SetFieldValue(row.pField, JoinWords(words).c_str(), PropObjects(row.objects));
            RefreshValues();
        }
        break;
    }
    case PROP_COMMAND_COPY:
        CopyAttribute(row);
        break;
    case PROP_COMMAND_PASTE:
        PasteAttribute(row);
        break;
    default:
        m_pUser->Notify(uCommand);
        RefreshValues();
        break;
    }
}

void CPropListCtrl::CopyAttribute(const SPropRow& row)
{
    m_Copied = {row.pField, row.iElement, row.strText, {}};
    if (IsPointer(*row.pField))
    {
        for (const CRTTIObject* pObject : GetMenuObjects())
        {
            m_Copied.pointed.push_back(pObject->GetObjectId());
        }
    }
}

bool CPropListCtrl::CanPaste(const SPropRow& row) const
{
    const CRTTIField& target = *row.pField;
    if (m_Copied.pField == nullptr || (target.GetFlags() & RTTI_FIELD_READONLY) != 0 ||
        (target.GetFlags() & RTTI_FIELD_EDIT) == 0)
    {
        return false;
    }
    if (!IsPointer(target) || !IsPointer(*m_Copied.pField))
    {
        return m_Copied.pField->GetType() == target.GetType() &&
               (m_Copied.iElement < 0) == (row.iElement < 0);
    }
    if (IsSingle(*m_Copied.pField, m_Copied.iElement) != IsSingle(target, row.iElement))
    {
        return false;
    }
    EngineHost* pEngine = m_pUser->GetEngineHost();
    return std::all_of(m_Copied.pointed.begin(),
                       m_Copied.pointed.end(),
                       [&](int32_t iId)
                       {
                           const CRTTIObject* pObject =
                               pEngine != nullptr ? pEngine->FindObjectById(iId) : nullptr;
                           return pObject != nullptr && pObject->FromClass(GetPointedClass(target));
                       });
}

void CPropListCtrl::PasteAttribute(SPropRow& row)
{
    if (CanPaste(row))
    {
        const std::string strText = m_Copied.strText; // lives through what the value brings
        ApplyValue(row, strText.c_str(), nullptr);
    }
}
