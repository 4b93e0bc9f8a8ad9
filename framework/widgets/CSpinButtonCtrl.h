#pragma once

#include "framework/widgets/CWindow.h"

// Two arrows. Each click, and each repeat while one is held, notifies with the steps, which grow
// the longer it is held; unless that is refused the position follows inside the range. Before a
// range is set the arrows count downwards: the upper one has the step -1.
class TELLUR_API CSpinButtonCtrl : public CWindow
{
public:
    bool CreateSpin(CWindow& parent, uint32_t uId, const SRect& rect);
    void SetRange(int iLower, int iUpper); // iUpper below iLower: the upper arrow counts down
    void GetRange(int& iLower, int& iUpper) const;
    void SetPos(int iPos);
    int GetPos() const;
    // Sets the edit beside it, whose arrow keys then turn the spin, by its id among the parent's
    // controls. It has none when the parent has no such control.
    void SetBuddy(uint32_t uBuddyId);
    uint32_t GetBuddy() const; // 0: none

protected:
    // Does what one click on an arrow or one of the arrow keys does.
    void Step(bool bUp);
    void StopRepeat(); // keeps an arrow that is held from stepping again
};
