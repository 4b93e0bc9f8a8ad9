#pragma once

#include "framework/drawing/GreyPixels.h"
#include "framework/widgets/CButton.h"

class IImage;
class ITellurBrush;

// Shows the shape of a brush and lets the person choose another image file for it, by a press of
// the mouse or the space bar.
class CTellurBitmapButton : public CButton
{
public:
    void SetBrush(ITellurBrush* pBrush); // borrowed until the next one, null: none

    void Disable() { EnableWindow(false); }

    void Enable() { EnableWindow(true); }

protected:
    bool OnLButtonDown(const SMouseEvent& event) override;
    bool OnKeyDown(const SKeyEvent& key) override;
    void DrawItem(const SDrawItem& item) override;

private:
    void ChooseImage();

    ITellurBrush* m_Brush = nullptr;
    const IImage* m_CachedImage = nullptr; // that the pixels are of, only compared
    SGreyPixels m_Pixels;
};
