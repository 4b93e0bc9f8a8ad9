#pragma once

#include <cstdint>

class CBrushContainer;
class CTellurBrush;
class ITerrainPanel;

// The panel's limits of the brush extent, terrain units; 0 before the panel was open.
struct SExtentLimits
{
    float fMin = 0.0F;
    float fMax = 0.0F;
};

// What the panel asks of the plug-in object, which implements it. GetPluginPart reaches it.
class IPanelPlugin
{
public:
    virtual ~IPanelPlugin() = default;

    // The open panel sets itself on creation and null on destruction.
    virtual void SetPanel(ITerrainPanel* pPanel) = 0;
    // The limits of the extent as they were when the panel was closed last.
    virtual SExtentLimits GetExtentLimits() const = 0;
    virtual void SetExtentLimits(const SExtentLimits& limits) = 0;

    virtual CBrushContainer* GetBrushContainer() = 0; // borrowed, never null
    // Asks for a name and adds a clone to the predefined brushes; false without a brush and when
    // cancelled.
    virtual bool AddBrushToPredefined(CTellurBrush* pBrush) = 0;
    // What picking a predefined brush in the panel's list does: tries to switch terraforming on,
    // lets a copy replace the tool brush of its function and makes that current.
    virtual void UsePredefinedBrush(const CTellurBrush& brush) = 0;
    virtual void EnableTerraforming(bool bEnable) = 0; // one logged line when it is so already

    virtual void SetAutoUpdateNormals(bool bOn) = 0;
    // Asks for a file when the path is null or empty. False when cancelled, without a terrain and
    // when the terrain cannot write.
    virtual bool SaveHeightMap(const char* pszPath) = 0;
    // Resamples the heights to that many vertices per side (33, 65, ... from such a size), keeps
    // the level's height-map file as ".bak" unless there is one, writes a new one and has it
    // loaded. Nothing happens without a level, a file name or a change; a failed write is logged.
    virtual void ChangeHeightMapResolution(int32_t iVertices) = 0;
};
