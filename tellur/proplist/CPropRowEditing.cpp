#include "tellur/proplist/CPropRowEditing.h"

#include "framework/widgets/CListCtrl.h"
#include "tellur/proplist/CPropInPlaceCtrl.h"
#include "tellur/proplist/CPropRowModel.h"
#include "tellur/proplist/PropEditorKinds.h"

#include <algorithm>

CPropRowEditing::CPropRowEditing(const SPropEditorContext& context, int iColumn)
    : m_Context(context)
    , m_iColumn(iColumn)
{
}

CPropRowEditing::~CPropRowEditing()
{
    Abandon();
}

void CPropRowEditing::MakeEditors(SPropRow& row)
{
    if (!row.IsEditable())
    {
        return;
    }
    const auto kinds = GetPropEditorKinds();
    Editors& editors = m_Editors[&row];
    editors.resize(kinds.size());
    for (size_t i = 0; i < kinds.size(); ++i)
    {
        // An editor whose window could not be made is tried again the next time.
        if (editors[i] == nullptr && kinds[i].pFits(row))
        {
            auto pEditor = kinds[i].pMake(m_Context, row, m_NextEditorId++);
            if (pEditor->CreateEditor())
            {
                editors[i] = std::move(pEditor);
            }
        }
    }
}

std::vector<CPropInPlaceCtrl*> CPropRowEditing::GetEditors(const SPropRow& row) const
{
    std::vector<CPropInPlaceCtrl*> editors;
    const auto found = m_Editors.find(&row);
    if (found != m_Editors.end())
    {
        for (const auto& pEditor : found->second)
        {
            if (pEditor != nullptr)
            {
                editors.push_back(pEditor.get());
            }
        }
    }
    return editors;
}

std::vector<CPropInPlaceCtrl*> CPropRowEditing::GetWay(const SPropRow& row) const
{
    std::vector<CPropInPlaceCtrl*> way = GetEditors(row);
    std::erase_if(way,
                  [](auto* pEditor)
                  { return !pEditor->CanFocus() || !pEditor->GetWindow().IsWindowEnabled(); });
    return way;
}

void CPropRowEditing::Place()
{
    if (m_pRow == nullptr || m_pRow->iItem < 0)
    {
        return;
    }
    CListCtrl& list = m_Context.list;
    const int iItem = m_pRow->iItem;
    const SRect cell = list.GetCellRect(iItem, m_iColumn);
    const std::vector<CPropInPlaceCtrl*> editors = GetEditors(*m_pRow);
    const bool bFilled = std::any_of(
        editors.begin(), editors.end(), [](const auto* p) { return p->GetPlace().fWidth == 0.0; });
    // Those at the right end first, from the end inwards; the others share what is left.
    std::vector<CWindow*> fillers;
    int iRight = 0;
    for (CPropInPlaceCtrl* pEditor : editors)
    {
        const SPropEditorPlace place = pEditor->GetPlace();
        if (place.fWidth == 0.0 || (place.bFillsAlone && !bFilled))
        {
            fillers.push_back(&pEditor->GetWindow());
            continue;
        }
        const int iWidth =
            std::min(static_cast<int>(cell.GetHeight() * place.fWidth), cell.GetWidth());
        list.PlaceOverCell(
            pEditor->GetWindow(), iItem, m_iColumn, cell.GetWidth() - iRight - iWidth, iRight);
        iRight += iWidth;
    }
    const auto nFillers = static_cast<int>(fillers.size());
    for (int i = 0; i < nFillers; ++i)
    {
        const int iRoom = std::max(0, cell.GetWidth() - iRight);
        list.PlaceOverCell(*fillers[static_cast<size_t>(i)],
                           iItem,
                           m_iColumn,
                           iRoom * i / nFillers,
                           cell.GetWidth() - iRoom * (i + 1) / nFillers);
    }
}

void CPropRowEditing::Begin(SPropRow* pRow)
{
    if (pRow == m_pRow.get())
    {
        return;
    }
    // End may bring other rows, and then nothing else keeps this one.
    const std::shared_ptr<SPropRow> pKept = pRow != nullptr ? pRow->shared_from_this() : nullptr;
    End();
    if (pRow == nullptr)
    {
        return;
    }
    // What End handed over may have brought other rows.
    if (!m_Context.model.HasRow(*pRow))
    {
        SPropRow* pNow = m_Context.model.FindAgain(*pRow);
        if (pNow != nullptr && pNow->iItem >= 0)
        {
            m_Context.list.SelectItem(pNow->iItem);
            Begin(pNow);
        }
        return;
    }
    m_pRow = pKept;
    MakeEditors(*pRow);
    Place();
    const std::vector<CPropInPlaceCtrl*> editors = GetEditors(*pRow);
    for (CPropInPlaceCtrl* pEditor : editors)
    {
        pEditor->SetValueText(pRow->strText);
    }
    for (CPropInPlaceCtrl* pEditor : editors)
    {
        for (CPropInPlaceCtrl* pOther : editors)
        {
            // Whatever their order: arrows look for the edit beside them.
            if (pOther != pEditor)
            {
                pEditor->Meet(*pOther);
            }
        }
    }
}

void CPropRowEditing::End()
{
    const std::shared_ptr<SPropRow> pRow = m_pRow;
    if (pRow == nullptr)
    {
        return;
    }
    const std::vector<CPropInPlaceCtrl*> editors = GetEditors(*pRow);
    for (CPropInPlaceCtrl* pEditor : editors)
    {
        pEditor->Commit();
        if (m_pRow != pRow)
        {
            return; // the value brought other rows
        }
    }
    m_pRow = nullptr;
    if (m_Context.list.HasFocus())
    {
        m_Context.list.SetFocus();
    }
    for (CPropInPlaceCtrl* pEditor : editors)
    {
        // Only hidden: the editors of a row are used again when it comes under edit again.
        m_Context.list.RemoveFromCell(pEditor->GetWindow());
    }
}

void CPropRowEditing::Focus(SPropRow& row, bool bLast)
{
    // Selecting it ends the editors of another row, which may hand over a value that makes all rows
    // anew.
    const auto pKept = row.shared_from_this();
    m_Context.list.SelectItem(row.iItem);
    m_Context.list.EnsureVisible(row.iItem);
    Begin(&row);
    const std::vector<CPropInPlaceCtrl*> way =
        m_pRow != nullptr ? GetWay(*m_pRow) : std::vector<CPropInPlaceCtrl*>();
    if (!way.empty())
    {
        (bLast ? way.back() : way.front())->TakeFocus();
    }
}

// Inside the row first, then from the list into the row, then on to a row that has an editor for
// the keyboard.
bool CPropRowEditing::MoveFocus(bool bBack)
{
    const std::vector<CPropInPlaceCtrl*> way =
        m_pRow != nullptr ? GetWay(*m_pRow) : std::vector<CPropInPlaceCtrl*>();
    const auto focused = std::find_if(
        way.begin(), way.end(), [](auto* pEditor) { return pEditor->GetWindow().HasFocus(); });
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
    // Other rows: the editors of each are made to see whether the keyboard can go there.
    const int iStep = bBack ? -1 : 1;
    const int iFrom = m_pRow != nullptr ? m_pRow->iItem : -1;
    for (int i = iFrom + iStep; SPropRow* pRow = m_Context.model.GetShown(i); i += iStep)
    {
        MakeEditors(*pRow);
        if (!GetWay(*pRow).empty())
        {
            Focus(*pRow, bBack);
            return true;
        }
    }
    m_Context.list.SetFocus();
    return bBack; // back from the first editor is the list
}

bool CPropRowEditing::HasFocus(const SPropRow& row) const
{
    const std::vector<CPropInPlaceCtrl*> editors = GetEditors(row);
    return std::any_of(editors.begin(),
                       editors.end(),
                       [](auto* pEditor) { return pEditor->GetWindow().HasFocus(); });
}

void CPropRowEditing::ShowValue(const SPropRow& row, const CPropInPlaceCtrl* pSender)
{
    for (CPropInPlaceCtrl* pEditor : GetEditors(row))
    {
        if (pEditor != pSender)
        {
            pEditor->SetValueText(row.strText);
        }
    }
}

void CPropRowEditing::Abandon()
{
    for (const auto& [pRow, editors] : m_Editors)
    {
        for (CPropInPlaceCtrl* pEditor : GetEditors(*pRow))
        {
            pEditor->Abandon();
        }
    }
}

void CPropRowEditing::LetGo()
{
    const bool bFocus = m_Context.list.HasFocus();
    m_pRow = nullptr;
    Abandon();
    if (bFocus)
    {
        m_Context.list.SetFocus(); // here rather than wherever the window system puts it
    }
    for (auto& [pRow, editors] : m_Editors)
    {
        for (auto& pEditor : editors)
        {
            if (pEditor != nullptr)
            {
                pEditor->GetWindow().DestroyWindow();
                m_Waiting.push_back(std::move(pEditor));
            }
        }
    }
    m_Editors.clear();
}

void CPropRowEditing::Forget()
{
    m_Waiting.clear();
}
