#include "tellur/panel/CBrushNumbers.h"

#include "framework/widgets/CEdit.h"
#include "framework/widgets/CFormWindow.h"
#include "framework/widgets/CSliderCtrl.h"
#include "framework/widgets/CSpinButtonCtrl.h"
#include "framework/widgets/FieldText.h"
#include "host/Log.h"
#include "host/Notice.h"
#include "host/NumberText.h"
#include "host/Terrain.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/context/PluginContext.h"
#include "tellur/context/ShareStep.h"
#include "tellur/panel/CurrentBrush.h"
#include "tellur/panel/PanelIds.h"
#include "tellur/panel/PanelScale.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace
{

constexpr float NEVER_SET = 0.001F;    // a limit below it is none
constexpr float LEAST_IN_CELLS = 0.5F; // the limits before somebody sets them
constexpr float MOST_OF_TERRAIN = 0.1F;

constexpr int NO_RANGE = 0;
constexpr int SPIN_MOST = 100;
constexpr float DISTANCE_STEP = 10.0F;
constexpr float MOST_FADE = 1000000.0F;
constexpr float TERRAIN_HEIGHT = -1.0F; // the terrain decides, and without one nothing is set

constexpr const char* RANGE_TOPIC = "the panel's range of the extent";
constexpr const char* NOT_YET =
    "Does not count yet: a click on the arrows beside it takes it over and steps by 0.01";
constexpr const char* NO_BRUSH = "[CTellurView::OnChangeEditPower] no current brush\n";

// How one number of the brush is shown and edited.
struct SNumberRow
{
    uint32_t uEdit = 0;
    uint32_t uSlider = 0;
    const SPanelScale* pScale = nullptr;
    float (CTellurBrush::*pGet)() const = nullptr;
    void (CTellurBrush::*pSet)(float) = nullptr;

    // The rest is for numbers with arrows. The extent has none, and takes whatever is typed.
    uint32_t uTyped = 0; // the id whose text counts as typed, see EPanelControl
    float fMost = 0.0F;  // what may be typed is 0 to this
    uint32_t uSpin = 0;
    float fSpinStep = 0.0F; // what one step of the arrows adds
    uint32_t uSpinBuddy = 0;
    int iSpinMost = NO_RANGE;
    const char* pszNoBrush = nullptr; // logged when it is typed without a brush; null: nothing is
};

constexpr size_t EXTENT = 0;

// All of this is kept as it always was. The arrows of hardness and vertical distance have no range,
// so they count downwards, and their steps do so too. Those of the hardness have no field either,
// and those of the power one that the form lacks. The fade distance has the extent's scale, and
// reports under the name of the power.
constexpr SNumberRow ROWS[] = {
    {.uEdit = PANEL_EXTENT_EDIT,
     .uSlider = PANEL_EXTENT_SLIDER,
     .pScale = &EXTENT_SCALE,
     .pGet = &CTellurBrush::GetExtent,
     .pSet = &CTellurBrush::SetExtent},
    {.uEdit = PANEL_POWER_EDIT,
     .uSlider = PANEL_POWER_SLIDER,
     .pScale = &SHARE_SCALE,
     .pGet = &CTellurBrush::GetPowerModifier,
     .pSet = &CTellurBrush::SetPowerModifier,
     .uTyped = PANEL_NO_POWER_EDIT,
     .fMost = 1.0F,
     .uSpin = PANEL_POWER_SPIN,
     .fSpinStep = SHARE_STEP,
     .uSpinBuddy = PANEL_NO_POWER_EDIT,
     .iSpinMost = SPIN_MOST,
     .pszNoBrush = NO_BRUSH},
    {.uEdit = PANEL_FADE_EDIT,
     .uSlider = PANEL_FADE_SLIDER,
     .pScale = &EXTENT_SCALE,
     .pGet = &CTellurBrush::GetFadeFactor,
     .pSet = &CTellurBrush::SetFadeFactor,
     .uTyped = PANEL_FADE_EDIT,
     .fMost = MOST_FADE,
     .uSpin = PANEL_FADE_SPIN,
     .fSpinStep = 1.0F,
     .uSpinBuddy = PANEL_FADE_EDIT,
     .iSpinMost = SPIN_MOST,
     .pszNoBrush = NO_BRUSH},
    {.uEdit = PANEL_HARDNESS_EDIT,
     .uSlider = PANEL_HARDNESS_SLIDER,
     .pScale = &SHARE_SCALE,
     .pGet = &CTellurBrush::GetHardness,
     .pSet = &CTellurBrush::SetHardness,
     .uTyped = PANEL_NO_HARDNESS_EDIT,
     .fMost = MOST_HARDNESS,
     .uSpin = PANEL_HARDNESS_SPIN,
     .fSpinStep = -SHARE_STEP,
     .pszNoBrush = "[CTellurView::OnEnChangeEditHardness] no current brush\n"},
    {.uEdit = PANEL_DISTANCE_EDIT,
     .uSlider = PANEL_DISTANCE_SLIDER,
     .pScale = &DISTANCE_SCALE,
     .pGet = &CTellurBrush::GetVerticalDistance,
     .pSet = &CTellurBrush::SetVerticalDistance,
     .uTyped = PANEL_DISTANCE_EDIT,
     .fMost = TERRAIN_HEIGHT,
     .uSpin = PANEL_DISTANCE_SPIN,
     .fSpinStep = -DISTANCE_STEP,
     .uSpinBuddy = PANEL_DISTANCE_EDIT}};

static_assert(ROWS[EXTENT].uEdit == PANEL_EXTENT_EDIT);

// Whether what is typed waits for the arrows beside it.
bool IsWaiting(const SNumberRow& row)
{
    return row.uTyped != 0 && row.uTyped != row.uEdit;
}

// What may be typed at most; nothing may be while the terrain decides and there is none.
std::optional<float> GetMost(const SNumberRow& row)
{
    if (row.fMost != TERRAIN_HEIGHT)
    {
        return row.fMost;
    }
    const Terrain* pTerrain = GetCurrentTerrain();
    return pTerrain != nullptr ? std::optional(pTerrain->GetSize().y) : std::nullopt;
}

} // namespace

struct CBrushNumbers::SNumber
{
    const SNumberRow* pRow = nullptr;
    float fValue = 0.0F; // as the field shows it
    CEdit edit;          // of a number that waits for its arrows
    CSliderCtrl slider;
    CSpinButtonCtrl spin;
};

CBrushNumbers::CBrushNumbers(CFormWindow& form)
    : m_Form(form)
    , m_Numbers(std::size(ROWS))
{
    for (size_t i = 0; i < m_Numbers.size(); ++i)
    {
        SNumber& number = m_Numbers[i];
        const SNumberRow& row = ROWS[i];
        number.pRow = &row;
        form.BindValue(row.uEdit, number.fValue);
        form.Bind(row.uSlider, number.slider);
        form.On(ENotify::Scrolled,
                row.uSlider,
                [this, &number](SNotification& notification) { OnScroll(number, notification); });
        if (row.uSpinBuddy != 0)
        {
            form.Bind(row.uSpin, number.spin);
        }
        if (row.uTyped != 0)
        {
            form.OnEdit(row.uTyped, [this, &number] { OnTyped(number); });
        }
        if (IsWaiting(row))
        {
            form.Bind(row.uEdit, number.edit);
            form.OnTextChange(row.uEdit, [&number] { Mark(number); });
        }
        if (row.uSpin != 0)
        {
            form.On(ENotify::SpinDelta,
                    row.uSpin,
                    [this, &number](SNotification& notification)
                    { OnSpin(number, notification.iValue); });
        }
    }
    form.OnEdit(PANEL_EXTENT_EDIT, [this] { OnExtentTyped(); });
    form.BindValue(PANEL_MIN_EXTENT, m_Limits.fMin);
    form.BindValue(PANEL_MAX_EXTENT, m_Limits.fMax);
    form.OnEdit(PANEL_MIN_EXTENT, [this] { OnLimitTyped(); });
    form.OnEdit(PANEL_MAX_EXTENT, [this] { OnLimitTyped(); });
}

CBrushNumbers::~CBrushNumbers()
{
    StandingNotice(RANGE_TOPIC, nullptr);
}

void CBrushNumbers::SetupSpins()
{
    for (SNumber& number : m_Numbers)
    {
        if (number.pRow->iSpinMost != NO_RANGE)
        {
            number.spin.SetRange(0, number.pRow->iSpinMost);
        }
        number.spin.SetBuddy(number.pRow->uSpinBuddy);
    }
}

void CBrushNumbers::TakeLimits(const SExtentLimits& stored)
{
    m_Limits = stored;
    const Terrain* pTerrain = GetCurrentTerrain();
    if (std::fabs(m_Limits.fMax) < NEVER_SET && pTerrain != nullptr)
    {
        const float fWidth = pTerrain->GetSize().x;
        m_Limits.fMin = fWidth / static_cast<float>(pTerrain->GetCellsPerSide()) * LEAST_IN_CELLS;
        m_Limits.fMax = fWidth * MOST_OF_TERRAIN;
    }
    TellLimits();
}

// A slider between ends that are exchanged runs backwards, which nobody wants.
void CBrushNumbers::TellLimits() const
{
    constexpr int DIGITS = 8;
    const auto format = [](float fLimit)
    {
        return FormatNumber(static_cast<double>(fLimit), DIGITS, std::chars_format::general);
    };
    const bool bExchanged = std::max(m_Limits.fMin, 0.0F) > std::max(m_Limits.fMax, 0.0F);
    const std::string strText = "The panel's range begins above its end: " + format(m_Limits.fMin) +
                                " to " + format(m_Limits.fMax);
    StandingNotice(RANGE_TOPIC, bExchanged ? strText.c_str() : nullptr);
}

// Shows what is typed and not the brush's. It is looked at whenever the text or the brush changes,
// and changes neither.
void CBrushNumbers::Mark(SNumber& number)
{
    if (IsWaiting(*number.pRow))
    {
        const CTellurBrush* pBrush = GetCurrentBrush();
        const bool bCounts = pBrush == nullptr || ReadsAsValue(number.edit.GetWindowText(),
                                                               (pBrush->*number.pRow->pGet)());
        number.edit.MarkText(bCounts ? nullptr : NOT_YET);
    }
}

void CBrushNumbers::Show(const CTellurBrush* pBrush)
{
    m_KeptExtent.reset();
    for (SNumber& number : m_Numbers)
    {
        number.fValue = pBrush != nullptr ? (pBrush->*number.pRow->pGet)() : 0.0F;
        ShowPosition(number);
        Mark(number);
    }
}

void CBrushNumbers::ShowExtent(const CTellurBrush* pBrush)
{
    m_KeptExtent.reset();
    m_Numbers[EXTENT].fValue = pBrush != nullptr ? pBrush->GetExtent() : 0.0F;
    ShowPosition(m_Numbers[EXTENT]);
    m_Form.WriteControls(PANEL_EXTENT_EDIT);
}

void CBrushNumbers::Enable(bool bOn)
{
    for (const SNumberRow& row : ROWS)
    {
        m_Form.EnableItem(row.uEdit, bOn);
        m_Form.EnableItem(row.uSlider, bOn);
        if (row.uSpin != 0)
        {
            m_Form.EnableItem(row.uSpin, bOn);
        }
    }
    m_Form.EnableItem(PANEL_MIN_EXTENT, bOn);
    m_Form.EnableItem(PANEL_MAX_EXTENT, bOn);
}

int CBrushNumbers::GetPosition(const SNumber& number) const
{
    return number.pRow->pScale->pGetPosition(m_Limits, number.fValue);
}

void CBrushNumbers::ShowPosition(SNumber& number)
{
    number.slider.SetRedraw(false);
    number.slider.SetRange(0, number.pRow->pScale->iPositions);
    number.slider.SetPos(GetPosition(number));
    number.slider.SetRedraw(true);
}

// Whichever control of a number is worked, the brush gets the value and the other controls follow.
void CBrushNumbers::OnScroll(SNumber& number, const SNotification& notification)
{
    m_Form.ReadControls();
    CTellurBrush* pBrush = GetCurrentBrush();
    if (pBrush == nullptr)
    {
        CrashLog("[CTellurView::OnHScroll] no current brush\n");
        return;
    }
    m_KeptExtent.reset();
    const int iPos = number.slider.GetScrolledPos(notification);
    number.slider.SetPos(iPos);
    number.fValue = number.pRow->pScale->pGetValue(m_Limits, iPos);
    (pBrush->*number.pRow->pSet)(number.fValue);
    m_Form.WriteControls();
    Mark(number);
    ShowBrush();
}

void CBrushNumbers::OnSpin(SNumber& number, int iDelta)
{
    m_Form.ReadControls();
    number.fValue += static_cast<float>(iDelta) * number.pRow->fSpinStep;
    m_Form.WriteControls();
    OnTyped(number);
}

void CBrushNumbers::OnTyped(SNumber& number)
{
    const SNumberRow& row = *number.pRow;
    CTellurBrush* pBrush = GetCurrentBrush();
    const std::optional<float> most = GetMost(row);
    if (pBrush == nullptr || !most.has_value())
    {
        if (row.pszNoBrush != nullptr)
        {
            CrashLog("%s", row.pszNoBrush);
        }
        return;
    }
    m_Form.ReadControls();
    number.fValue = std::clamp(number.fValue, 0.0F, *most);
    m_Form.WriteControls();
    (pBrush->*row.pSet)(number.fValue);
    number.slider.SetPos(GetPosition(number));
    Mark(number);
}

void CBrushNumbers::OnExtentTyped()
{
    SNumber& extent = m_Numbers[EXTENT];
    m_Form.ReadControls();
    m_KeptExtent.reset();
    extent.slider.SetPos(GetPosition(extent));
    if (CTellurBrush* pBrush = GetCurrentBrush())
    {
        pBrush->SetExtent(extent.fValue);
        ShowBrush();
    }
}

// The slider goes on showing the same extent between other ends.
void CBrushNumbers::OnLimitTyped()
{
    CSliderCtrl& slider = m_Numbers[EXTENT].slider;
    // Half a number typed may leave no room for the extent, which comes back with the rest of it.
    const float fShown = m_KeptExtent.value_or(GetExtentAt(m_Limits, slider.GetPos()));
    m_Form.ReadControls();
    slider.SetPos(GetExtentPosition(m_Limits, fShown));
    m_KeptExtent = fShown;
    TellLimits();
}
