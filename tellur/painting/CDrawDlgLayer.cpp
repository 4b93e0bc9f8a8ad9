#include "tellur/painting/CDrawDlgLayer.h"

#include "framework/widgets/CButton.h"
#include "framework/widgets/CFormWindow.h"
#include "host/IPaintLayer.h"
#include "tellur/painting/DrawDlgBrowse.h"
#include "tellur/painting/DrawDlgIds.h"
#include "tellur/painting/IDrawDlg.h"
#include "tellur/painting/ITerrain2DDrawDlgUser.h"
#include "tellur/painting/PaintLayer.h"

#include <algorithm>

namespace
{

constexpr int BLENDING_POSITIONS = 100;

} // namespace

CDrawDlgLayer::CDrawDlgLayer(CFormWindow& form, IDrawDlg& dialog)
    : m_Form(form)
    , m_Dialog(dialog)
{
    form.BindText(DRAW_MATERIAL, m_Material);
    form.BindCheck(DRAW_TEXEL_MAPPING, m_TexelMapping);
    form.Bind(DRAW_BLENDING, m_BlendingSlider);
    form.OnClick(DRAW_MATERIAL_BROWSE, [this] { OnBrowseMaterial(); });
    form.On(ENotify::FocusLost, DRAW_MATERIAL, [this](SNotification&) { OnMaterialTyped(); });
    form.OnClick(DRAW_TEXEL_MAPPING, [this] { OnTexelMapping(); });
    form.On(ENotify::Scrolled,
            DRAW_BLENDING,
            [this](SNotification& notification) { OnBlending(notification); });
}

void CDrawDlgLayer::SetupSlider()
{
    m_BlendingSlider.SetRange(0, BLENDING_POSITIONS);
    m_BlendingSlider.SetPos(static_cast<int>(m_Blending * BLENDING_POSITIONS));
}

void CDrawDlgLayer::Take(const ITerrain2DDrawDlgUser& user)
{
    const char* pszMaterial = user.GetPaintMaterial();
    m_Material = pszMaterial != nullptr ? pszMaterial : "";
    m_TexelMapping = user.GetTexelMapping() == ETexelMapping::Vertices ? CHECK_ON : CHECK_OFF;
}

void CDrawDlgLayer::OnBrowseMaterial()
{
    m_Form.ReadControls();
    const std::string strPath =
        BrowseForDrawFile(FILE_DIALOG_OPEN, "mat", m_Material, "Material files (*.mat)|*.mat");
    if (strPath.empty())
    {
        return;
    }
    m_Material = strPath;
    m_Form.WriteControls();
    if (ITerrain2DDrawDlgUser* pUser = m_Dialog.NeedUser())
    {
        pUser->SetPaintMaterial(m_Material.c_str());
    }
}

// A name counts when it is whole, so it is taken when the keyboard leaves the field.
void CDrawDlgLayer::OnMaterialTyped()
{
    m_Form.ReadControls();
    ITerrain2DDrawDlgUser* pUser = m_Dialog.GetUser();
    const char* pszBefore = pUser != nullptr ? pUser->GetPaintMaterial() : nullptr;
    if (pszBefore != nullptr && m_Material != pszBefore)
    {
        pUser->SetPaintMaterial(m_Material.c_str());
    }
}

void CDrawDlgLayer::OnTexelMapping()
{
    m_Form.ReadControls();
    if (ITerrain2DDrawDlgUser* pUser = m_Dialog.NeedUser())
    {
        pUser->SetTexelMapping(m_TexelMapping == CHECK_ON);
    }
}

void CDrawDlgLayer::OnBlending(const SNotification& notification)
{
    m_Form.ReadControls();
    const int iPos = m_BlendingSlider.GetScrolledPos(notification);
    m_BlendingSlider.SetPos(iPos);
    const int iRange = m_BlendingSlider.GetRangeMax() - m_BlendingSlider.GetRangeMin();
    m_Blending = static_cast<float>(iPos) / static_cast<float>(std::max(iRange, 1));
    // Kept as it always was: the layer hears of the slider only while the bitmap is painted on.
    // What was chosen before counts from the slider's next move on.
    IPaintLayer* pLayer = IsPaintingModeOn() ? GetPaintLayer() : nullptr;
    if (pLayer != nullptr)
    {
        pLayer->SetBlendFactor(m_Blending);
    }
}
