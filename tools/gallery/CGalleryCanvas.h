#pragma once

#include "framework/drawing/CPixelBuffer.h"
#include "framework/widgets/CButton.h"

// Shows the same drawing at 16, 24 and 32 bits side by side.
class CGalleryCanvas : public CWindow
{
protected:
    void OnPaint(CDrawContext& context) override;

private:
    CPixelBuffer m_Pixels;
};

// A button with a soft edge, a picture whose greys follow the desktop, and the focus rectangle.
class CGalleryButton : public CButton
{
protected:
    void DrawItem(const SDrawItem& item) override;
};
