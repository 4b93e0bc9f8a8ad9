#pragma once

#include "framework/drawing/ColorRef.h"
#include "framework/widgets/CButton.h"

#include <cstdint>

// Shows a colour and its numbers. A colour whose red is below 0 is undefined.
class CColorButton : public CButton
{
public:
    // Red, green and blue, truncated to bytes; a middle grey when the colour is undefined.
    ColorRef GetColorRef() const;

    void SetColorBytes(uint8_t uRed, uint8_t uGreen, uint8_t uBlue); // opaque
    // Red, green, blue, alpha, 0 to 1.
    void SetColor(const float* pColor);

    const float* GetColor() const { return m_Color; } // four components

    void SetUndefined();

    bool IsDefined() const { return m_Color[0] >= 0.0F; }

    // Says which of red (1), green (2) and blue (4) the swatch shows; the numbers are there only
    // with all of them.
    void SetDisplayChannels(uint32_t uChannels);

    void SetShowText(bool bShow) { m_bShowText = bShow; }

protected:
    void DrawItem(const SDrawItem& item) override;

private:
    void DrawNumbers(CDrawContext& context, const SRect& rect, ColorRef uSwatch) const;

    float m_Color[4] = {1.0F, 1.0F, 1.0F, 1.0F};
    bool m_bShowText = true;
    uint32_t m_Channels = 7;
};
