#pragma once

class CFormWindow;
class IDrawDlg;
class ITerrain2DDrawDlgUser;

// The buttons of the draw dialog that choose what a stroke does to the texels. Which functions
// there are is a table of rows in the source. A member of the form whose controls it binds.
class CDrawDlgFunctions
{
public:
    CDrawDlgFunctions(CFormWindow& form, IDrawDlg& dialog); // both kept for as long as this lives

    // False while the function's button is disabled because the bitmap is not for it.
    bool Choose(const char* pszName);
    // Enables and checks the buttons after the user. bPainting: its bitmap is being painted on.
    void Update(const ITerrain2DDrawDlgUser& user, bool bPainting);

private:
    CFormWindow& m_Form;
    IDrawDlg& m_Dialog;
};
