#pragma once

#include "framework/widgets/CComboBox.h"

class CFormWindow;

// The group "Height map" of the panel: the terrain's resolution, which can be changed after a
// question, and the button that saves the heights. A member of the form whose controls it binds.
class CHeightMapControls
{
public:
    explicit CHeightMapControls(CFormWindow& form);

    // Lists the resolutions and selects the terrain's, if it is one of them.
    void FillResolutions();

private:
    void OnSelectResolution();

    CComboBox m_Resolutions;
};
