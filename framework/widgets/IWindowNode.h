#pragma once

#include "framework/drawing/Geometry.h"
#include "framework/widgets/ControlNodes.h"
#include "host/Export.h"

#include <cstdint>
#include <string>

class CWindow;
class IReportNode;

// A window as the window system has it: what ties it to its object and to the window that hears of
// it. It owns itself and ends with Destroy, or with the window around it. Rectangles are device
// pixels.
class TELLUR_API IWindowNode
{
public:
    // Binds the object that stands for the window from then on, and lets go of the one before.
    // bOwner: the object made the window and ends it.
    virtual void Attach(CWindow& object, bool bOwner) = 0;
    virtual void Detach() = 0;
    // Ends the window, at once or after the event that it is in. Neither its object nor whom it
    // notifies, nor those of its controls, are called any more.
    virtual void Destroy() = 0;

    virtual uintptr_t GetHandle() const = 0;
    virtual uint32_t GetId() const = 0;
    virtual uint32_t GetStyle() const = 0;  // EControlStyle
    virtual CWindow* GetParent() const = 0; // whom it notifies
    virtual void DoDefault() = 0;           // the usual processing of the event it is in, once

    virtual void SetText(const char* pszText) = 0;
    virtual std::string GetText() const = 0;
    virtual void Enable(bool bEnable) = 0;
    virtual bool IsEnabled() const = 0;
    virtual void Show(bool bShow) = 0; // a window of its own comes to the front
    virtual bool IsVisible() const = 0;
    virtual void Focus() = 0;
    virtual bool HasFocus() const = 0; // here or in a child window
    virtual void SetRedraw(bool bOn) = 0;
    virtual void Invalidate() = 0;
    virtual void Move(const SRect& rect) = 0;
    virtual SRect GetRect() const = 0; // in the client area around it
    virtual SRect GetRectIn(const IWindowNode& around) const = 0;
    virtual SRect GetClientRect() const = 0;
    virtual double GetScale() const = 0;

    // The window as what its kind is made of, borrowed from it; null for a window of another kind.
    virtual IButtonNode* GetButton() = 0;
    virtual IListNode* GetList() = 0;
    virtual IComboNode* GetCombo() = 0;
    virtual IEditNode* GetEdit() = 0;
    virtual ISliderNode* GetSlider() = 0;
    virtual ISpinNode* GetSpin() = 0;
    virtual IReportNode* GetReport() = 0;
    virtual IDialogNode* GetDialog() = 0;

protected:
    ~IWindowNode() = default;
};
