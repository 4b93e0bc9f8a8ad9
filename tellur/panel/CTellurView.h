#pragma once

#include "framework/widgets/CFormView.h"
#include "tellur/panel/CBrushNumbers.h"
#include "tellur/panel/CDefinedBrushes.h"
#include "tellur/panel/CFunctionButtons.h"
#include "tellur/panel/CHeightMapControls.h"
#include "tellur/panel/CShapeAndMask.h"
#include "tellur/panel/CTerrainLook.h"
#include "tellur/panel/CToolProperties.h"
#include "tellur/panel/ITerrainPanel.h"

class CRuntimeClass;

// The docked tool panel, form 2101. The host makes it through its run-time class, and it is the
// plug-in's open panel while it lives. It owns the groups of its controls, each of which sends its
// edits at once to the current brush or the plug-in object, and tells them when to show what has
// changed; it keeps nothing but what its controls show.
class CTellurView : public CFormView, public ITerrainPanel
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

protected:
    void OnUpdate() override;
    bool OnToolTipText(SToolTipText& tip) override;

private:
    bool m_FirstUpdate = true; // never cleared, so every update takes the stored limits again

    CBrushNumbers m_Numbers;
    CShapeAndMask m_ShapeAndMask;
    CFunctionButtons m_Functions;
    CToolProperties m_Properties;
    CDefinedBrushes m_DefinedBrushes;
    CHeightMapControls m_HeightMap;
    CTerrainLook m_TerrainLook;
};
