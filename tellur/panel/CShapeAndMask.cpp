#include "tellur/panel/CShapeAndMask.h"

#include "framework/widgets/CFormWindow.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/panel/BrushMask.h"
#include "tellur/panel/CurrentBrush.h"
#include "tellur/panel/PanelIds.h"

CShapeAndMask::CShapeAndMask(CFormWindow& form)
    : m_Form(form)
{
    form.Bind(PANEL_SHAPE, m_Shape);
    form.BindText(PANEL_MASK_PATH, m_MaskPath);
    form.BindCheck(PANEL_MASK_ENABLED, m_MaskEnabled);
    form.OnClick(PANEL_MASK_BROWSE, [this] { OnBrowseMask(); });
    form.OnClick(PANEL_MASK_ENABLED, [this] { OnMaskEnabled(); });
}

void CShapeAndMask::Show(CTellurBrush* pBrush)
{
    m_Shape.SetBrush(pBrush);
    m_Shape.Invalidate();
    m_MaskPath = pBrush != nullptr ? pBrush->GetMaskPath() : "";
    m_MaskEnabled = pBrush != nullptr && pBrush->IsMaskEnabled() ? CHECK_ON : CHECK_OFF;
}

void CShapeAndMask::Enable(bool bOn)
{
    m_Form.EnableItem(PANEL_SHAPE, bOn);
    m_Form.EnableItem(PANEL_MASK_BROWSE, bOn);
    m_Form.EnableItem(PANEL_MASK_ENABLED, bOn);
}

void CShapeAndMask::OnBrowseMask()
{
    CTellurBrush* pBrush = GetCurrentBrush();
    if (pBrush == nullptr)
    {
        return;
    }
    m_Form.ReadControls();
    // Nothing is chosen when another brush has become current meanwhile, so pBrush is still there.
    const std::string strPath = BrowseForMask(m_MaskPath);
    if (strPath.empty())
    {
        return;
    }
    m_MaskPath = strPath;
    SetBrushMask(*pBrush, strPath);
    m_MaskEnabled = CHECK_ON;
    m_Form.WriteControls();
    ShowBrush();
}

void CShapeAndMask::OnMaskEnabled()
{
    m_Form.ReadControls();
    if (CTellurBrush* pBrush = GetCurrentBrush())
    {
        pBrush->SetMaskEnabled(m_MaskEnabled == CHECK_ON);
        ShowBrush();
    }
}
