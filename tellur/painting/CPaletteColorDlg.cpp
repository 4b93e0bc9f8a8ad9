#include "tellur/painting/CPaletteColorDlg.h"

#include "host/Image.h"

#include <cmath>

namespace
{

constexpr uint32_t DIALOG_ID = 2114;
constexpr uint32_t COLORS_ID = 3; // after the two buttons
constexpr int NEAR_EDGE = 2;      // of the colours in the client area, pixels at 100 %
constexpr int FAR_EDGE = 339;

} // namespace

CPaletteColorDlg::CPaletteColorDlg(const IPalette* pPalette, const uint8_t* pColor)
    : CDialog(DIALOG_ID)
    , m_Palette(pPalette)
{
    m_Colors.SetPalette(pPalette);
    m_Colors.SetSelection(pPalette != nullptr ? pPalette->FindIndex(pColor[0], pColor[1], pColor[2])
                                              : uint16_t{0});
}

const uint8_t* CPaletteColorDlg::GetColor() const
{
    return m_Palette != nullptr ? m_Palette->GetEntry(m_Colors.GetSelection()) : nullptr;
}

void CPaletteColorDlg::OnInit()
{
    const auto scale = [this](int iPixels)
    {
        return static_cast<int>(std::lround(iPixels * GetScale()));
    };
    m_Colors.Create(
        *this, COLORS_ID, {scale(NEAR_EDGE), scale(NEAR_EDGE), scale(FAR_EDGE), scale(FAR_EDGE)});
}
