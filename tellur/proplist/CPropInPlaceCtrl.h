#pragma once

#include "framework/core/IFrontEnd.h"
#include "tellur/proplist/SPropRow.h"

#include <cstdint>
#include <string>

class CPropListCtrl;
class CWindow;

// What all in-place editors have in common: the row they belong to and the way values come and go.
// The second base of a control. Owned by its row; the window lies over the row's value cell.
class CPropInPlaceCtrl
{
public:
    // uId: from the list's counter of editors, the id of the window too.
    CPropInPlaceCtrl(CPropListCtrl& list, SPropRow& row, uint32_t uId);
    virtual ~CPropInPlaceCtrl();
    CPropInPlaceCtrl(const CPropInPlaceCtrl&) = delete;
    CPropInPlaceCtrl& operator=(const CPropInPlaceCtrl&) = delete;

    // Makes the window, a child of the list. False when it cannot.
    virtual bool CreateEditor() = 0;
    virtual CWindow& GetWindow() = 0;
    // The row's value has changed, or is shown first.
    virtual void SetValueText(const std::string& strText) = 0;

    // Hands over what was typed and not yet given to the row.
    virtual void Commit() {}

    // Whether the keyboard can go there; the arrows of a spinner belong to the edit beside them.
    virtual bool CanFocus() const { return true; }

    virtual void TakeFocus();

    // The row is going away: nothing may be handed over any more.
    void Abandon() { m_bAbandoned = true; }

    SPropRow& GetRow() { return m_Row; }

protected:
    uint32_t GetEditorId() const { return m_Id; }

    const std::string& GetValueText() const { return m_ValueText; }

    // The value to the row, which writes it and tells the other editors.
    void Apply(const std::string& strText);

    CPropListCtrl& m_List;
    SPropRow& m_Row;
    std::string m_ValueText; // the last that came
    bool m_bUnfilled = true; // until the first fill of editors that fill themselves
    bool m_bAbandoned = false;

private:
    uint32_t m_Id;
};
