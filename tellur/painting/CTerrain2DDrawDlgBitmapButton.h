#pragma once

#include "framework/widgets/CButton.h"

#include <cstdint>
#include <memory>
#include <vector>

class IImage;

// Shows the brush shape of the draw dialog. Black without one.
class CTerrain2DDrawDlgBitmapButton : public CButton
{
public:
    CTerrain2DDrawDlgBitmapButton();
    ~CTerrain2DDrawDlgBitmapButton() override;

    void SetImage(const IImage* pImage); // copied; null: none

    bool HasImage() const { return m_Image != nullptr; }

protected:
    void DrawItem(const SDrawItem& item) override;

private:
    std::unique_ptr<IImage> m_Image; // one byte a pixel
    std::vector<uint8_t> m_Pixels;   // as the display has them
    int m_Width = 0;                 // of the pixels, as the next two; 0 bits: to be made
    int m_Height = 0;
    int m_Bits = 0;
};
