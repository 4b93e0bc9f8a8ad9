#pragma once

#include "framework/widgets/CDialog.h"
#include "tellur/painting/CDrawDlgBitmap.h"
#include "tellur/painting/CDrawDlgBrush.h"
#include "tellur/painting/CDrawDlgChannels.h"
#include "tellur/painting/CDrawDlgColors.h"
#include "tellur/painting/CDrawDlgExtent.h"
#include "tellur/painting/CDrawDlgFunctions.h"
#include "tellur/painting/CDrawDlgLayer.h"
#include "tellur/painting/IDrawDlg.h"

#include <string>

class IImage;
class ITerrain2DDrawDlgUser;

// The tool window "Edit bitmap on terrain", dialog 2111. The plug-in object owns it and makes it at
// the first command; closing it only hides it. It sets the painting mode up through
// ITerrain2DDrawDlgUser, writes the extent directly and switches the mode on and off. It owns the
// groups of its controls and tells them when to show what has changed. Lengths are terrain units.
class CTerrain2DDrawDlg : public CDialog, public IDrawDlg
{
public:
    static constexpr const char* DEFAULT_SHAPE = "data/brushes/round.png";

    CTerrain2DDrawDlg();

    // Shows what the user has. Borrowed until the next one; null: none.
    void SetUser(ITerrain2DDrawDlgUser* pUser);
    // Half the side of what is painted. Borrowed until the next one; null: none.
    void SetExtentPointer(float* pExtent);
    // The colours that go with the bitmap: its palette's, or eight plain ones. Nothing happens when
    // they are those already.
    void LoadColours();
    // Gives the shape to the user. pImage: borrowed; null: the file is loaded.
    void SetBrushShape(const IImage* pImage, const char* pszPath);

    // As the controls show it; the caller may be the mode that is being switched on from here.
    const std::string& GetBitmapFile() const { return m_Bitmap.GetFile(); }

    const float* GetCurrentColor() const { return m_Colors.GetCurrent(); } // four components

    // What a person chooses here, for scripts; each goes the way of its control.
    void ChooseBitmapFile(const std::string& strPath);
    bool ChooseBrushShape(const std::string& strPath); // false, and a logged line, for no image
    bool ChooseFunction(const char* pszName); // false while its button is not for the bitmap
    void ChooseColor(const float* pColor);    // the current one, four components
    void ChooseChannelMask(uint32_t uChannels);
    void ChooseExtent(float fExtent); // half the side, as the slider sets it

    // IDrawDlg
    ITerrain2DDrawDlgUser* GetUser() const override { return m_User; }

    ITerrain2DDrawDlgUser* NeedUser() override;
    void UpdateControls() override;

protected:
    void OnInit() override;
    bool OnToolTipText(SToolTipText& tip) override;

private:
    void SwitchEditing();

    ITerrain2DDrawDlgUser* m_User = nullptr;

    CDrawDlgBitmap m_Bitmap;
    CDrawDlgLayer m_Layer;
    CDrawDlgBrush m_Brush;
    CDrawDlgExtent m_Extent;
    CDrawDlgChannels m_Channels;
    CDrawDlgFunctions m_Functions;
    CDrawDlgColors m_Colors;
};
