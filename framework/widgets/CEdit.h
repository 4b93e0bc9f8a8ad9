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
    // Selects the characters from iFrom up to, but not with, iTo: 0 and -1 all of them, -1 and -1
    // none.
    void SetSel(int iFrom, int iTo);
    void GetSel(int& iFrom, int& iTo) const;
    // Shows that what stands here does not count: slanted and tinted, with that text as its tip.
    // pszWhy: copied, UTF-8; null or empty: it counts.
    void MarkText(const char* pszWhy);
};
