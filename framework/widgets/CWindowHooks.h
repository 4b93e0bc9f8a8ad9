#pragma once

#include "framework/core/SToolTipText.h"
#include "framework/widgets/WindowEvents.h"
#include "host/Export.h"

// What happens to a window, for classes that derive from it: each hook is called before the usual
// processing of its event. One that returns true has dealt with the event, and nothing else
// happens; as they are here, all let it pass. UI thread only.
class TELLUR_API CWindowHooks
{
protected:
    CWindowHooks() = default;
    virtual ~CWindowHooks() = default;

    virtual bool OnLButtonDown(const SMouseEvent&) { return false; }

    virtual bool OnLButtonUp(const SMouseEvent&) { return false; }

    virtual bool OnLButtonDblClk(const SMouseEvent&) { return false; }

    virtual bool OnMouseMove(const SMouseEvent&) { return false; }

    // Called before OnKeyDown, first for the control that has the focus, then for each window
    // around it.
    virtual bool TranslateKey(const SKeyEvent&) { return false; }

    virtual bool OnKeyDown(const SKeyEvent&) { return false; }

    // Asked of the control that has the focus before the program's shortcuts: true keeps the key
    // here, so that it comes as a key.
    virtual bool TakesShortcut(const SKeyEvent&) { return false; }

    virtual void OnSetFocus() {}

    virtual void OnKillFocus() {}

    virtual void OnSize() {}

    virtual void OnShow() {} // each time it becomes visible

    virtual void OnPaint(CDrawContext&) {}

    virtual void DrawItem(const SDrawItem&) {} // of a button that its owner draws

    virtual bool OnNotify(SNotification&) { return false; } // what it tells its parent

    virtual bool OnChildNotify(SNotification&) { return false; } // what a control tells it

    // Called when tips are on (CWindow::EnableToolTips). False lets the windows around be asked.
    virtual bool OnToolTipText(SToolTipText&) { return false; }
};
