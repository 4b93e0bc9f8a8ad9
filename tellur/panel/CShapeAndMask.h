#pragma once

#include "tellur/panel/CTellurBitmapButton.h"

#include <string>

class CFormWindow;
class CTellurBrush;

// The two pictures of the current brush in the panel: its shape and its mask, which can be switched
// off. A member of the form whose controls it binds. What it is given of the mask shows when the
// form writes its controls.
class CShapeAndMask
{
public:
    explicit CShapeAndMask(CFormWindow& form); // kept for as long as this lives

    // Shows the pictures of a brush, borrowed until the next one; null: none.
    void Show(CTellurBrush* pBrush);
    void Enable(bool bOn);

private:
    void OnBrowseMask();
    void OnMaskEnabled();

    CFormWindow& m_Form;
    CTellurBitmapButton m_Shape;
    std::string m_MaskPath;
    int m_MaskEnabled = 0; // ECheckState
};
