#include "tellur/painting/CDrawDlgExtent.h"

#include "framework/widgets/CButton.h"
#include "framework/widgets/CFormWindow.h"
#include "tellur/context/SliderPosition.h"
#include "tellur/painting/DrawDlgIds.h"
#include "tellur/painting/IDrawDlg.h"
#include "tellur/painting/ITerrain2DDrawDlgUser.h"

#include <cmath>
#include <cstdlib>
#include <string>
#include <utility>

namespace
{

constexpr int EXTENT_POSITIONS = 1000;
// The slider is logarithmic: its last position is BASE - 1 steps from 0.
constexpr float BASE = 100.0F;
constexpr float LEAST_LENGTH = 0.00001F;

} // namespace

CDrawDlgExtent::CDrawDlgExtent(CFormWindow& form, IDrawDlg& dialog)
    : m_Form(form)
    , m_Dialog(dialog)
{
    form.BindCheck(DRAW_CENTIMETRES, m_Centimetres);
    form.Bind(DRAW_EXTENT_SLIDER, m_Slider);
    form.OnTextChange(DRAW_EXTENT_EDIT, [this] { OnTyped(); });
    form.OnClick(DRAW_CENTIMETRES, [this] { OnUnit(); });
    form.On(ENotify::Scrolled,
            DRAW_EXTENT_SLIDER,
            [this](SNotification& notification) { OnScroll(notification); });
}

void CDrawDlgExtent::SetupSlider()
{
    m_Slider.SetRange(0, EXTENT_POSITIONS);
}

void CDrawDlgExtent::SetPointer(float* pExtent)
{
    m_Extent = pExtent;
    m_Form.EnableItem(DRAW_EXTENT_EDIT, m_Extent != nullptr);
    ShowText();
    ShowPosition();
}

void CDrawDlgExtent::Choose(float fExtent)
{
    if (m_Extent != nullptr)
    {
        *m_Extent = fExtent;
        ShowText();
        ShowPosition();
    }
}

void CDrawDlgExtent::Update()
{
    m_Form.EnableItem(DRAW_EXTENT_EDIT, m_Extent != nullptr);
    if (m_Dialog.GetUser() != nullptr)
    {
        m_Form.EnableItem(DRAW_CENTIMETRES, GetMappingSizes().uWidth != 0);
    }
}

CDrawDlgExtent::SMappingSizes CDrawDlgExtent::GetMappingSizes() const
{
    SMappingSizes sizes;
    if (const ITerrain2DDrawDlgUser* pUser = m_Dialog.GetUser())
    {
        pUser->GetMappingSizes(&sizes.fLength, &sizes.uWidth);
    }
    return sizes;
}

void CDrawDlgExtent::ShowText()
{
    if (m_Extent == nullptr)
    {
        return;
    }
    float fShown = *m_Extent;
    if (m_Centimetres != CHECK_ON)
    {
        const SMappingSizes sizes = GetMappingSizes();
        fShown = std::fabs(sizes.fLength) < LEAST_LENGTH
                     ? 0.0F
                     : static_cast<float>(sizes.uWidth) / sizes.fLength * *m_Extent;
    }
    // A text that is set by code notifies like a typed one, and reading it back would round the
    // extent.
    const bool bBefore = std::exchange(m_bUpdating, true);
    m_Form.SetItemText(DRAW_EXTENT_EDIT, std::to_string(std::lround(fShown)).c_str());
    m_bUpdating = bBefore;
}

void CDrawDlgExtent::ShowPosition()
{
    const float fLength = GetMappingSizes().fLength;
    if (m_Extent == nullptr)
    {
        return;
    }
    // Without a terrain the length is 0; TruncateToPosition takes what then comes out, infinite or
    // no number.
    const float fSteps = std::log(*m_Extent / fLength * (BASE - 1.0F) + 1.0F);
    m_Slider.SetPos(
        TruncateToPosition(static_cast<float>(EXTENT_POSITIONS) * fSteps / std::log(BASE)));
}

void CDrawDlgExtent::OnTyped()
{
    if (m_bUpdating || m_Extent == nullptr)
    {
        return;
    }
    const long iTyped = std::strtol(m_Form.GetItemText(DRAW_EXTENT_EDIT).c_str(), nullptr, 10);
    if (m_Centimetres == CHECK_ON)
    {
        *m_Extent = static_cast<float>(iTyped);
    }
    else
    {
        const SMappingSizes sizes = GetMappingSizes();
        const auto fPixels = static_cast<float>(static_cast<uint32_t>(iTyped));
        *m_Extent =
            sizes.uWidth != 0 ? fPixels * sizes.fLength / static_cast<float>(sizes.uWidth) : 0.0F;
    }
    ShowPosition();
}

void CDrawDlgExtent::OnUnit()
{
    m_Form.ReadControls();
    ShowPosition();
    ShowText();
}

void CDrawDlgExtent::OnScroll(const SNotification& notification)
{
    m_Form.ReadControls();
    const int iPos = m_Slider.GetScrolledPos(notification);
    m_Slider.SetPos(iPos);
    if (m_Dialog.NeedUser() == nullptr || m_Extent == nullptr)
    {
        return;
    }
    const float fPower =
        std::pow(BASE, static_cast<float>(iPos) / static_cast<float>(EXTENT_POSITIONS));
    *m_Extent = (fPower - 1.0F) * (1.0F / (BASE - 1.0F)) * GetMappingSizes().fLength;
    ShowText();
}
