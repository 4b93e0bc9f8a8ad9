#pragma once

#include "framework/core/Resources.h"
#include "framework/widgets/CWindowHooks.h"
#include "host/Export.h"

#include <string>

class IWindowNode;

// A window, or a control bound to one of a form. The object and the window live apart: an object
// without a window answers with nothing and ignores what it is told; a window without an object
// behaves as its kind does. Rectangles and points are device pixels, UI thread only.
//
// What happens to the window comes to its hooks; DoDefault runs the usual processing earlier,
// inside the hook.
class TELLUR_API CWindow : public CWindowHooks
{
public:
    CWindow();
    ~CWindow() override; // ends a window that this object made; a form's control is let go
    CWindow(const CWindow&) = delete;
    CWindow& operator=(const CWindow&) = delete;

    // Makes a child window that draws itself (OnPaint). rect: in the parent's client area. Answers
    // false when the parent has no window or this object has one already.
    bool Create(CWindow& parent, uint32_t uId, const SRect& rect);
    void DestroyWindow();

    bool IsWindow() const { return m_Node != nullptr; }

    uintptr_t GetHandle() const;   // 0 without a window
    uint32_t GetControlId() const; // 0 without a window
    CWindow* GetParent() const;    // borrowed; whom it notifies, null for a window of its own

    // Setting the text of an edit notifies its parent, as typing does.
    void SetWindowText(const char* pszText); // copied, UTF-8; null is empty
    std::string GetWindowText() const;
    void EnableWindow(bool bEnable);
    bool IsWindowEnabled() const;
    void ShowWindow(bool bShow);
    bool IsWindowVisible() const;
    void SetFocus();
    bool HasFocus() const;              // here or in a child window
    void SetRedraw(bool bOn);           // off: changes are not drawn until it is on again
    void Invalidate();                  // draws it again at the next turn of the event loop
    void MoveWindow(const SRect& rect); // in the parent's client area
    SRect GetWindowRect() const;        // in the parent's client area
    SRect GetClientRect() const;        // its corner is 0, 0
    double GetScale() const; // device pixels a unit of length at 100 %; 1 without a window
    void SetWindowCapture(); // all mouse input comes here until ReleaseCapture (Capture.h)
    void EnableToolTips(bool bEnable); // asks OnToolTipText for the tips of its controls

protected:
    bool CreateControl(EControlKind eKind,
                       const char* pszText,
                       uint32_t uStyle,
                       CWindow& parent,
                       uint32_t uId,
                       const SRect& rect);
    // Runs the usual processing of the event that is being handled, inside its hook. It runs once:
    // neither a second call nor the end of the hook runs it again.
    void DoDefault();

    IWindowNode* GetNode() const { return m_Node; }

private:
    friend class CWindowNode;

    IWindowNode* m_Node = nullptr; // null without a window
    bool m_bOwner = false;         // this object made the window
    bool m_bToolTips = false;
};
