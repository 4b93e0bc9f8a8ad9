#pragma once

#include "host/HostTypes.h"

class CBrushContainer;
class CFunctionContainer;
class CModeEditTerrainType;
class CTellurBrush;
class CTerrain2DDrawDlg;
class EditorHost;
class EngineHost;
class ITerrainPanel;
class Terrain;
class World;
struct SDragStatistics;
struct SPointOutcome;
struct SResourceModule;
struct SToolTipText;

// The panel's limits of the brush extent, terrain units; 0 before the panel was open.
struct SExtentLimits
{
    float fMin = 0.0F;
    float fMax = 0.0F;
};

// What the folders of the plug-in share: the host's pointers and the plug-in's own state. The
// plug-in object implements it. Nobody keeps a copy of what it answers, because the host goes away
// before the library does and the level changes under it. UI thread only.
class PluginContext
{
public:
    virtual ~PluginContext() = default;

    // Borrowed; null before InitializeMe and after the host said that it goes away.
    virtual EditorHost* GetEditorHost() const = 0;
    virtual EngineHost* GetEngineHost() const = 0;
    virtual World* GetWorld() const = 0;
    virtual uint32_t GetPluginActionHandle() const = 0;

    virtual CTellurBrush* GetCurrentBrush() const = 0;      // borrowed, null when none
    virtual void SetCurrentBrush(CTellurBrush* pBrush) = 0; // borrowed until replaced
    virtual CFunctionContainer* GetFunctionContainer() = 0; // borrowed, never null
    virtual CBrushContainer* GetBrushContainer() = 0;       // borrowed, never null
    // Asks for a name and adds a clone to the predefined brushes; false without a brush and when
    // cancelled.
    virtual bool AddBrushToPredefined(CTellurBrush* pBrush) = 0;
    // What picking a predefined brush in the panel's list does: tries to switch terraforming on,
    // lets a copy replace the tool brush of its function and makes that current.
    virtual void UsePredefinedBrush(const CTellurBrush& brush) = 0;

    virtual bool IsAutoUpdateNormals() const = 0;
    virtual void SetAutoUpdateNormals(bool bOn) = 0;
    virtual bool UpdateTerrainNormals() = 0;   // the terrain's answer; false without one
    virtual void CheckHeightMapWritable() = 0; // warns when the height-map file is read-only
    // Asks for a file when the path is null or empty. False when cancelled, without a terrain and
    // when the terrain cannot write.
    virtual bool SaveHeightMap(const char* pszPath) = 0;
    // Resamples the heights to that many vertices per side (33, 65, ... from such a size), keeps
    // the level's height-map file as ".bak" unless there is one, writes a new one and has it
    // loaded. Nothing happens without a level, a file name or a change; a failed write is logged.
    virtual void ChangeHeightMapResolution(int32_t iVertices) = 0;
    virtual int GetTerraformingModeId() const = 0;
    virtual void EnableTerraforming(bool bEnable) = 0; // one logged line when it is so already
    // Asks the host to make a mode current, or to leave the current one for -1; one logged line
    // when it refuses.
    virtual bool SetMode(int32_t iModeId, int32_t iParameter) = 0;
    virtual int GetEditTerrainTypeModeId() const = 0;                 // -1 before it is registered
    virtual CModeEditTerrainType* GetEditTerrainTypeMode() const = 0; // the host's; null without
    virtual CTerrain2DDrawDlg* Get2DDrawDlg() const = 0; // borrowed, null before its first command
    virtual int32_t Get2DDrawUndoDepth() const = 0;      // the setting as it stands, strokes
    virtual void SetToolBarButton(uint32_t uCommand, bool bPressed) = 0;

    // The open panel sets itself on creation and null on destruction.
    virtual void SetPanel(ITerrainPanel* pPanel) = 0;
    // As they were when the panel was closed last.
    virtual SExtentLimits GetExtentLimits() const = 0;
    virtual void SetExtentLimits(const SExtentLimits& limits) = 0;
    virtual const SResourceModule* GetResourceModule() const = 0; // this library's
    // The text of a control from the plug-in's string table; false when the tool is no control.
    virtual bool GetToolTipText(SToolTipText& tip) const = 0;
    // Nothing while the panel is closed.
    virtual void RefreshPanelProperties() = 0; // the function's fields changed by themselves
    virtual void RefreshPanelExtent() = 0;     // the brush's extent changed by a key

    virtual SDragStatistics& GetDragStatistics() = 0;
    virtual SPointOutcome& GetPointOutcome() = 0; // of the latest point
};

// The one context of the process half that this library is. Never null while the plug-in runs.
PluginContext* GetPluginContext();
// Returns the one before.
PluginContext* SetPluginContext(PluginContext* pContext);

// The context's world and the terrain of the level that is open; null without one, and without a
// context.
World* GetCurrentWorld();
Terrain* GetCurrentTerrain();
