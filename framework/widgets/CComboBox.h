#pragma once

#include "framework/widgets/CWindow.h"

// A drop-down list of texts of which one or none is selected. Selecting by code notifies nobody.
class TELLUR_API CComboBox : public CWindow
{
public:
    bool CreateCombo(CWindow& parent, uint32_t uId, const SRect& rect);
    int AddString(const char* pszText); // its place; -1 without a window
    void ResetContent();
    int GetCount() const;
    std::string GetItemText(int iItem) const;  // empty when there is no such item
    int FindString(const char* pszText) const; // the whole text; -1: none
    void SetItemData(int iItem, uintptr_t uData);
    uintptr_t GetItemData(int iItem) const; // 0 when there is none
    void SetCurSel(int iItem);              // -1: none
    int GetCurSel() const;                  // -1: none
    void ShowDropDown(bool bShow);
};
