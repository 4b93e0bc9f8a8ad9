#pragma once

#include "framework/widgets/CEdit.h"
#include "tellur/proplist/CPropInPlaceCtrl.h"

class ITextMacroTable;

// Every "&name&" becomes the value registered under the name, "&&" an ampersand; an unknown name
// stays as it is written. pTable: null is an empty table. At most 4096 characters are looked at.
std::string ExpandTextMacros(const std::string& strText, const ITextMacroTable* pTable);

// The value as text. Enter and the loss of the focus hand over what was typed, Escape brings the
// value back; a second Escape goes back to the list.
class CPropCtrlEdit : public CEdit, public CPropInPlaceCtrl
{
public:
    CPropCtrlEdit(const SPropEditorContext& context, SPropRow& row, uint32_t uId);

    bool CreateEditor() override;

    CWindow& GetWindow() override { return *this; }

    void SetValueText(const std::string& strText) override;
    void Commit() override;
    void TakeFocus() override;

protected:
    bool TranslateKey(const SKeyEvent& key) override;
    bool TakesShortcut(const SKeyEvent& key) override;
    void OnSetFocus() override;
    void OnKillFocus() override;

private:
    std::string GetText() const; // what stands there when nobody types
    void Show(const std::string& strText);

    bool IsTyped() const { return GetWindowText() != m_Shown; }

    std::string m_Shown;     // put there last by code
    const bool m_bExpanding; // a path is shown with what its macros stand for while nobody types
};
