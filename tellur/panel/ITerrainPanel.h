#pragma once

// The open tool panel as the plug-in object sees it. Owned by the host, which creates and destroys
// the panel's window; it announces itself through IPanelPlugin::SetPanel.
class ITerrainPanel
{
public:
    virtual ~ITerrainPanel() = default;
    // Reads all fields and hands the limits of the extent to the plug-in object; before the panel
    // is closed.
    virtual void StoreExtentLimits() = 0;
    virtual void RefreshBrushControls() = 0; // parameters, tool properties, function buttons
    virtual void EnableBrushControls() = 0;  // by whether there is a current brush
    virtual void RefreshToolProperties() = 0;
    virtual void RefreshExtent() = 0; // field and slider of the extent alone
    virtual void FillBrushList() = 0;
    virtual void FillResolutionList() = 0;
};
