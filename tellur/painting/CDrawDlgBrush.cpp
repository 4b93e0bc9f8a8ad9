#include "tellur/painting/CDrawDlgBrush.h"

#include "framework/widgets/CFormWindow.h"
#include "framework/widgets/CSliderCtrl.h"
#include "host/Image.h"
#include "tellur/context/ShareStep.h"
#include "tellur/context/SliderPosition.h"
#include "tellur/painting/DrawDlgBrowse.h"
#include "tellur/painting/DrawDlgIds.h"
#include "tellur/painting/IDrawDlg.h"
#include "tellur/painting/ITerrain2DDrawDlgUser.h"

#include <algorithm>
#include <iterator>
#include <memory>

namespace
{

constexpr int SHARE_POSITIONS = 100;

// How one share of the brush, 0 to 1, is shown and edited.
struct SShareRow
{
    uint32_t uEdit;
    uint32_t uSpin;
    uint32_t uSlider;
    float (ITerrain2DDrawDlgUser::*pGet)() const;
    void (ITerrain2DDrawDlgUser::*pSet)(float);
};

constexpr SShareRow ROWS[] = {{DRAW_POWER_EDIT,
                               DRAW_POWER_SPIN,
                               DRAW_POWER_SLIDER,
                               &ITerrain2DDrawDlgUser::GetPower,
                               &ITerrain2DDrawDlgUser::SetPower},
                              {DRAW_HARDNESS_EDIT,
                               DRAW_HARDNESS_SPIN,
                               DRAW_HARDNESS_SLIDER,
                               &ITerrain2DDrawDlgUser::GetHardness,
                               &ITerrain2DDrawDlgUser::SetHardness}};

int GetSharePosition(float fShare)
{
    return TruncateToPosition(fShare * static_cast<float>(SHARE_POSITIONS));
}

} // namespace

struct CDrawDlgBrush::SShare
{
    const SShareRow* pRow = nullptr;
    float fValue = 0.0F; // as the field shows it
    CSliderCtrl slider;
};

CDrawDlgBrush::CDrawDlgBrush(CFormWindow& form, IDrawDlg& dialog)
    : m_Form(form)
    , m_Dialog(dialog)
    , m_Shares(std::size(ROWS))
{
    form.Bind(DRAW_SHAPE, m_Shape);
    form.OnClick(DRAW_SHAPE, [this] { OnBrowseShape(); });
    for (size_t i = 0; i < m_Shares.size(); ++i)
    {
        SShare& share = m_Shares[i];
        const SShareRow& row = ROWS[i];
        share.pRow = &row;
        form.BindValue(row.uEdit, share.fValue);
        form.Bind(row.uSlider, share.slider);
        form.OnEdit(row.uEdit, [this, &share] { OnTyped(share); });
        form.On(ENotify::SpinDelta,
                row.uSpin,
                [this, &share](SNotification& notification)
                { OnSpin(share, notification.iValue); });
        form.On(ENotify::Scrolled,
                row.uSlider,
                [this, &share](SNotification& notification) { OnScroll(share, notification); });
    }
}

CDrawDlgBrush::~CDrawDlgBrush() = default;

void CDrawDlgBrush::SetupSliders()
{
    for (SShare& share : m_Shares)
    {
        share.slider.SetRange(0, SHARE_POSITIONS);
    }
}

void CDrawDlgBrush::Take(const ITerrain2DDrawDlgUser& user)
{
    for (SShare& share : m_Shares)
    {
        share.fValue = (user.*share.pRow->pGet)();
        share.slider.SetPos(GetSharePosition(share.fValue));
    }
}

void CDrawDlgBrush::SetShape(const IImage* pImage, const char* pszPath)
{
    if (pImage == nullptr)
    {
        ChooseShape(pszPath);
        return;
    }
    m_Shape.SetImage(pImage);
    if (ITerrain2DDrawDlgUser* pUser = m_Dialog.GetUser())
    {
        pUser->SetBrushShape(pImage, pszPath);
    }
}

bool CDrawDlgBrush::ChooseShape(const std::string& strPath)
{
    const std::unique_ptr<IImage> pImage(IL_LoadImage(strPath.c_str()));
    if (pImage == nullptr)
    {
        return false;
    }
    SetShape(pImage.get(), strPath.c_str());
    return true;
}

void CDrawDlgBrush::OnBrowseShape()
{
    // The last pattern is not that of the text, and dialogs have always listed it so.
    constexpr const char* FILTER = "Bitmap files (*.jpg;*.png;*.dds)|*.jpg|*.png|*.dat";
    const ITerrain2DDrawDlgUser* pUser = m_Dialog.NeedUser();
    if (pUser == nullptr)
    {
        return;
    }
    const std::string strPath =
        BrowseForDrawFile(FILE_DIALOG_OPEN, nullptr, pUser->GetBrushShapeName(), FILTER);
    if (!strPath.empty())
    {
        ChooseShape(strPath);
    }
}

void CDrawDlgBrush::OnTyped(SShare& share)
{
    m_Form.ReadControls();
    share.fValue = std::clamp(share.fValue, 0.0F, 1.0F);
    m_Form.WriteControls();
    share.slider.SetPos(GetSharePosition(share.fValue));
    Tell(share);
}

// The arrows have no range and count downwards, and so does the sign.
void CDrawDlgBrush::OnSpin(SShare& share, int iDelta)
{
    m_Form.ReadControls();
    share.fValue = std::clamp(share.fValue - static_cast<float>(iDelta) * SHARE_STEP, 0.0F, 1.0F);
    m_Form.WriteControls();
    Tell(share);
    share.slider.SetPos(GetSharePosition(share.fValue));
}

void CDrawDlgBrush::OnScroll(SShare& share, const SNotification& notification)
{
    m_Form.ReadControls();
    const int iPos = share.slider.GetScrolledPos(notification);
    share.slider.SetPos(iPos);
    share.fValue = GetShareAtPosition(iPos);
    m_Form.WriteControls();
    Tell(share);
}

void CDrawDlgBrush::Tell(const SShare& share)
{
    if (ITerrain2DDrawDlgUser* pUser = m_Dialog.NeedUser())
    {
        (pUser->*share.pRow->pSet)(share.fValue);
    }
}
