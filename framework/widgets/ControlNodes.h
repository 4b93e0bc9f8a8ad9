#pragma once

#include "host/Export.h"

#include <cstdint>
#include <string>

// The windows of the kinds of controls, as the window system has them. Each operation is what the
// control's class of the framework says of its own. The window owns itself; see IWindowNode.

class TELLUR_API IButtonNode
{
public:
    virtual void SetOwnerDraw() = 0;
    virtual void SetCheck(int iState) = 0; // ECheckState, without a click
    virtual int GetCheck() const = 0;
    virtual void Click() = 0; // the window may be gone afterwards
    virtual void ReleasePress() = 0;

protected:
    ~IButtonNode() = default;
};

class TELLUR_API IListNode
{
public:
    virtual int AddItem(const char* pszText) = 0; // its place
    virtual void RemoveItems() = 0;               // notifies nobody
    virtual int GetItemCount() const = 0;
    virtual std::string GetItemText(int iItem) const = 0;
    virtual void SetItemNumber(int iItem, uintptr_t uData) = 0;
    virtual uintptr_t GetItemNumber(int iItem) const = 0;
    virtual void Select(int iItem) = 0; // -1: none; notifies nobody
    virtual int GetSelected() const = 0;

protected:
    ~IListNode() = default;
};

class TELLUR_API IComboNode : public IListNode
{
public:
    virtual int FindItem(const char* pszText) const = 0; // the whole text; -1: none
    virtual void ShowList(bool bShow) = 0;

protected:
    ~IComboNode() = default;
};

class TELLUR_API IEditNode
{
public:
    virtual void SetLimit(int nMost) = 0;
    virtual void SetLocked(bool bLocked) = 0;
    virtual bool IsLocked() const = 0;
    virtual void SelectText(int iFrom, int iTo) = 0;
    virtual void GetSelection(int& iFrom, int& iTo) const = 0;
    // Keys that are no part of a number are not taken.
    virtual void SetNumeric(bool bNumeric) = 0;
    virtual void MarkText(const char* pszWhy) = 0;

protected:
    ~IEditNode() = default;
};

class TELLUR_API ISliderNode
{
public:
    virtual void SetSliderRange(int iMin, int iMax) = 0;
    virtual int GetLow() const = 0;
    virtual int GetHigh() const = 0;
    virtual void SetPos(int iPos) = 0;
    virtual int GetPos() const = 0;
    virtual void SetPageSize(int iPage) = 0;
    virtual int GetPageSize() const = 0;

protected:
    ~ISliderNode() = default;
};

class TELLUR_API ISpinNode
{
public:
    virtual void SetRange(int iLower, int iUpper) = 0;
    virtual int GetLower() const = 0;
    virtual int GetUpper() const = 0;
    virtual void SetPos(int iPos) = 0;
    virtual int GetPos() const = 0;
    virtual void SetBuddy(uint32_t uBuddyId) = 0;
    virtual uint32_t GetBuddyId() const = 0;
    virtual void Step(bool bUp) = 0;
    virtual void StopRepeat() = 0;

protected:
    ~ISpinNode() = default;
};

class TELLUR_API IDialogNode
{
public:
    virtual void FocusFirstControl() = 0;
    // Keeps the dialog in front of the window that is active now.
    virtual void KeepInFront() = 0;
    virtual void RunModal() = 0; // shows it and returns when End is called
    virtual void End(uint32_t uResult) = 0;

protected:
    ~IDialogNode() = default;
};
