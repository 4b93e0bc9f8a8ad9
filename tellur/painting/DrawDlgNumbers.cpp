// The numbers of the draw dialog: power, hardness, blending and the extent, each with its slider.

#include "host/IPaintLayer.h"
#include "tellur/context/ShareStep.h"
#include "tellur/painting/CTerrain2DDrawDlg.h"
#include "tellur/painting/DrawDlgIds.h"
#include "tellur/painting/ITerrain2DDrawDlgUser.h"
#include "tellur/painting/PaintLayer.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace
{

constexpr float SHARE_POSITIONS = 100.0F;
constexpr float EXTENT_POSITIONS = 1000.0F;
// The extent's slider is logarithmic: its last position is BASE - 1 steps from 0.
constexpr float BASE = 100.0F;
constexpr float LEAST_LENGTH = 0.00001F;

int ToPosition(float fPos)
{
    constexpr float LIMIT = 1.0e6F;
    return fPos > -LIMIT && fPos < LIMIT ? static_cast<int>(fPos)
           : fPos >= LIMIT               ? static_cast<int>(LIMIT)
                                         : 0;
}

} // namespace

void CTerrain2DDrawDlg::ListenToNumbers()
{
    using FSet = void (ITerrain2DDrawDlgUser::*)(float);
    const auto listen =
        [this](uint32_t uEdit, uint32_t uSpin, float& fValue, CSliderCtrl& slider, FSet pSet)
    {
        OnTextChange(uEdit,
                     [this, &fValue, &slider, pSet] { OnChangeShare(fValue, slider, pSet); });
        On(ENotify::SpinDelta,
           uSpin,
           [this, &fValue, &slider, pSet](SNotification& notification)
           { OnDeltaShare(notification.iValue, fValue, slider, pSet); });
    };
    listen(
        DRAW_POWER_EDIT, DRAW_POWER_SPIN, m_Power, m_PowerSlider, &ITerrain2DDrawDlgUser::SetPower);
    listen(DRAW_HARDNESS_EDIT,
           DRAW_HARDNESS_SPIN,
           m_Hardness,
           m_HardnessSlider,
           &ITerrain2DDrawDlgUser::SetHardness);
    OnTextChange(DRAW_EXTENT_EDIT, [this] { OnChangeExtent(); });
    OnClick(DRAW_CENTIMETRES, [this] { OnCentimetres(); });
    OnScroll([this](SNotification& notification) { OnScrollSlider(notification); });
}

void CTerrain2DDrawDlg::OnChangeShare(float& fValue,
                                      CSliderCtrl& slider,
                                      void (ITerrain2DDrawDlgUser::*pSet)(float))
{
    if (m_bWriting)
    {
        return;
    }
    ReadControls();
    fValue = std::clamp(fValue, 0.0F, 1.0F);
    WriteFields();
    slider.SetPos(ToPosition(fValue * SHARE_POSITIONS));
    if (HasUser())
    {
        (m_User->*pSet)(fValue);
    }
}

// The arrows have no range and count downwards, and so does the sign.
void CTerrain2DDrawDlg::OnDeltaShare(int iDelta,
                                     float& fValue,
                                     CSliderCtrl& slider,
                                     void (ITerrain2DDrawDlgUser::*pSet)(float))
{
    ReadControls();
    fValue = std::clamp(fValue - static_cast<float>(iDelta) * SHARE_STEP, 0.0F, 1.0F);
    WriteFields();
    if (HasUser())
    {
        (m_User->*pSet)(fValue);
    }
    slider.SetPos(ToPosition(fValue * SHARE_POSITIONS));
}

void CTerrain2DDrawDlg::OnScrollSlider(const SNotification& notification)
{
    ReadControls();
    for (CSliderCtrl* pSlider :
         {&m_BlendingSlider, &m_ExtentSlider, &m_PowerSlider, &m_HardnessSlider})
    {
        if (pSlider != notification.pFrom)
        {
            continue;
        }
        const int iPos = pSlider->GetScrolledPos(notification);
        pSlider->SetPos(iPos);
        if (pSlider == &m_BlendingSlider)
        {
            ApplyBlending(iPos);
        }
        else if (pSlider == &m_ExtentSlider)
        {
            ApplyExtent(iPos);
        }
        else
        {
            const bool bPower = pSlider == &m_PowerSlider;
            float& fValue = bPower ? m_Power : m_Hardness;
            fValue = static_cast<float>(iPos) * SHARE_STEP;
            WriteFields();
            if (HasUser())
            {
                bPower ? m_User->SetPower(fValue) : m_User->SetHardness(fValue);
            }
        }
    }
}

void CTerrain2DDrawDlg::ApplyBlending(int iPos)
{
    const int iRange = m_BlendingSlider.GetRangeMax() - m_BlendingSlider.GetRangeMin();
    m_Blending = static_cast<float>(iPos) / static_cast<float>(std::max(iRange, 1));
    IPaintLayer* pLayer = IsPaintingModeOn() ? GetPaintLayer() : nullptr;
    if (pLayer != nullptr)
    {
        pLayer->SetBlendFactor(m_Blending);
    }
}

CTerrain2DDrawDlg::SMappingSizes CTerrain2DDrawDlg::GetMappingSizes() const
{
    SMappingSizes sizes;
    if (m_User != nullptr)
    {
        m_User->GetMappingSizes(&sizes.fLength, &sizes.uWidth);
    }
    return sizes;
}

void CTerrain2DDrawDlg::ApplyExtent(int iPos)
{
    if (!HasUser() || m_Extent == nullptr)
    {
        return;
    }
    const float fPower = std::pow(BASE, static_cast<float>(iPos) / EXTENT_POSITIONS);
    *m_Extent = (fPower - 1.0F) * (1.0F / (BASE - 1.0F)) * GetMappingSizes().fLength;
    ShowExtent();
}

void CTerrain2DDrawDlg::ChooseExtent(float fExtent)
{
    if (m_Extent != nullptr)
    {
        *m_Extent = fExtent;
        ShowExtent();
        ShowExtentSlider();
    }
}

void CTerrain2DDrawDlg::SetExtentPointer(float* pExtent)
{
    m_Extent = pExtent;
    EnableItem(DRAW_EXTENT_EDIT, m_Extent != nullptr);
    ShowExtent();
    ShowExtentSlider();
}

void CTerrain2DDrawDlg::ShowExtentSlider()
{
    const float fLength = GetMappingSizes().fLength;
    if (m_Extent == nullptr)
    {
        return;
    }
    const float fSteps = std::log(*m_Extent / fLength * (BASE - 1.0F) + 1.0F);
    m_ExtentSlider.SetPos(ToPosition(EXTENT_POSITIONS * fSteps / std::log(BASE)));
}

void CTerrain2DDrawDlg::ShowExtent()
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
    const bool bBefore = std::exchange(m_bUpdating, true);
    SetItemText(DRAW_EXTENT_EDIT, std::to_string(std::lround(fShown)).c_str());
    m_bUpdating = bBefore;
}

void CTerrain2DDrawDlg::OnChangeExtent()
{
    if (m_bUpdating || m_Extent == nullptr)
    {
        return;
    }
    const long iTyped = std::strtol(GetItemText(DRAW_EXTENT_EDIT).c_str(), nullptr, 10);
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
    ShowExtentSlider();
}

void CTerrain2DDrawDlg::OnCentimetres()
{
    ReadControls();
    ShowExtentSlider();
    ShowExtent();
}
