#pragma once

class CPropInPlaceCtrl;
struct SPropRow;

// Whoever shows the rows of a CPropRowModel, which tells it what has changed. It may call the model
// back. It is called on the UI thread.
class IPropRowView
{
public:
    virtual ~IPropRowView() = default;

    // The model has other rows. Those of before are gone, but for what keeps one.
    virtual void OnRowsMade() = 0;
    // The value of the row was read again. pSender: the editor that it comes from and that shows it
    // already; null when it comes from elsewhere.
    virtual void OnValueRead(SPropRow& row, const CPropInPlaceCtrl* pSender) = 0;
};
