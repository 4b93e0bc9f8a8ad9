#include "framework/qt/CDialogWidget.h"

#include "framework/qt/CWindowNode.h"
#include "framework/widgets/CDialog.h"

#include <QApplication>
#include <QWindow>

void CDialogWidget::accept()
{
    if (CDialog* pDialog = GetDialog())
    {
        pDialog->OnOk();
    }
}

void CDialogWidget::reject()
{
    if (CDialog* pDialog = GetDialog())
    {
        pDialog->OnCancel();
    }
    else
    {
        // The object has let go of a window that waits for its end; nobody else closes it.
        QDialog::reject();
    }
}

CDialog* CDialogWidget::GetDialog() const
{
    const CWindowNode* pNode = CWindowNode::Find(this);
    return pNode != nullptr ? static_cast<CDialog*>(pNode->GetObject()) : nullptr;
}

// So that the keyboard works as soon as the window is there.
void CDialogWidget::FocusFirstControl()
{
    QWidget* pNext = nextInFocusChain();
    while (pNext != this && (pNext->focusPolicy() & Qt::TabFocus) == 0)
    {
        pNext = pNext->nextInFocusChain();
    }
    if (pNext != this)
    {
        pNext->setFocus();
    }
}

void CDialogWidget::KeepInFront()
{
    const QWidget* pActive = QApplication::activeWindow();
    QWindow* pBehind = pActive != nullptr ? pActive->windowHandle() : nullptr;
    if (pBehind != nullptr)
    {
        winId(); // makes the handle
        windowHandle()->setTransientParent(pBehind);
    }
}

void CDialogWidget::RunModal()
{
    exec();
}

void CDialogWidget::End(uint32_t uResult)
{
    done(static_cast<int>(uResult));
}
