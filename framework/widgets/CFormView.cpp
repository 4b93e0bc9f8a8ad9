#include "framework/widgets/CFormView.h"

#include "framework/qt/CFormBuilder.h"
#include "framework/qt/CWindowNode.h"

#include <QScrollArea>

CFormView::CFormView(uint32_t uTemplateId)
    : CFormWindow(uTemplateId)
{
}

bool CFormView::Create(CWindow* pParent)
{
    const SDialogResource* pTemplate = IsWindow() ? nullptr : FindTemplate();
    if (pTemplate == nullptr)
    {
        return false;
    }
    const CWindowNode* pParentNode = pParent != nullptr ? CWindowNode::GetOf(*pParent) : nullptr;
    auto* pArea = new QScrollArea(pParentNode != nullptr ? pParentNode->GetWidget() : nullptr);
    pArea->setWindowTitle(QString::fromUtf8(pTemplate->pszCaption));
    pArea->setFrameShape(QFrame::NoFrame);
    pArea->setWidgetResizable(true);
    auto* pContent = new QWidget; // the area's
    auto* pNode = CWindowNode::Make(*pArea, EControlKind::Space, 0, pParent);
    constexpr bool OWNER = true;
    pNode->Attach(*this, OWNER);
    CFormBuilder(*this, *pContent).Build(*pTemplate);
    pArea->setWidget(pContent);
    AttachControls();
    OnInit();
    return true;
}

void CFormView::UpdateView()
{
    if (IsWindow())
    {
        OnUpdate();
    }
}

void CFormView::OnShow()
{
    if (!m_bShown)
    {
        m_bShown = true;
        OnUpdate();
    }
}
