#pragma once

#include "tellur/panel/IPanelPlugin.h"
#include "tellur/panel/ITerrainPanel.h"

// The plug-in object's end of the tool panel: the panel while it is open, and the limits of the
// extent that it leaves behind when it is closed. Every refresh does nothing while it is closed.
class CPanelLink
{
public:
    // The panel that is open, which is the host's; null once it is closed.
    void SetPanel(ITerrainPanel* pPanel) { m_pPanel = pPanel; }

    bool IsOpen() const { return m_pPanel != nullptr; }

    const SExtentLimits& GetExtentLimits() const { return m_ExtentLimits; }

    void SetExtentLimits(const SExtentLimits& limits) { m_ExtentLimits = limits; }

    // Reads all fields of the panel, before it is closed.
    void StoreExtentLimits() { Tell(&ITerrainPanel::StoreExtentLimits); }

    void ShowOtherBrush() // or that there is none
    {
        Tell(&ITerrainPanel::RefreshBrushControls);
        Tell(&ITerrainPanel::EnableBrushControls);
    }

    void ShowBrushValues() { Tell(&ITerrainPanel::RefreshBrushControls); }

    void ShowExtent() { Tell(&ITerrainPanel::RefreshExtent); }

    void ShowFunctionFields() { Tell(&ITerrainPanel::RefreshToolProperties); }

    void FillBrushList() { Tell(&ITerrainPanel::FillBrushList); }

    void FillResolutionList() { Tell(&ITerrainPanel::FillResolutionList); }

private:
    void Tell(void (ITerrainPanel::*pOperation)())
    {
        if (m_pPanel != nullptr)
        {
            (m_pPanel->*pOperation)();
        }
    }

    ITerrainPanel* m_pPanel = nullptr;
    SExtentLimits m_ExtentLimits;
};
