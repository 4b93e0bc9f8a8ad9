#pragma once

#include "framework/widgets/IWindowFactory.h"

// Makes the windows of the framework as Qt widgets, each with its node.
class CWindowFactory final : public IWindowFactory
{
public:
    bool IsReady() const override;
    IWindowNode* MakeControl(const SControlResource& control, CWindow& parent) override;
    void MakeDialog(CDialog& dialog, const SDialogResource& form, CWindow* pParent) override;
    void MakeFormView(CFormView& view, const SDialogResource& form, CWindow* pParent) override;
};
