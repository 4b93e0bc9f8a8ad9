#include "framework/widgets/CDialog.h"

#include "framework/qt/CFormBuilder.h"
#include "framework/qt/CWindowNode.h"

#include <QApplication>
#include <QDialog>
#include <QWindow>

// Sends what closes the window to the dialog's object.
class CDialogWidget : public QDialog
{
public:
    explicit CDialogWidget(QWidget* pParent)
        : QDialog(pParent)
    {
    }

    void accept() override
    {
        if (CDialog* pDialog = GetDialog())
        {
            pDialog->OnOk();
        }
    }

    void reject() override // Escape, and closing the window
    {
        if (CDialog* pDialog = GetDialog())
        {
            pDialog->OnCancel();
        }
        else
        {
            QDialog::reject();
        }
    }

private:
    CDialog* GetDialog() const
    {
        const CWindowNode* pNode = CWindowNode::Find(this);
        return pNode != nullptr ? static_cast<CDialog*>(pNode->GetObject()) : nullptr;
    }
};

namespace
{

// So that the keyboard works as soon as the window is there.
void FocusFirstControl(QWidget& dialog)
{
    QWidget* pNext = dialog.nextInFocusChain();
    while (pNext != &dialog && (pNext->focusPolicy() & Qt::TabFocus) == 0)
    {
        pNext = pNext->nextInFocusChain();
    }
    if (pNext != &dialog)
    {
        pNext->setFocus();
    }
}

// A window without a parent stays in front of the one that the person works in all the same.
void KeepInFront(QWidget& dialog)
{
    const QWidget* pActive = QApplication::activeWindow();
    QWindow* pBehind = pActive != nullptr ? pActive->windowHandle() : nullptr;
    if (pBehind != nullptr)
    {
        dialog.winId(); // makes the handle
        dialog.windowHandle()->setTransientParent(pBehind);
    }
}

} // namespace

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
    const CWindowNode* pParentNode = pParent != nullptr ? CWindowNode::GetOf(*pParent) : nullptr;
    auto* pWidget = new CDialogWidget(pParentNode != nullptr ? pParentNode->GetWidget() : nullptr);
    pWidget->setWindowTitle(QString::fromUtf8(pTemplate->pszCaption));
    auto* pNode = CWindowNode::Make(*pWidget, EControlKind::Space, 0, nullptr);
    constexpr bool OWNER = true;
    pNode->Attach(*this, OWNER);
    CFormBuilder(*this, *pWidget).Build(*pTemplate);
    AttachControls();
    OnInit();
    FocusFirstControl(*pWidget);
    if (pParent == nullptr)
    {
        KeepInFront(*pWidget);
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
    GetNode()->GetAs<QDialog>()->exec();
    m_bModal = false;
    DestroyWindow();
    return m_Result;
}

void CDialog::EndDialog(uint32_t uResult)
{
    m_Result = uResult;
    if (auto* pWidget = GetNode() != nullptr ? GetNode()->GetAs<QDialog>() : nullptr)
    {
        pWidget->done(static_cast<int>(uResult));
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
