#pragma once

#include "framework/widgets/CFormWindow.h"

enum EDialogItem : uint32_t
{
    DIALOG_OK = 1,
    DIALOG_CANCEL = 2,
};

// A window of its own made from a dialog template, modeless or modal. Closing it, Escape and the
// button 2 call OnCancel, the button 1 calls OnOk; Enter presses the default button.
class TELLUR_API CDialog : public CFormWindow
{
public:
    // Makes a modeless window, hidden at first, which stays in front of pParent; with null, of the
    // window that is active now. Answers false, with one logged line, when no module has the
    // template or the program shows no windows, and without one when there is a window already.
    bool Create(CWindow* pParent);
    // Makes and shows it, and returns when it is closed: what EndDialog was given, or DIALOG_CANCEL
    // when it cannot be made. The window is gone then.
    uint32_t DoModal(CWindow* pParent);
    void EndDialog(uint32_t uResult);

protected:
    explicit CDialog(uint32_t uTemplateId);

    // Both end a modal dialog and hide a modeless one.
    virtual void OnOk();
    virtual void OnCancel();

    bool OnChildNotify(SNotification& notification) override;

private:
    friend class CDialogWidget;

    uint32_t m_Result = DIALOG_CANCEL;
    bool m_bModal = false;
};
