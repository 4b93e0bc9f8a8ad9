// The colours of the draw dialog.

#include "framework/core/ChooseColor.h"
#include "host/Image.h"
#include "tellur/context/PluginContext.h"
#include "tellur/painting/CModeEditTerrainType.h"
#include "tellur/painting/CPaletteColorDlg.h"
#include "tellur/painting/CTerrain2DDrawDlg.h"
#include "tellur/painting/DrawDlgIds.h"
#include "tellur/painting/IPaintingPlugin.h"

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

void CTerrain2DDrawDlg::ListenToColors()
{
    for (size_t i = 0; i < COLOR_COUNT; ++i)
    {
        const uint32_t uId = DRAW_FIRST_COLOR + static_cast<uint32_t>(i);
        CColorButton& button = m_Colors[i];
        OnClick(uId, [this, &button] { MakeCurrent(button); });
        On(ENotify::DoubleClicked, uId, [this, &button](SNotification&) { ChooseColorOf(button); });
    }
    OnClick(DRAW_CURRENT_COLOR, [this] { ChooseColorOf(m_CurrentColor); });
}

void CTerrain2DDrawDlg::LoadColours()
{
    const IPalette* pPalette = m_User != nullptr ? m_User->GetPalette() : nullptr;
    const EColorSet eSet = pPalette != nullptr ? EColorSet::Palette : EColorSet::Free;
    if (m_ColorSet == eSet)
    {
        return;
    }
    m_ColorSet = eSet;
    for (CColorButton& color : m_Colors)
    {
        color.SetUndefined();
    }
    m_CurrentColor.SetUndefined();
    if (pPalette != nullptr)
    {
        SetPaletteColors(*pPalette);
    }
    else
    {
        SetFreeColors();
    }
    TellColor();
}

void CTerrain2DDrawDlg::SetFreeColors()
{
    for (size_t i = 0; i < COLOR_COUNT; ++i)
    {
        m_Colors[i].SetColor(FREE_COLORS[i]);
    }
    m_CurrentColor.SetColor(FREE_COLORS[0]);
}

// A palette with fewer entries leaves the other buttons undefined.
void CTerrain2DDrawDlg::SetPaletteColors(const IPalette& palette)
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
        m_CurrentColor.SetColorBytes(pEntry[0], pEntry[1], pEntry[2]);
    }
}

void CTerrain2DDrawDlg::TellColor()
{
    if (m_User != nullptr)
    {
        m_User->SetColor(m_CurrentColor.GetColor());
    }
}

void CTerrain2DDrawDlg::MakeCurrent(const CColorButton& button)
{
    if (!HasUser() || !button.IsDefined())
    {
        return;
    }
    m_User->SetColor(button.GetColor());
    m_CurrentColor.SetColor(button.GetColor());
}

void CTerrain2DDrawDlg::ChooseColor(const float* pColor)
{
    m_CurrentColor.SetColor(pColor);
    TellColor();
}

void CTerrain2DDrawDlg::ChooseColorOf(CColorButton& button)
{
    ReadControls();
    uint8_t color[3] = {};
    if (!AskForColor(button, color))
    {
        return;
    }
    button.SetColorBytes(color[0], color[1], color[2]);
    if (&button != &m_CurrentColor)
    {
        m_CurrentColor.SetColorBytes(color[0], color[1], color[2]);
    }
    TellColor();
    WriteFields();
}

bool CTerrain2DDrawDlg::AskForColor(const CColorButton& button, uint8_t* pColor)
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
    const uint8_t* pChosen = dialog.DoModal(this) == DIALOG_OK ? dialog.GetColor() : nullptr;
    if (pChosen != nullptr)
    {
        std::copy_n(pChosen, 3, pColor);
    }
    return pChosen != nullptr;
}
