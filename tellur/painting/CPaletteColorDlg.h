#pragma once

#include "framework/widgets/CDialog.h"
#include "tellur/painting/CPaletteColorWnd.h"

// "Choose color", dialog 2114: a colour of a palette.
class CPaletteColorDlg : public CDialog
{
public:
    // pPalette: borrowed for the dialog's life; null: none. pColor: three bytes, whose nearest
    // entry is selected at first.
    CPaletteColorDlg(const IPalette* pPalette, const uint8_t* pColor);

    // Three bytes of the selected entry; null without entries.
    const uint8_t* GetColor() const;

protected:
    void OnInit() override;

private:
    const IPalette* m_Palette;
    CPaletteColorWnd m_Colors;
};
