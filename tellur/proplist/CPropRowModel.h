#pragma once

#include "tellur/proplist/CPropValueWriter.h"
#include "tellur/proplist/SPropRow.h"

#include <set>

class CPropInPlaceCtrl;
class CRTTI;
class IPropRowView;

// What a property list shows, without a window: the rows of the edited objects, which of them are
// open, and their values, which it reads through the reflection and writes through its user. It
// makes its rows anew when they may be of objects that are gone.
//
// Objects are borrowed: the owner sets others before they go. A value that is written may bring
// other objects or rows; they wait until it is written. All on the UI thread.
class CPropRowModel
{
public:
    explicit CPropRowModel(IPropRowView& view); // borrowed, as long as the model lives

    // Sets whom values are written through, borrowed. With null, as at first, nothing is written.
    void SetUser(IPropListCtrlUser* pUser) { m_pUser = pUser; }

    IPropListCtrlUser* GetUser() const { return m_pUser; }

    // The rows are made anew unless the objects are the same, whose values are then read again.
    void SetObjects(const PropObjects& objects);
    void SetShowHidden(bool bShow); // fields with the edit flag HIDDEN
    void RefreshValues();

    // Parents stand before their children.
    const PropRows& GetRows() const { return m_Rows; }

    // The rows that no closed row hides, from 0 on. Null when there is none.
    int GetShownCount() const { return static_cast<int>(m_Shown.size()); }

    SPropRow* GetShown(int iItem) const;
    SPropRow* FindRow(const std::string& strKey) const; // null when there is none
    // The row itself, or the one that was made in its place; null when there is neither.
    SPropRow* FindAgain(const SPropRow& row) const;

    bool HasRow(const SPropRow& row) const { return FindAgain(row) == &row; }

    // Opens or closes a row that has others below it. It stays so for the rows of the same fields
    // of other objects. The view is not told.
    void SetOpen(SPropRow& row, bool bOpen);

    // The value as a person reads it.
    std::string GetShownText(const SPropRow& row) const;

    // Writes the text into the objects of the row, unless it is their value already, and reads the
    // row and whatever shows the same field again. The row may be gone afterwards. pSender: see
    // IPropRowView.
    void SetValue(SPropRow& row, const std::string& strText, const CPropInPlaceCtrl* pSender);
    // Writes the text of the whole field, also for a row that stands for a part of it, and reads
    // all rows again.
    void SetWholeField(const SPropRow& row, const std::string& strText);
    // Takes the element that the row stands for out of its list.
    void RemoveElement(const SPropRow& row);
    // See IPropListCtrlUser::HandleFieldEdit.
    bool HandleFieldEdit(const PropObjects& objects,
                         CRTTIField* pField,
                         const char* pszValue,
                         int iElement);

private:
    bool IsStale() const; // pointers point elsewhere than when the rows were made
    void MakeRows();
    void FindShown();
    void ReadRow(SPropRow& row, const CPropInPlaceCtrl* pSender);

    IPropRowView& m_View;
    IPropListCtrlUser* m_pUser = nullptr;
    CPropValueWriter m_Writer;
    PropObjects m_Objects;
    std::vector<const CRTTI*> m_Classes; // theirs, when the rows were made
    PropRows m_Rows;
    std::vector<SPropRow*> m_Shown;
    std::set<std::string> m_Toggled; // keys of rows that a person opened or closed
    int m_nWriting = 0;              // values on their way into the objects, one inside another
    bool m_bRowsLater = false;       // are made anew after the value that is being written
    bool m_bReadLater = false;       // all rows, after it
    bool m_bShowHidden = false;
};
