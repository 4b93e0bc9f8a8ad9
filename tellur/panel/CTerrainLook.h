#pragma once

#include <string>

class CFormWindow;

// How the terrain looks while it is edited: the controls of the panel for its normals and for the
// material that it has meanwhile. A member of the form whose controls it binds.
class CTerrainLook
{
public:
    explicit CTerrainLook(CFormWindow& form); // kept for as long as this lives

    // Takes what the plug-in has. It shows when the form writes its controls.
    void Take();

private:
    void OnAutoNormals();
    void OnBrowseMaterial();

    CFormWindow& m_Form;
    int m_AutoNormals = 0; // ECheckState
    std::string m_Material;
};
