#pragma once

#include "framework/widgets/CSliderCtrl.h"

#include <cstdint>

class CFormWindow;
class IDrawDlg;

// The extent of the draw dialog's brush, half the side of what is painted: a field in terrain units
// or in texels of the bitmap, and a slider. It writes the painting mode's own number. A member of
// the form whose controls it binds.
class CDrawDlgExtent
{
public:
    CDrawDlgExtent(CFormWindow& form, IDrawDlg& dialog); // both kept for as long as this lives

    // Gives the slider its range. The controls have to be there.
    void SetupSlider();
    // The number to show and to write, terrain units. Borrowed until the next one; null: none.
    void SetPointer(float* pExtent);
    void Choose(float fExtent); // terrain units
    // Enables the field while there is a number, and the choice of units while there is a bitmap.
    void Update();
    // Writes the number into the field again. The texels that it counts may be others now.
    void ShowText();

private:
    struct SMappingSizes
    {
        float fLength = 0.0F; // what the slider reaches, terrain units
        uint32_t uWidth = 0;  // of the bitmap, texels
    };

    SMappingSizes GetMappingSizes() const; // 0 without a user
    void ShowPosition();
    void OnTyped();
    void OnUnit();
    void OnScroll(const SNotification& notification);

    CFormWindow& m_Form;
    IDrawDlg& m_Dialog;
    float* m_Extent = nullptr;
    int m_Centimetres = 1;    // ECheckState; else texels
    bool m_bUpdating = false; // the text changes by code
    CSliderCtrl m_Slider;
};
