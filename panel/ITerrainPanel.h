#pragma once

// The open tool panel as the plug-in object sees it. Owned by the host, which creates and destroys
// the panel's window; it announces itself through PluginContext::SetPanel.
class ITerrainPanel
{
public:
    virtual ~ITerrainPanel() = default;
    virtual void StoreEditFields() = 0; // takes over what is being typed
    virtual float GetMinExtent() const = 0;
    virtual float GetMaxExtent() const = 0;
    virtual void RefreshBrushControls() = 0; // parameters, tool properties, function buttons
    virtual void EnableBrushControls() = 0;  // by whether there is a current brush
    virtual void RefreshExtent() = 0;
    virtual void RefreshProperties() = 0;
    virtual void RefillResolutions() = 0;
};
