#pragma once

#include "framework/widgets/CFormView.h"
#include "panel/ITerrainPanel.h"

class CRuntimeClass;

// The docked tool panel, form 2101. Made by the host through its run-time class, and the plug-in's
// open panel while it lives. It shows the brush's parameters, the functions, the defined brushes
// and the terrain's settings; of these only the limits of the extent and the tips work so far.
class CTellurView : public CFormView, public ITerrainPanel
{
public:
    CTellurView();
    ~CTellurView() override;

    static const CRuntimeClass& GetRuntimeClass();

    // ITerrainPanel
    void StoreEditFields() override { ReadControls(); }

    float GetMinExtent() const override { return m_MinExtent; }

    float GetMaxExtent() const override { return m_MaxExtent; }

    void RefreshBrushControls() override {}

    void EnableBrushControls() override;

    void RefreshExtent() override {}

    void RefreshProperties() override {}

    void RefillResolutions() override {}

protected:
    void OnUpdate() override;
    bool OnToolTipText(SToolTipText& tip) override;

private:
    float m_MinExtent = 0.0F; // terrain units, as the two below
    float m_MaxExtent = 0.0F;
};
