#pragma once

#include "framework/core/IFrontEnd.h"
#include "tellur/proplist/SPropEditorContext.h"
#include "tellur/proplist/SPropRow.h"

#include <cstdint>
#include <memory>
#include <string>

class CWindow;

// How an editor shares the cell that it lies over with the others of its row.
struct SPropEditorPlace
{
    // Of an editor at the right end of the cell, a share of the cell's height. 0: it fills, beside
    // others that do, what those at the right end leave.
    double fWidth = 0.0;
    bool bFillsAlone = false; // fills where no other editor does, whatever its width
};

// What all in-place editors have in common: the row they belong to and the way values come and go.
// The second base of a control. Owned by CPropRowEditing; the window lies over the row's value
// cell. Keeps its row, since it may be at work when the list gets other rows.
class CPropInPlaceCtrl
{
public:
    // uId: from the list's counter of editors, the id of the window too.
    CPropInPlaceCtrl(const SPropEditorContext& context, SPropRow& row, uint32_t uId);
    virtual ~CPropInPlaceCtrl();
    CPropInPlaceCtrl(const CPropInPlaceCtrl&) = delete;
    CPropInPlaceCtrl& operator=(const CPropInPlaceCtrl&) = delete;

    // Makes the window, a child of the list. False when it cannot.
    virtual bool CreateEditor() = 0;
    virtual CWindow& GetWindow() = 0;
    // Shows the row's value, which has changed or comes under edit.
    virtual void SetValueText(const std::string& strText) = 0;

    // Hands over what was typed and not yet given to the row.
    virtual void Commit() {}

    virtual SPropEditorPlace GetPlace() const { return {}; }

    // Whether the keyboard can go there; the arrows of a spinner belong to the edit beside them.
    virtual bool CanFocus() const { return true; }

    virtual void TakeFocus();

    // Told of each other editor of the row when the row comes under edit, in case one works
    // another.
    virtual void Meet(CPropInPlaceCtrl& /*other*/) {}

    // To be called when the row goes away: nothing may be handed over any more.
    void Abandon() { m_bAbandoned = true; }

protected:
    uint32_t GetEditorId() const { return m_Id; }

    const std::string& GetValueText() const { return m_ValueText; }

    // Hands a value to the row, which writes it and tells the other editors.
    void Apply(const std::string& strText);

    const SPropEditorContext m_Context;
    SPropRow& m_Row;
    std::string m_ValueText; // the last that came
    bool m_bUnfilled = true; // until the first fill of editors that fill themselves
    bool m_bAbandoned = false;

private:
    std::shared_ptr<SPropRow> m_KeptRow; // m_Row
    uint32_t m_Id;
};
