#include "framework/widgets/CFormView.h"

#include "framework/core/IWindowSystem.h"
#include "framework/widgets/IWindowFactory.h"

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
    OpenWindowSystem()->GetWindows().MakeFormView(*this, *pTemplate, pParent);
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
