#include "framework/qt/CWindowFactory.h"

#include "framework/qt/CDialogWidget.h"
#include "framework/qt/CFormBuilder.h"
#include "framework/qt/CWindowNode.h"
#include "framework/qt/ControlWidgets.h"
#include "framework/widgets/CDialog.h"
#include "framework/widgets/CFormView.h"

#include <QApplication>
#include <QScrollArea>

namespace
{

QWidget* GetWidgetOf(const CWindow* pWindow)
{
    const CWindowNode* pNode = pWindow != nullptr ? CWindowNode::GetOf(*pWindow) : nullptr;
    return pNode != nullptr ? pNode->GetWidget() : nullptr;
}

// pParent: whom the window notifies.
void MakeFormNode(CFormWindow& form, QWidget& widget, CWindow* pParent)
{
    constexpr bool OWNER = true;
    CWindowNode::Make(widget, EControlKind::Space, 0, pParent)->Attach(form, OWNER);
}

} // namespace

bool CWindowFactory::IsReady() const
{
    return qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr;
}

IWindowNode* CWindowFactory::MakeControl(const SControlResource& control, CWindow& parent)
{
    QWidget* pGround = CWindowNode::GetOf(parent)->GetGround();
    return CWindowNode::Find(MakeControlWidget(control, pGround, &parent));
}

void CWindowFactory::MakeDialog(CDialog& dialog, const SDialogResource& form, CWindow* pParent)
{
    auto* pWidget = new CDialogWidget(GetWidgetOf(pParent)); // the dialog's
    pWidget->setWindowTitle(QString::fromUtf8(form.pszCaption));
    MakeFormNode(dialog, *pWidget, nullptr);
    CFormBuilder(dialog, *pWidget).Build(form);
}

void CWindowFactory::MakeFormView(CFormView& view, const SDialogResource& form, CWindow* pParent)
{
    auto* pArea = new QScrollArea(GetWidgetOf(pParent)); // the view's
    pArea->setWindowTitle(QString::fromUtf8(form.pszCaption));
    pArea->setAccessibleName(pArea->windowTitle());
    pArea->setFrameShape(QFrame::NoFrame);
    pArea->setWidgetResizable(true);
    auto* pContent = new QWidget; // the area's
    MakeFormNode(view, *pArea, pParent);
    CFormBuilder(view, *pContent).Build(form);
    // Only now: the area does not show what is laid out after its content has been set.
    pArea->setWidget(pContent);
}
