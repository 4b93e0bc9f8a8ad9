#pragma once

#include <cstdint>

class CTerraformingState;

// What the modes ask of the plug-in object, which implements it. GetPluginPart reaches it.
class IModesPlugin
{
public:
    virtual ~IModesPlugin() = default;

    virtual CTerraformingState& GetTerraforming() = 0;
    virtual int32_t GetTerraformingModeId() const = 0; // -1 before the mode is registered
    // Warns with a message box when the level's height-map file is read-only.
    virtual void CheckHeightMapWritable() = 0;
    // Of a local command; nothing for one that has no button.
    virtual void SetToolBarButton(uint32_t uCommand, bool bPressed) = 0;
    // After a key changed the extent of the current brush. Nothing while the panel is closed.
    virtual void RefreshPanelExtent() = 0;
};
