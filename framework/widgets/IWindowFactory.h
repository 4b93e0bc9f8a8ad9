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
    // The program has an application object that can show windows. What follows needs it.
    virtual bool IsReady() const = 0;

    // A child window of parent, hidden, without an object. parent has a window.
    virtual IWindowNode* MakeControl(const SControlResource& control, CWindow& parent) = 0;

    // A hidden window with the template's controls in it; the object owns it. pParent: null, or
    // what it is kept in front of, or stands in.
    virtual void MakeDialog(CDialog& dialog, const SDialogResource& form, CWindow* pParent) = 0;
    virtual void MakeFormView(CFormView& view, const SDialogResource& form, CWindow* pParent) = 0;

protected:
    ~IWindowFactory() = default;
};
