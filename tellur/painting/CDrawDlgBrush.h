#pragma once

#include "tellur/painting/CTerrain2DDrawDlgBitmapButton.h"

#include <string>
#include <vector>

class CFormWindow;
class IDrawDlg;
class IImage;
class ITerrain2DDrawDlgUser;
struct SNotification;

// The brush of the draw dialog, its size apart: its shape, and its power and hardness, each a field
// with a slider and arrows. Which of the two has which controls is a table of rows in the source. A
// member of the form whose controls it binds.
class CDrawDlgBrush
{
public:
    CDrawDlgBrush(CFormWindow& form, IDrawDlg& dialog); // both kept for as long as this lives
    ~CDrawDlgBrush();
    CDrawDlgBrush(const CDrawDlgBrush&) = delete;
    CDrawDlgBrush& operator=(const CDrawDlgBrush&) = delete;

    // Gives the sliders their ranges. The controls have to be there.
    void SetupSliders();
    // Takes power and hardness of the user. They show in the sliders at once and in the fields when
    // the form writes its controls.
    void Take(const ITerrain2DDrawDlgUser& user);
    // Shows the shape and gives it to the user. pImage: borrowed; null: the file is loaded.
    void SetShape(const IImage* pImage, const char* pszPath);
    // False, with a logged line, for no image; the shape before stays then.
    bool ChooseShape(const std::string& strPath);

private:
    struct SShare;

    void OnBrowseShape();
    void OnTyped(SShare& share);
    void OnSpin(SShare& share, int iDelta);
    void OnScroll(SShare& share, const SNotification& notification);
    void Tell(const SShare& share);

    CFormWindow& m_Form;
    IDrawDlg& m_Dialog;
    CTerrain2DDrawDlgBitmapButton m_Shape;
    std::vector<SShare> m_Shares; // in the order of the rows; never resized
};
