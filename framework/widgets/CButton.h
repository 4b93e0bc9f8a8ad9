#pragma once

#include "framework/widgets/CWindow.h"

enum ECheckState : int
{
    CHECK_OFF = 0,
    CHECK_ON = 1,
    CHECK_UNDETERMINED = 2,
};

// Push button, check box, push-like check button or owner-drawn button. A check box changes its
// state by itself when it is clicked; one with three states waits for its owner to do so.
class TELLUR_API CButton : public CWindow
{
public:
    // eKind: one of the button kinds of EControlKind.
    bool CreateButton(EControlKind eKind,
                      const char* pszText,
                      uint32_t uStyle,
                      CWindow& parent,
                      uint32_t uId,
                      const SRect& rect);
    // From this call on DrawItem draws the button and clicks do not change its state. For push
    // buttons and push-like check buttons; others stay as they are.
    void SetOwnerDraw();
    void SetCheck(int iState); // ECheckState; notifies nobody
    int GetCheck() const;
    uint32_t GetStyle() const; // EControlStyle
    void Click();              // does what a click of the mouse does
    void ReleasePress();       // ends that it is held down, without a click
};
