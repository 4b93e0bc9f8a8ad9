#pragma once

#include "framework/core/ResourceModule.h"
#include "framework/qt/WidgetAccess.h"
#include "framework/widgets/CDialog.h"
#include "framework/widgets/CFormView.h"

#include <QWidget>

// Forms whose protected operations a test may use.

class CTestView : public CFormView
{
public:
    explicit CTestView(uint32_t uTemplateId)
        : CFormView(uTemplateId)
    {
    }

    using CFormView::Bind;
    using CFormView::BindCheck;
    using CFormView::BindText;
    using CFormView::BindValue;
    using CFormView::On;
    using CFormView::OnClick;
    using CFormView::OnScroll;
    using CFormView::OnSelectionChange;
    using CFormView::OnTextChange;

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

    using CDialog::Bind;
    using CDialog::OnClick;

    int nCancels = 0;

protected:
    void OnCancel() override
    {
        ++nCancels;
        CDialog::OnCancel();
    }
};
