#pragma once

#include "framework/widgets/CWindow.h"

// A list of texts of which one or none is selected. Each click on an item notifies, also on the one
// that is selected already; selecting by code notifies nobody.
class TELLUR_API CListBox : public CWindow
{
public:
    int AddString(const char* pszText); // its place; -1 without a window
    void ResetContent();
    int GetCount() const;
    std::string GetItemText(int iItem) const; // empty when there is no such item
    void SetItemData(int iItem, uintptr_t uData);
    uintptr_t GetItemData(int iItem) const; // 0 when there is none
    void SetCurSel(int iItem);              // -1: none
    int GetCurSel() const;                  // -1: none
};
