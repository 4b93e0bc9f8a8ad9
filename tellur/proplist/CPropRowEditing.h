#pragma once

#include "tellur/proplist/SPropEditorContext.h"

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

class CPropInPlaceCtrl;
struct SPropRow;

// The row of a list that is under edit, and the in-place editors of all rows: it makes them, lays
// them over their cells, and moves the keyboard through them. Editors are made when their row comes
// under edit first and live until the list has other rows.
class CPropRowEditing
{
public:
    // context: borrowed, as long as the editing lives. iColumn: whose cells editors lie over.
    CPropRowEditing(const SPropEditorContext& context, int iColumn);
    ~CPropRowEditing();
    CPropRowEditing(const CPropRowEditing&) = delete;
    CPropRowEditing& operator=(const CPropRowEditing&) = delete;

    SPropRow* GetRow() const { return m_pRow.get(); } // null: no row is under edit

    // Ends the editing of another row; what was typed there may bring other rows, and then the row
    // comes under edit that was made in this one's place. Null only ends.
    void Begin(SPropRow* pRow);
    void End();
    // Selects the row and brings it under edit, with the keyboard in its first or last editor.
    void Focus(SPropRow& row, bool bLast);
    // Moves the keyboard to the next editor, or to the one before, also of another row. False where
    // there is none: the keyboard is then at the list itself and goes on from there.
    bool MoveFocus(bool bBack);
    bool HasFocus(const SPropRow& row) const; // any editor of it

    // Lays the editors over the cell as it is now.
    void Place();
    // Lets the editors of a row show its value, which was read again. pSender: the one that shows
    // it already, may be null.
    void ShowValue(const SPropRow& row, const CPropInPlaceCtrl* pSender);

    // To be called when the list has other rows: nothing is under edit then, and the windows of all
    // editors end. The editors themselves wait, since one of them may be at work, with a dialog of
    // its own still open.
    void LetGo();
    // Deletes the editors that wait. None of them may be at work.
    void Forget();

private:
    using Editors = std::vector<std::unique_ptr<CPropInPlaceCtrl>>; // by kind; null: has none

    void MakeEditors(SPropRow& row); // that it lacks
    std::vector<CPropInPlaceCtrl*> GetEditors(const SPropRow& row) const;
    std::vector<CPropInPlaceCtrl*> GetWay(const SPropRow& row) const; // of the keyboard
    void Abandon();

    const SPropEditorContext m_Context;
    const int m_iColumn;
    std::shared_ptr<SPropRow> m_pRow; // under edit
    std::map<const SPropRow*, Editors> m_Editors;
    Editors m_Waiting;
    uint32_t m_NextEditorId = 1;
};
