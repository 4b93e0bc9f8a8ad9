#include "framework/widgets/CDialog.h"

#include "framework/core/IWindowSystem.h"
#include "framework/widgets/IWindowFactory.h"
#include "framework/widgets/IWindowNode.h"

CDialog::CDialog(uint32_t uTemplateId)
    : CFormWindow(uTemplateId)
{
}

bool CDialog::Create(CWindow* pParent)
{
    const SDialogResource* pTemplate = IsWindow() ? nullptr : FindTemplate();
    if (pTemplate == nullptr)
    {
        return false;
    }
    OpenWindowSystem()->GetWindows().MakeDialog(*this, *pTemplate, pParent);
    AttachControls();
    OnInit();
    IDialogNode* pDialog = GetNode() != nullptr ? GetNode()->GetDialog() : nullptr;
    // OnInit may have ended the window.
    if (pDialog == nullptr)
    {
        return false;
    }
    pDialog->FocusFirstControl();
    if (pParent == nullptr)
    {
        pDialog->KeepInFront();
    }
    return true;
}

uint32_t CDialog::DoModal(CWindow* pParent)
{
    m_Result = DIALOG_CANCEL;
    if (!Create(pParent))
    {
        return DIALOG_CANCEL;
    }
    m_bModal = true;
    GetNode()->GetDialog()->RunModal();
    m_bModal = false;
    DestroyWindow();
    return m_Result;
}

void CDialog::EndDialog(uint32_t uResult)
{
    m_Result = uResult;
    if (IDialogNode* pDialog = GetNode() != nullptr ? GetNode()->GetDialog() : nullptr)
    {
        pDialog->End(uResult);
    }
}

void CDialog::OnOk()
{
    EndDialog(DIALOG_OK);
}

void CDialog::OnCancel()
{
    EndDialog(DIALOG_CANCEL);
}

bool CDialog::OnChildNotify(SNotification& notification)
{
    // A handler of the dialog's own takes the place of what the two buttons do otherwise.
    if (CFormWindow::OnChildNotify(notification))
    {
        return true;
    }
    if (notification.eKind != ENotify::Clicked)
    {
        return false;
    }
    if (notification.uId == DIALOG_OK)
    {
        OnOk();
    }
    else if (notification.uId == DIALOG_CANCEL)
    {
        OnCancel();
    }
    return notification.uId == DIALOG_OK || notification.uId == DIALOG_CANCEL;
}
