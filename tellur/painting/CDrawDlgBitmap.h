#pragma once

#include <string>

class CFormWindow;
class IDrawDlg;

// The bitmap file of the draw dialog: its name, choosing it and saving it. A member of the form
// whose controls it binds.
class CDrawDlgBitmap
{
public:
    CDrawDlgBitmap(CFormWindow& form, IDrawDlg& dialog); // both kept for as long as this lives

    // As it was when the form read its controls last.
    const std::string& GetFile() const { return m_File; }

    void Choose(const std::string& strPath);
    // Enables what can be done with the file. bPainting: it is being painted on.
    void Update(bool bPainting);

private:
    void OnBrowse();
    void OnSave();

    CFormWindow& m_Form;
    IDrawDlg& m_Dialog;
    std::string m_File;
};
