#pragma once

#include "framework/widgets/CWindow.h"

// One line of text. Every change of the text, typed or set, notifies.
class TELLUR_API CEdit : public CWindow
{
public:
    bool CreateEdit(uint32_t uStyle, CWindow& parent, uint32_t uId, const SRect& rect);
    void SetLimitText(int nMost); // characters that can be typed or pasted
    void SetReadOnly(bool bReadOnly);
    bool IsReadOnly() const;
    // Characters [iFrom, iTo); 0, -1: all; -1, -1: none.
    void SetSel(int iFrom, int iTo);
    void GetSel(int& iFrom, int& iTo) const;
};
