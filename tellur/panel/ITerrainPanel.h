#pragma once

// The open tool panel as the plug-in object sees it. Owned by the host, which creates and destroys
// the panel's window; it announces itself through IPanelPlugin::SetPanel.
class ITerrainPanel
{
public:
    virtual ~ITerrainPanel() = default;
    // Reads all fields and hands the limits of the extent to the plug-in object, which asks for it
    // before it closes the panel.
    virtual void StoreExtentLimits() = 0;
    virtual void RefreshBrushControls() = 0; // shows the current brush and its function anew
    virtual void EnableBrushControls() = 0;  // they can be used while there is a current brush
    virtual void RefreshToolProperties() = 0;
    virtual void RefreshExtent() = 0; // shows the extent anew and nothing else
    virtual void FillBrushList() = 0;
    virtual void FillResolutionList() = 0;
};
