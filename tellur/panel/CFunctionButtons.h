#pragma once

#include <vector>

class CFormWindow;
class CTellurBrush;

// The buttons of the panel that choose the function to sculpt with: one for each that has a face.
// The button of the current brush's function is down. A click makes the tool brush of the function
// current and switches terraforming on; a click on the button that is down ends both. A member of
// the form whose controls it binds.
class CFunctionButtons
{
public:
    explicit CFunctionButtons(CFormWindow& form);
    ~CFunctionButtons();
    CFunctionButtons(const CFunctionButtons&) = delete;
    CFunctionButtons& operator=(const CFunctionButtons&) = delete;

    // Gives the buttons their pictures. The controls have to be there.
    void Dress();
    // Presses the button of the brush's function and no other; null: none.
    void Show(const CTellurBrush* pBrush);

private:
    struct SButton;

    void OnClicked(const char* pszFunction);

    std::vector<SButton> m_Buttons; // by their places; never resized
};
