#pragma once

#include "framework/widgets/CButton.h"
#include "tellur/proplist/CPropInPlaceCtrl.h"

// Chooses the value in a dialog: a file, a folder, an object, by the browse bits of the field's
// edit flags. With Shift held it clears the value instead.
class CPropCtrlBrowseButton : public CButton, public CPropInPlaceCtrl
{
public:
    CPropCtrlBrowseButton(const SPropEditorContext& context, SPropRow& row, uint32_t uId);

    bool CreateEditor() override;

    CWindow& GetWindow() override { return *this; }

    void SetValueText(const std::string& strText) override;
    SPropEditorPlace GetPlace() const override;

    uint32_t GetKind() const { return m_Kind; } // the browse bits

protected:
    bool OnNotify(SNotification& notification) override;

    virtual void Browse(bool bShift);

private:
    uint32_t m_Kind;
};

// Shows a colour and chooses it: three numbers from 0 to 1, red, green and blue; what follows them
// stays.
class CPropCtrlBrowseColorButton : public CPropCtrlBrowseButton
{
public:
    using CPropCtrlBrowseButton::CPropCtrlBrowseButton;

    bool CreateEditor() override;
    void SetValueText(const std::string& strText) override;
    SPropEditorPlace GetPlace() const override;

    uint32_t GetColor() const { return m_Color; } // red | green << 8 | blue << 16

protected:
    void DrawItem(const SDrawItem& item) override;
    void Browse(bool bShift) override;

private:
    uint32_t m_Color = 0;
};
