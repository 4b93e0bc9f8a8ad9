#include "tellur/painting/CDrawDlgColors.h"

#include "framework/core/ChooseColor.h"
#include "framework/widgets/CFormWindow.h"
#include "host/IPaintLayer.h"
#include "host/Image.h"
#include "tellur/context/PluginContext.h"
#include "tellur/painting/CModeEditTerrainType.h"
#include "tellur/painting/CPaletteColorDlg.h"
#include "tellur/painting/DrawDlgIds.h"
#include "tellur/painting/IDrawDlg.h"
#include "tellur/painting/IPaintingPlugin.h"
#include "tellur/painting/ITerrain2DDrawDlgUser.h"

#include <algorithm>

namespace
{

constexpr float FREE_COLORS[][4] = {{1.0F, 0.0F, 0.0F, 1.0F},
                                    {0.0F, 1.0F, 0.0F, 1.0F},
                                    {0.0F, 0.0F, 1.0F, 1.0F},
                                    {1.0F, 1.0F, 0.0F, 1.0F},
                                    {1.0F, 0.0F, 1.0F, 1.0F},
                                    {0.0F, 1.0F, 1.0F, 1.0F},
                                    {0.0F, 0.0F, 0.0F, 1.0F},
                                    {1.0F, 1.0F, 1.0F, 1.0F}};

} // namespace

CDrawDlgColors::CDrawDlgColors(CFormWindow& form, IDrawDlg& dialog)
    : m_Form(form)
    , m_Dialog(dialog)
{
    m_Current.SetColor(FREE_COLORS[0]);
    for (size_t i = 0; i < COLOR_COUNT; ++i)
    {
        const uint32_t uId = DRAW_FIRST_COLOR + static_cast<uint32_t>(i);
        CColorButton& button = m_Colors[i];
        form.Bind(uId, button);
        form.OnClick(uId, [this, &button] { MakeCurrent(button); });
        form.On(ENotify::DoubleClicked,
                uId,
                [this, &button](SNotification&) { ChooseColorOf(button); });
    }
    form.Bind(DRAW_CURRENT_COLOR, m_Current);
    form.OnClick(DRAW_CURRENT_COLOR, [this] { ChooseColorOf(m_Current); });
}

void CDrawDlgColors::Load()
{
    const ITerrain2DDrawDlgUser* pUser = m_Dialog.GetUser();
    const IPalette* pPalette = pUser != nullptr ? pUser->GetPalette() : nullptr;
    const EColorSet eSet = pPalette != nullptr ? EColorSet::Palette : EColorSet::Free;
    // Colours that a person chose stay from one bitmap to the next of its kind.
    if (m_ColorSet == eSet)
    {
        return;
    }
    m_ColorSet = eSet;
    for (CColorButton& color : m_Colors)
    {
        color.SetUndefined();
    }
    m_Current.SetUndefined();
    if (pPalette != nullptr)
    {
        SetPaletteColors(*pPalette);
    }
    else
    {
        SetFreeColors();
    }
    Tell();
}

void CDrawDlgColors::SetFreeColors()
{
    for (size_t i = 0; i < COLOR_COUNT; ++i)
    {
        m_Colors[i].SetColor(FREE_COLORS[i]);
    }
    m_Current.SetColor(FREE_COLORS[0]);
}

// A palette with fewer entries leaves the other buttons undefined.
void CDrawDlgColors::SetPaletteColors(const IPalette& palette)
{
    for (uint32_t i = 0; i < COLOR_COUNT; ++i)
    {
        if (const uint8_t* pEntry = palette.GetEntry(i))
        {
            m_Colors[i].SetColorBytes(pEntry[0], pEntry[1], pEntry[2]);
        }
    }
    if (const uint8_t* pEntry = palette.GetEntry(0))
    {
        m_Current.SetColorBytes(pEntry[0], pEntry[1], pEntry[2]);
    }
}

void CDrawDlgColors::Tell()
{
    if (ITerrain2DDrawDlgUser* pUser = m_Dialog.GetUser())
    {
        pUser->SetColor(m_Current.GetColor());
    }
}

void CDrawDlgColors::MakeCurrent(const CColorButton& button)
{
    ITerrain2DDrawDlgUser* pUser = m_Dialog.NeedUser();
    if (pUser == nullptr || !button.IsDefined())
    {
        return;
    }
    pUser->SetColor(button.GetColor());
    m_Current.SetColor(button.GetColor());
}

void CDrawDlgColors::Choose(const float* pColor)
{
    m_Current.SetColor(pColor);
    Tell();
}

void CDrawDlgColors::ShowChannels(uint32_t uChannels)
{
    // Alpha takes its level from red, so that is what the swatches show for it.
    const uint32_t uShown = (uChannels & PAINT_RGB_EDITABLE) != 0                            ? 7U
                            : (uChannels & (PAINT_RED_EDITABLE | PAINT_ALPHA_EDITABLE)) != 0 ? 1U
                            : (uChannels & PAINT_GREEN_EDITABLE) != 0                        ? 2U
                            : (uChannels & PAINT_BLUE_EDITABLE) != 0                         ? 4U
                                                                                             : 0U;
    for (CColorButton& color : m_Colors)
    {
        color.SetDisplayChannels(uShown);
    }
    m_Current.SetDisplayChannels(uShown);
}

void CDrawDlgColors::ChooseColorOf(CColorButton& button)
{
    m_Form.ReadControls();
    uint8_t color[3] = {};
    if (!AskForColor(button, color))
    {
        return;
    }
    button.SetColorBytes(color[0], color[1], color[2]);
    if (&button != &m_Current)
    {
        m_Current.SetColorBytes(color[0], color[1], color[2]);
    }
    Tell();
    m_Form.WriteControls();
}

bool CDrawDlgColors::AskForColor(const CColorButton& button, uint8_t* pColor)
{
    const ColorRef uBefore = button.GetColorRef();
    const CModeEditTerrainType* pMode = GetPluginPart<IPaintingPlugin>()->GetEditTerrainTypeMode();
    const IPalette* pPalette = pMode != nullptr ? pMode->GetPalette() : nullptr;
    if (pPalette == nullptr)
    {
        uint32_t uColor = uBefore;
        const bool bChosen = ::ChooseColor(uColor);
        pColor[0] = GetRed(uColor);
        pColor[1] = GetGreen(uColor);
        pColor[2] = GetBlue(uColor);
        return bChosen;
    }
    const uint8_t before[] = {GetRed(uBefore), GetGreen(uBefore), GetBlue(uBefore)};
    CPaletteColorDlg dialog(pPalette, before);
    const uint8_t* pChosen = dialog.DoModal(&m_Form) == DIALOG_OK ? dialog.GetColor() : nullptr;
    if (pChosen != nullptr)
    {
        std::copy_n(pChosen, 3, pColor);
    }
    return pChosen != nullptr;
}
