#pragma once

#include "framework/widgets/CSliderCtrl.h"

#include <string>

class CFormWindow;
class IDrawDlg;
class ITerrain2DDrawDlgUser;

// How the paint layer shows the bitmap on the terrain, in the draw dialog: the material, how texels
// are mapped to vertices, and how far the bitmap covers the colour of the ground. A member of the
// form whose controls it binds.
class CDrawDlgLayer
{
public:
    CDrawDlgLayer(CFormWindow& form, IDrawDlg& dialog); // both kept for as long as this lives

    // Gives the slider its range and position. The controls have to be there.
    void SetupSlider();
    // Takes material and mapping from the user. They show when the form writes its controls.
    void Take(const ITerrain2DDrawDlgUser& user);

private:
    void OnBrowseMaterial();
    void OnMaterialTyped();
    void OnTexelMapping();
    void OnBlending(const SNotification& notification);

    CFormWindow& m_Form;
    IDrawDlg& m_Dialog;
    std::string m_Material;
    int m_TexelMapping = 0; // ECheckState
    float m_Blending = 0.5F;
    CSliderCtrl m_BlendingSlider;
};
