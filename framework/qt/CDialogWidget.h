#pragma once

#include "framework/widgets/ControlNodes.h"

#include <QDialog>

class CDialog;

// Sends what closes the window to the dialog's object.
class CDialogWidget : public QDialog, public IDialogNode
{
public:
    using QDialog::QDialog;

    void accept() override;
    void reject() override; // Escape, and closing the window

    void FocusFirstControl() override;
    void KeepInFront() override;
    void RunModal() override;
    void End(uint32_t uResult) override;

private:
    CDialog* GetDialog() const;
};
