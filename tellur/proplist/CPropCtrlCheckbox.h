#pragma once

#include "framework/widgets/CButton.h"
#include "tellur/proplist/CPropInPlaceCtrl.h"

// A value that is true or false. It draws itself. A click on the third state, which several objects
// with different values have, makes all of them false, which is kept on purpose.
class CPropCtrlCheckbox : public CButton, public CPropInPlaceCtrl
{
public:
    using CPropInPlaceCtrl::CPropInPlaceCtrl;

    bool CreateEditor() override;

    CWindow& GetWindow() override { return *this; }

    void SetValueText(const std::string& strText) override;

protected:
    bool OnNotify(SNotification& notification) override;
    void DrawItem(const SDrawItem& item) override;

private:
    void DrawBox(CDrawContext& context, const SRect& box, bool bDisabled) const;

    int m_State = CHECK_OFF;
};
