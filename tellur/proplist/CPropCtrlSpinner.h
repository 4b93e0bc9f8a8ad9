#pragma once

#include "framework/widgets/CSpinButtonCtrl.h"
#include "tellur/proplist/CPropInPlaceCtrl.h"

// Two arrows that change a number by clicks, and by dragging up and down from them without end: at
// the top and the bottom of the screen the cursor goes on from the other side.
class CPropCtrlSpinner : public CSpinButtonCtrl, public CPropInPlaceCtrl
{
public:
    CPropCtrlSpinner(const SPropEditorContext& context, SPropRow& row, uint32_t uId);

    bool CreateEditor() override;

    CWindow& GetWindow() override { return *this; }

    bool CanFocus() const override { return false; }

    void SetValueText(const std::string& strText) override;
    SPropEditorPlace GetPlace() const override;
    void Meet(CPropInPlaceCtrl& other) override;

protected:
    bool OnNotify(SNotification& notification) override;
    bool OnLButtonDown(const SMouseEvent& event) override;
    bool OnMouseMove(const SMouseEvent& event) override;
    bool OnLButtonUp(const SMouseEvent& event) override;

private:
    void Change(int nUnits); // upwards
    std::string FormatValue() const;
    void WrapCursor(SScreenPoint at, int nMoved);

    double m_Value = 0.0;
    double m_Step;
    bool m_bDragging = false;
    int m_LastY = 0; // of the cursor on the screen
};
