#pragma once

#include <span>
#include <vector>

class CFormWindow;
class CTellurBrush;
struct SPanelFunction;
struct SResourceModule;

// The buttons of the panel that choose the function to sculpt with: one for each of a list, however
// long it is. The button of the current brush's function is down. A click makes the tool brush of
// the function current and switches terraforming on; a click on the button that is down ends both.
// A member of the form whose controls it binds.
class CFunctionButtons
{
public:
    // functions: copied; their texts are borrowed for as long as this lives.
    CFunctionButtons(CFormWindow& form, std::span<const SPanelFunction> functions);
    ~CFunctionButtons();
    CFunctionButtons(const CFunctionButtons&) = delete;
    CFunctionButtons& operator=(const CFunctionButtons&) = delete;

    // Gives the buttons their pictures. The controls have to be there. pModule: where the pictures
    // are, borrowed.
    void Dress(const SResourceModule* pModule);
    // Presses the button of the brush's function and no other; null: none.
    void Show(const CTellurBrush* pBrush);

private:
    struct SButton;

    void OnClicked(const char* pszFunction);

    std::vector<SButton> m_Buttons; // in the order of the list; never resized
};
