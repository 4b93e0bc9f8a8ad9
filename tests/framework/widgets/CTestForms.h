#pragma once

#include "framework/core/ResourceModule.h"
#include "framework/qt/WidgetAccess.h"
#include "framework/widgets/CDialog.h"
#include "framework/widgets/CFormView.h"

#include <QWidget>

// Forms that a test makes.

class CTestView : public CFormView
{
public:
    explicit CTestView(uint32_t uTemplateId)
        : CFormView(uTemplateId)
    {
    }

    // The Qt widget of a control, by its id.
    template <class TWidget = QWidget> TWidget* Find(uint32_t uId) const
    {
        return GetWidget(*this)->findChild<TWidget*>(QString::number(uId));
    }
};

class CTestDialog : public CDialog
{
public:
    explicit CTestDialog(uint32_t uTemplateId)
        : CDialog(uTemplateId)
    {
    }

    int nCancels = 0;

protected:
    void OnCancel() override
    {
        ++nCancels;
        CDialog::OnCancel();
    }
};
