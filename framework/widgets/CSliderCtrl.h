#pragma once

#include "framework/widgets/CWindow.h"

// A horizontal slider. It does not move by itself where somebody handles its scrolling: the handler
// gets the code and sets the position. The wheel moves it by pages, and only while it has the
// focus.
class TELLUR_API CSliderCtrl : public CWindow
{
public:
    // The position is brought into the range. The page becomes a fifth of it, unless SetPageSize
    // has set one.
    void SetRange(int iMin, int iMax);
    int GetRangeMin() const;
    int GetRangeMax() const;
    void SetPos(int iPos); // notifies nobody
    int GetPos() const;
    // Where a scroll notification of this slider asks it to go: by one, by a page, to an end or to
    // the thumb's place.
    int GetScrolledPos(const SNotification& notification) const;
    void SetPageSize(int iPage);
    int GetPageSize() const;
};
