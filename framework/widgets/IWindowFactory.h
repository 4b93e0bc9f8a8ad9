#pragma once

#include "framework/core/Resources.h"
#include "host/Export.h"

class CDialog;
class CFormView;
class CWindow;
class IWindowNode;

// Makes the windows of the framework's objects.
class TELLUR_API IWindowFactory
{
public:
    // Whether the program has an application object that can show windows. The operations below may
    // be called only while it has.
    virtual bool IsReady() const = 0;

    // Makes a hidden child window, which no object is bound to yet. parent must have a window.
    virtual IWindowNode* MakeControl(const SControlResource& control, CWindow& parent) = 0;

    // Both make a hidden window with the template's controls in it, which the object owns. pParent:
    // what a dialog is kept in front of, or what a view stands in; null for neither.
    virtual void MakeDialog(CDialog& dialog, const SDialogResource& form, CWindow* pParent) = 0;
    virtual void MakeFormView(CFormView& view, const SDialogResource& form, CWindow* pParent) = 0;

protected:
    ~IWindowFactory() = default;
};
