#pragma once

#include "framework/widgets/CWindow.h"

#include <cstdint>

class IPalette;

// The colours of a palette, sixteen in a row; a click selects one.
class CPaletteColorWnd : public CWindow
{
public:
    void SetPalette(const IPalette* pPalette) { m_Palette = pPalette; } // borrowed; null: none

    void SetSelection(uint16_t uIndex);

    uint16_t GetSelection() const { return m_Selection; }

protected:
    void OnPaint(CDrawContext& context) override;
    bool OnLButtonDown(const SMouseEvent& event) override;

private:
    SSize GetCell() const; // without the line beside it
    void DrawEntry(CDrawContext& context, uint32_t uIndex, int iGrown) const;

    const IPalette* m_Palette = nullptr;
    uint16_t m_Selection = 0;
};
