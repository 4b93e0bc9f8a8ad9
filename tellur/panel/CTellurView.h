#pragma once

#include "framework/widgets/CComboBox.h"
#include "framework/widgets/CFormView.h"
#include "framework/widgets/CListBox.h"
#include "framework/widgets/CSliderCtrl.h"
#include "framework/widgets/CSpinButtonCtrl.h"
#include "tellur/panel/CImageToggleButton.h"
#include "tellur/panel/CTellurBitmapButton.h"
#include "tellur/panel/ITerrainPanel.h"
#include "tellur/proplist/CPropListCtrl.h"

#include <array>
#include <optional>

class CRuntimeClass;
class CTellurBrush;
class Terrain;

// The docked tool panel, form 2101. Made by the host through its run-time class, and the plug-in's
// open panel while it lives. Every edit goes at once to the current brush or the plug-in object; it
// keeps nothing but what its controls show. Lengths are terrain units.
class CTellurView : public CFormView, public ITerrainPanel, public IPropListCtrlUser
{
public:
    CTellurView();
    ~CTellurView() override;

    static const CRuntimeClass& GetRuntimeClass();

    // ITerrainPanel
    void StoreExtentLimits() override;
    void RefreshBrushControls() override;
    void EnableBrushControls() override;
    void RefreshToolProperties() override;
    void RefreshExtent() override;
    void FillBrushList() override;
    void FillResolutionList() override;

    // IPropListCtrlUser
    void
    SetFieldValue(CRTTIField* pField, const char* pszText, const PropObjects& objects) override;
    void AddContextMenuItems(CMenu& menu, CRTTIField* pField, int iElement) override;
    const char* GetNoChangeText(const CRTTIObject* pObject) override;
    bool HandleFieldEdit(const PropObjects& objects,
                         CRTTIField* pField,
                         const char* pszValue,
                         int iElement) override;
    bool PickObjects(const CRTTI* pClass, PropObjects& picked) override;
    EngineHost* GetEngineHost() override;
    EditorHost* GetEditorHost() override;
    std::string GetObjectName(const CRTTIObject* pObject, int32_t iId) override;
    void Notify(uint32_t uCommand) override;
    bool QueryFlag() override;

protected:
    void OnUpdate() override;
    bool OnToolTipText(SToolTipText& tip) override;

private:
    static constexpr size_t FUNCTION_COUNT = 6;

    void BindControls();
    void Listen();
    void ListenToBrush();
    void ListenToLevel();

    // showing
    void TakeExtentLimits();
    void DressFunctionButtons();
    void SetupGrid();
    void SetupSpins();
    void WriteFields(); // as WriteControls, without counting as an edit
    void RefreshSliders();
    void RefreshFunctionButtons();
    void ShowPosition(CSliderCtrl& slider, int iMost, int iPos);

    // scales: positions of sliders and values
    float ExtentOf(int iPos) const;
    int PositionOf(float fExtent) const;
    float DistanceOf(int iPos) const;
    int DistancePosition(float fDistance) const;

    // edits of the brush
    // Reads the fields, clamps one of them to 0 and fMost and sets it on the brush. False, with the
    // line logged, without one.
    bool ApplyEdit(const char* pszNoBrush,
                   float& fValue,
                   float fMost,
                   void (CTellurBrush::*pSet)(float));
    void OnChangeEditPower();
    void OnChangeEditFade();
    void OnChangeEditHardness();
    void OnChangeEditDistance();
    void OnChangeEditExtent();
    void OnChangeLimits();
    void OnHScroll(const SNotification& notification);
    void ShowBrush(); // the views draw the changed brush
    void ApplySlider(CTellurBrush& brush, const CSliderCtrl& slider, int iPos);
    void OnDeltaPower(int iDelta);
    void OnDeltaFade(int iDelta);
    void OnDeltaHardness(int iDelta);
    void OnDeltaDistance(int iDelta);
    void OnFunctionButton(size_t iFunction);
    void OnBrowseMask();
    void OnMaskEnabled();

    // brushes, level
    void AddBrushToList(CTellurBrush* pBrush);
    void OnSelectBrush();
    void OnAddBrush();
    void OnSaveBrushes();
    void OnSelectResolution();
    void OnBrowseMaterial();
    void OnAutoNormals();

    float m_Power = 0.0F;
    float m_Fade = 0.0F;
    float m_Extent = 0.0F;
    float m_Hardness = 0.0F;
    float m_VerticalDistance = 0.0F;
    float m_MinExtent = 0.0F;
    float m_MaxExtent = 0.0F;
    int m_AutoNormals = 0; // ECheckState, as the next
    int m_MaskEnabled = 0;
    bool m_FirstUpdate = true; // never cleared, so every update takes the stored limits again
    bool m_bWriting = false;   // fields change by code
    std::optional<float> m_KeptExtent; // what the slider shows while the limits are being typed
    std::string m_Material;
    std::string m_MaskPath;

    CTellurBitmapButton m_Shape;
    CSliderCtrl m_ExtentSlider;
    CSliderCtrl m_PowerSlider;
    CSliderCtrl m_FadeSlider;
    CSliderCtrl m_HardnessSlider;
    CSliderCtrl m_DistanceSlider;
    CSpinButtonCtrl m_PowerSpin;
    CSpinButtonCtrl m_FadeSpin;
    CSpinButtonCtrl m_DistanceSpin;
    std::array<CImageToggleButton, FUNCTION_COUNT> m_Functions;
    CPropListCtrl m_Grid;
    CListBox m_BrushList;
    CComboBox m_Resolutions;
};
