#pragma once

#include "framework/widgets/CListBox.h"

class CFormWindow;
class CTellurBrush;

// The list of defined brushes in the panel, and the buttons that add the current brush to it and
// save it. Choosing a brush of the list makes a copy of it current and switches terraforming on;
// choosing none ends both. A member of the form whose controls it binds.
class CDefinedBrushes
{
public:
    explicit CDefinedBrushes(CFormWindow& form); // kept for as long as this lives

    // Lists the brushes of the plug-in's container. The items borrow them, so it is filled again
    // whenever the container has changed.
    void Fill();
    void EnableAdding(bool bOn);

private:
    void AddItem(CTellurBrush* pBrush);
    void OnSelect();
    void OnAdd();
    void OnSave();

    CFormWindow& m_Form;
    CListBox m_List;
};
