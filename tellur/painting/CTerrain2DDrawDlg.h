#pragma once

#include "framework/widgets/CDialog.h"
#include "framework/widgets/CSliderCtrl.h"
#include "tellur/painting/CColorButton.h"
#include "tellur/painting/CTerrain2DDrawDlgBitmapButton.h"
#include "tellur/painting/ChannelRules.h"

#include <array>
#include <string>

class IImage;
class ITerrain2DDrawDlgUser;

// The tool window "Edit bitmap on terrain", dialog 2111. Owned by the plug-in object, which makes
// it at the first command; closing it only hides it. It sets the painting mode up through
// ITerrain2DDrawDlgUser, writes the extent directly and switches the mode on and off. Lengths are
// terrain units.
class CTerrain2DDrawDlg : public CDialog
{
public:
    static constexpr const char* DEFAULT_SHAPE = "data/brushes/round.png";

    CTerrain2DDrawDlg();

    // Shows what the user has. Borrowed until the next one; null: none.
    void SetUser(ITerrain2DDrawDlgUser* pUser);

    const ITerrain2DDrawDlgUser* GetUser() const { return m_User; }

    // Half the side of what is painted. Borrowed until the next one; null: none.
    void SetExtentPointer(float* pExtent);
    // The colours that go with the bitmap: its palette's, or eight plain ones. Nothing when they
    // are those already.
    void LoadColours();
    // Gives the shape to the user. pImage: borrowed; null: the file is loaded.
    void SetBrushShape(const IImage* pImage, const char* pszPath);
    // Enables and checks the controls after the user and the host's mode.
    void UpdateControls();

    // As the controls show it; the caller may be the mode that is being switched on from here.
    const std::string& GetBitmapFile() const { return m_BitmapFile; }

    const float* GetCurrentColor() const { return m_CurrentColor.GetColor(); } // four components

    // What a person chooses here, for scripts; each goes the way of its control.
    void ChooseBitmapFile(const std::string& strPath);
    bool ChooseBrushShape(const std::string& strPath); // false, and a logged line, for no image
    bool ChooseFunction(const char* pszName); // false while its button is not for the bitmap
    void ChooseColor(const float* pColor);    // the current one, four components
    void ChooseChannelMask(uint32_t uChannels);
    void ChooseExtent(float fExtent); // half the side, as the slider sets it

protected:
    void OnInit() override;
    bool OnToolTipText(SToolTipText& tip) override;

private:
    static constexpr size_t COLOR_COUNT = 8;

    struct SMappingSizes
    {
        float fLength = 0.0F; // what the extent slider reaches, terrain units
        uint32_t uWidth = 0;  // of the bitmap, texels
    };

    enum class EColorSet
    {
        None,
        Free,
        Palette,
    };

    void BindControls();
    void Listen();
    void ListenToNumbers();
    void WriteFields(); // as WriteControls, without counting as an edit
    bool HasUser();     // else refreshes the controls, all that a handler can do then
    void UpdateChannels(uint32_t uMask, bool bPainting);
    void UpdateFunctions(bool bPainting);

    void OnChannelBox(EChannelBox eBox);
    void SwitchEditing();
    void OnStep(void (ITerrain2DDrawDlgUser::*pStep)());
    void OnSave();
    void OnTexelMapping();
    void OnBrowseBitmap();
    void OnBrowseMaterial();
    void OnMaterialTyped();
    void OnBrowseShape();

    // numbers
    void
    OnChangeShare(float& fValue, CSliderCtrl& slider, void (ITerrain2DDrawDlgUser::*pSet)(float));
    void OnDeltaShare(int iDelta,
                      float& fValue,
                      CSliderCtrl& slider,
                      void (ITerrain2DDrawDlgUser::*pSet)(float));
    void OnScrollSlider(const SNotification& notification);
    void ApplyBlending(int iPos);
    void ApplyExtent(int iPos);
    void OnChangeExtent();
    void OnCentimetres();
    SMappingSizes GetMappingSizes() const; // 0 without a user
    void ShowExtent();                     // in the edit
    void ShowExtentSlider();               // and its position

    // colours
    void ListenToColors();
    void MakeCurrent(const CColorButton& button);
    void ChooseColorOf(CColorButton& button);
    bool AskForColor(const CColorButton& button, uint8_t* pColor);
    void SetFreeColors();
    void SetPaletteColors(const class IPalette& palette);
    void TellColor();

    ITerrain2DDrawDlgUser* m_User = nullptr;
    float* m_Extent = nullptr;
    std::string m_BitmapFile;
    std::string m_Material;
    float m_Blending = 0.5F;
    float m_Power = 0.0F;
    float m_Hardness = 0.0F;
    int m_Centimetres = 1; // ECheckState, as the next
    int m_TexelMapping = 0;
    EColorSet m_ColorSet = EColorSet::None;
    bool m_bUpdating = false; // the extent's text changes by code
    bool m_bWriting = false;  // other fields do

    std::array<CColorButton, COLOR_COUNT> m_Colors;
    CColorButton m_CurrentColor;
    CTerrain2DDrawDlgBitmapButton m_Shape;
    CSliderCtrl m_BlendingSlider;
    CSliderCtrl m_ExtentSlider;
    CSliderCtrl m_PowerSlider;
    CSliderCtrl m_HardnessSlider;
};
