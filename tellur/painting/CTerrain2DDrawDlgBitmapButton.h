#pragma once

#include "framework/drawing/GreyPixels.h"
#include "framework/widgets/CButton.h"

#include <memory>

class IImage;

// Shows the brush shape of the draw dialog. Black without one.
class CTerrain2DDrawDlgBitmapButton : public CButton
{
public:
    CTerrain2DDrawDlgBitmapButton();
    ~CTerrain2DDrawDlgBitmapButton() override;

    void SetImage(const IImage* pImage); // copied; null: none

protected:
    void DrawItem(const SDrawItem& item) override;

private:
    std::unique_ptr<IImage> m_Image; // one byte a pixel
    SGreyPixels m_Pixels;
};
