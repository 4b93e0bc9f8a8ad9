// The row under edit: which editors it has, where they lie, and how the keyboard goes through them.

#include "host/Reflection.h"
#include "tellur/proplist/CPropCtrlBrowseButton.h"
#include "tellur/proplist/CPropCtrlCheckbox.h"
#include "tellur/proplist/CPropCtrlCombobox.h"
#include "tellur/proplist/CPropCtrlEdit.h"
#include "tellur/proplist/CPropCtrlSpinner.h"
#include "tellur/proplist/CPropListCtrl.h"
#include "tellur/proplist/PropClasses.h"

#include <algorithm>

namespace
{

// Shares of the row's height.
constexpr double SPINNER_WIDTH = 0.75;
constexpr double BROWSE_WIDTH = 1.3;
constexpr double COLOR_WIDTH = 2.0;

// What takes the room that spinner and browse button leave.
constexpr EPropEditor FILLERS[] = {
    PROP_EDITOR_EDIT, PROP_EDITOR_COMBO, PROP_EDITOR_CLASS_COMBO, PROP_EDITOR_CHECKBOX};
// The way of the keyboard.
constexpr EPropEditor WAY[] = {PROP_EDITOR_EDIT,
                               PROP_EDITOR_COMBO,
                               PROP_EDITOR_CLASS_COMBO,
                               PROP_EDITOR_CHECKBOX,
                               PROP_EDITOR_BROWSE};

std::vector<CPropInPlaceCtrl*> GetWay(const SPropRow& row)
{
    std::vector<CPropInPlaceCtrl*> way;
    for (const EPropEditor eSlot : WAY)
    {
        CPropInPlaceCtrl* pEditor = row.editors[eSlot].get();
        if (pEditor != nullptr && pEditor->CanFocus() && pEditor->GetWindow().IsWindowEnabled())
        {
            way.push_back(pEditor);
        }
    }
    return way;
}

bool HasFocusedEditor(const SPropRow& row)
{
    return std::any_of(row.editors.begin(),
                       row.editors.end(),
                       [](const auto& pEditor)
                       { return pEditor != nullptr && pEditor->GetWindow().HasFocus(); });
}

} // namespace

template <class TEditor> void CPropListCtrl::EnsureEditor(SPropRow& row, EPropEditor eSlot)
{
    if (row.editors[eSlot] == nullptr)
    {
        auto pEditor = std::make_unique<TEditor>(*this, row, m_NextEditorId++);
        if (pEditor->CreateEditor())
        {
            row.editors[eSlot] = std::move(pEditor);
        }
    }
}

void CPropListCtrl::ChooseEditors(SPropRow& row)
{
    if (row.pField == nullptr || (row.pField->GetFlags() & RTTI_FIELD_EDIT) == 0)
    {
        return;
    }
    const uint32_t uFlags = row.pField->GetEditFlags();
    const ERTTIType eType = row.pField->GetType();
    const bool bWhole = row.iElement < 0;
    const CRTTI* pPointed = GetPointedClass(*row.pField);
    if ((uFlags & RTTI_EDIT_EDIT) != 0)
    {
        EnsureEditor<CPropCtrlEdit>(row, PROP_EDITOR_EDIT);
    }
    if ((uFlags & RTTI_EDIT_COMBO) != 0)
    {
        EnsureEditor<CPropCtrlCombobox>(row, PROP_EDITOR_COMBO);
    }
    if ((eType == RTTI_POINTER && bWhole) || (eType == RTTI_POINTER_LIST && !bWhole))
    {
        if (pPointed != nullptr && pPointed->IsAbstract() && !pPointed->IsInterface())
        {
            EnsureEditor<CPropCtrlClassCombobox>(row, PROP_EDITOR_CLASS_COMBO);
        }
    }
    if ((uFlags & RTTI_EDIT_CHECKBOX) != 0 || (eType == RTTI_FLAGS && !bWhole))
    {
        EnsureEditor<CPropCtrlCheckbox>(row, PROP_EDITOR_CHECKBOX);
    }
    const bool bObjects =
        (uFlags & RTTI_EDIT_BROWSE) != 0 && !(eType == RTTI_POINTER_LIST && bWhole);
    if ((uFlags & RTTI_EDIT_COLOR) != 0 && bWhole)
    {
        EnsureEditor<CPropCtrlBrowseColorButton>(row, PROP_EDITOR_BROWSE);
    }
    else if (bObjects || (uFlags & (RTTI_EDIT_BROWSE_FILE | RTTI_EDIT_BROWSE_FOLDER)) != 0)
    {
        EnsureEditor<CPropCtrlBrowseButton>(row, PROP_EDITOR_BROWSE);
    }
    const bool bSpinner =
        (uFlags & RTTI_EDIT_SPINNER) != 0 && !(bWhole && (uFlags & RTTI_EDIT_NO_MAIN_SPINNER) != 0);
    if (bSpinner)
    {
        EnsureEditor<CPropCtrlSpinner>(row, PROP_EDITOR_SPINNER);
    }
    CPropInPlaceCtrl* pEdit = row.editors[PROP_EDITOR_EDIT].get();
    if (pEdit != nullptr)
    {
        // A path is shown with what its macros stand for.
        static_cast<CPropCtrlEdit*>(pEdit)->SetExpanding(
            eType == RTTI_STRING &&
            (uFlags & (RTTI_EDIT_BROWSE_FILE | RTTI_EDIT_BROWSE_FOLDER)) != 0);
    }
}

void CPropListCtrl::PlaceEditors(const SPropRow& row)
{
    const int iItem = row.iItem;
    if (iItem < 0)
    {
        return;
    }
    const SRect cell = GetCellRect(iItem, VALUE_COLUMN);
    int iRight = 0;
    const auto placeRight = [&](EPropEditor eSlot, double fShare)
    {
        if (row.editors[eSlot] != nullptr)
        {
            const int iWidth =
                std::min(static_cast<int>(cell.GetHeight() * fShare), cell.GetWidth());
            CWindow& window = row.editors[eSlot]->GetWindow();
            PlaceOverCell(window, iItem, VALUE_COLUMN, cell.GetWidth() - iRight - iWidth, iRight);
            iRight += iWidth;
        }
    };
    std::vector<CWindow*> fillers;
    for (const EPropEditor eSlot : FILLERS)
    {
        if (row.editors[eSlot] != nullptr)
        {
            fillers.push_back(&row.editors[eSlot]->GetWindow());
        }
    }
    const bool bColor =
        dynamic_cast<CPropCtrlBrowseColorButton*>(row.editors[PROP_EDITOR_BROWSE].get()) != nullptr;
    if (bColor && fillers.empty())
    {
        fillers.push_back(&row.editors[PROP_EDITOR_BROWSE]->GetWindow());
    }
    else
    {
        placeRight(PROP_EDITOR_BROWSE, bColor ? COLOR_WIDTH : BROWSE_WIDTH);
    }
    placeRight(PROP_EDITOR_SPINNER, SPINNER_WIDTH);
    const auto nFillers = static_cast<int>(fillers.size());
    for (int i = 0; i < nFillers; ++i)
    {
        const int iRoom = std::max(0, cell.GetWidth() - iRight);
        PlaceOverCell(*fillers[static_cast<size_t>(i)],
                      iItem,
                      VALUE_COLUMN,
                      iRoom * i / nFillers,
                      cell.GetWidth() - iRoom * (i + 1) / nFillers);
    }
}

void CPropListCtrl::BeginEdit(SPropRow* pRow)
{
    if (pRow == m_pEdited)
    {
        return;
    }
    EndEdit();
    if (pRow == nullptr)
    {
        return;
    }
    m_pEdited = pRow;
    ChooseEditors(*pRow);
    PlaceEditors(*pRow);
    for (const auto& pEditor : pRow->editors)
    {
        if (pEditor != nullptr)
        {
            pEditor->SetValueText(pRow->strText);
        }
    }
    CPropInPlaceCtrl* pSpinner = pRow->editors[PROP_EDITOR_SPINNER].get();
    CPropInPlaceCtrl* pEdit = pRow->editors[PROP_EDITOR_EDIT].get();
    if (pSpinner != nullptr && pEdit != nullptr)
    {
        static_cast<CPropCtrlSpinner*>(pSpinner)->SetBuddy(pEdit->GetWindow().GetControlId());
    }
}

void CPropListCtrl::EndEdit()
{
    SPropRow* pRow = m_pEdited;
    if (pRow == nullptr)
    {
        return;
    }
    for (const auto& pEditor : pRow->editors)
    {
        if (pEditor != nullptr)
        {
            pEditor->Commit();
        }
        if (m_pEdited != pRow)
        {
            return; // the value brought other rows
        }
    }
    m_pEdited = nullptr;
    if (HasFocus())
    {
        SetFocus();
    }
    for (const auto& pEditor : pRow->editors)
    {
        if (pEditor != nullptr)
        {
            RemoveFromCell(pEditor->GetWindow());
        }
    }
}

void CPropListCtrl::FocusRow(SPropRow& row, bool bLast)
{
    SelectItem(row.iItem);
    EnsureVisible(row.iItem);
    BeginEdit(&row);
    const std::vector<CPropInPlaceCtrl*> way = GetWay(row);
    if (!way.empty())
    {
        (bLast ? way.back() : way.front())->TakeFocus();
    }
}

// False at the ends: the focus is then at the list itself and goes on from there.
bool CPropListCtrl::MoveEditing(bool bBack)
{
    const std::vector<CPropInPlaceCtrl*> way =
        m_pEdited != nullptr ? GetWay(*m_pEdited) : std::vector<CPropInPlaceCtrl*>();
    const auto focused = std::find_if(way.begin(),
                                      way.end(),
                                      [](const CPropInPlaceCtrl* pEditor)
                                      {
                                          auto* pThat = const_cast<CPropInPlaceCtrl*>(pEditor);
                                          return pThat->GetWindow().HasFocus();
                                      });
    const bool bInside = focused != way.end();
    if (!bInside && bBack)
    {
        return false;
    }
    if (bInside && (bBack ? focused != way.begin() : focused + 1 != way.end()))
    {
        (*(bBack ? focused - 1 : focused + 1))->TakeFocus();
        return true;
    }
    if (!bInside && !way.empty())
    {
        way.front()->TakeFocus();
        return true;
    }
    const int iFrom = m_pEdited != nullptr ? m_pEdited->iItem : -1;
    const auto nShown = static_cast<int>(m_Shown.size());
    for (int i = iFrom + (bBack ? -1 : 1); i >= 0 && i < nShown; i += bBack ? -1 : 1)
    {
        SPropRow* pRow = GetRowOf(i);
        ChooseEditors(*pRow);
        if (!GetWay(*pRow).empty())
        {
            FocusRow(*pRow, bBack);
            return true;
        }
    }
    SetFocus();
    return bBack; // back from the first editor is the list
}

bool CPropListCtrl::TranslateKey(const SKeyEvent& key)
{
    return key.uKey == KEY_TAB && !key.bControl && !key.bAlt && MoveEditing(key.bShift);
}

bool CPropListCtrl::OnKeyDown(const SKeyEvent& key)
{
    SPropRow* pRow = GetRowOf(GetSelectedItem());
    if (pRow == nullptr || HasFocusedEditor(*pRow))
    {
        return false; // what an editor does not want is nothing to the list
    }
    switch (key.uKey)
    {
    case KEY_ENTER:
    case KEY_F2:
        FocusRow(*pRow, false);
        return true;
    case KEY_DELETE:
        ClearValue(*pRow);
        return true;
    case KEY_LEFT:
    case KEY_RIGHT:
        Toggle(*pRow, key.uKey == KEY_RIGHT);
        return true;
    default:
        return false;
    }
}

void CPropListCtrl::OnSize()
{
    if (m_pEdited != nullptr)
    {
        PlaceEditors(*m_pEdited);
    }
}

bool CPropListCtrl::OnLButtonDown(const SMouseEvent& event)
{
    m_Dead.clear(); // the hand is in the list, so no editor is at work
    int iItem = -1;
    int iColumn = -1;
    SPropRow* pRow = HitTest(event.point, iItem, iColumn) ? GetRowOf(iItem) : nullptr;
    if (pRow == nullptr || !pRow->bParent || iColumn != 0)
    {
        return false;
    }
    // On the picture before the name, which is as wide as the row is indented.
    const int iPicture = static_cast<int>(m_Images.GetImageSize().cx * GetScale());
    const int iLeft = event.point.x - GetCellRect(iItem, 0).left - pRow->iDepth * iPicture;
    if (iLeft < 0 || iLeft >= iPicture)
    {
        return false;
    }
    SetFocus();
    Toggle(*pRow, !pRow->bOpen);
    return true;
}

bool CPropListCtrl::OnNotify(SNotification& notification)
{
    switch (notification.eKind)
    {
    case ENotify::SelectionChanged:
        BeginEdit(GetRowOf(notification.iItem));
        return false;
    case ENotify::CellClicked:
        if (SPropRow* pRow = GetRowOf(notification.iItem))
        {
            FocusRow(*pRow, false);
        }
        return false;
    case ENotify::CellDoubleClicked:
        if (SPropRow* pRow = GetRowOf(notification.iItem))
        {
            Toggle(*pRow, !pRow->bOpen);
        }
        return false;
    case ENotify::ColumnResized:
        OnSize();
        return false;
    case ENotify::ContextMenu:
        OpenMenu(notification.iItem, notification.screen);
        return true;
    default:
        return false;
    }
}
