#pragma once

#include "framework/widgets/CButton.h"

#include <cstdint>

class CBitmap;
struct SResourceModule;

// A button that shows a bitmap resource in a raised or sunken frame, and may stay down after a
// click. Its owner says with SetChecked what it shows in the end.
class CImageToggleButton : public CButton
{
public:
    // pModule: where the images are, borrowed. An id of 0 stands for the normal image; a disabled
    // one without an image of its own gets a dotted pattern.
    void SetImages(const SResourceModule* pModule,
                   uint32_t uImage,
                   uint32_t uPressed = 0,
                   uint32_t uDisabled = 0);

    void SetToggle(bool bToggle) { m_bToggle = bToggle; } // a click pushes it on and off

    void SetStretch(bool bStretch) { m_bStretch = bStretch; } // over the whole button

    void SetChecked(bool bChecked);

protected:
    bool OnLButtonDown(const SMouseEvent& event) override;
    void DrawItem(const SDrawItem& item) override;

private:
    struct SPlace;

    uint32_t ChooseImage(uint32_t uState, bool& bDotted) const;
    SPlace PlaceImage(const SRect& item, const SSize& border, const SSize& image) const;
    void DrawImage(CDrawContext& context, const SPlace& place, CBitmap& bitmap, bool bDotted) const;

    const SResourceModule* m_Module = nullptr;
    bool m_bStretch = false;
    bool m_bToggle = false;
    bool m_bChecked = false;
    uint32_t m_ImageId = 0;
    uint32_t m_PressedImageId = 0;
    uint32_t m_DisabledImageId = 0;
};
