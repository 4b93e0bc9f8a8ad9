#pragma once

#include "tellur/painting/CColorButton.h"

#include <array>
#include <cstddef>

class CFormWindow;
class IDrawDlg;
class IPalette;

// The colours of the draw dialog: eight at hand and the one that is painted with. A click makes one
// of the eight current; a double click, and a click on the current one, let a person choose
// another. A member of the form whose controls it binds.
class CDrawDlgColors
{
public:
    CDrawDlgColors(CFormWindow& form, IDrawDlg& dialog); // both kept for as long as this lives

    // Takes the colours that go with the user's bitmap: its palette's, or eight plain ones. Nothing
    // happens when the bitmap before was of the same kind.
    void Load();

    const float* GetCurrent() const { return m_Current.GetColor(); } // four components

    void Choose(const float* pColor); // the current one, four components
    // Lets the swatches show those channels of their colours that a channel mask (EPaintChannel)
    // paints.
    void ShowChannels(uint32_t uChannels);

private:
    static constexpr size_t COLOR_COUNT = 8;

    enum class EColorSet
    {
        None,
        Free,
        Palette,
    };

    void SetFreeColors();
    void SetPaletteColors(const IPalette& palette);
    void MakeCurrent(const CColorButton& button);
    void ChooseColorOf(CColorButton& button);
    bool AskForColor(const CColorButton& button, uint8_t* pColor);
    void Tell();

    CFormWindow& m_Form;
    IDrawDlg& m_Dialog;
    EColorSet m_ColorSet = EColorSet::None;
    std::array<CColorButton, COLOR_COUNT> m_Colors;
    CColorButton m_Current;
};
