#pragma once

#include "host/HostTypes.h"

class CTellurBrush;
class EditorHost;
class EngineHost;
class Terrain;
class World;
struct SDragStatistics;
struct SPointForm;
struct SPointOutcome;
struct SToolTipText;

// What all folders of the plug-in share: the host's pointers, the current brush, and what a drag
// counts. The plug-in object implements it. What one folder asks beyond that is an interface in
// that folder, which GetPluginPart reaches. Nobody keeps a copy of what it answers, because the
// host goes away before the library does and the level changes under it. UI thread only.
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

    virtual bool IsAutoUpdateNormals() const = 0;
    virtual bool UpdateTerrainNormals() = 0; // the terrain's answer; false without one

    virtual SDragStatistics& GetDragStatistics() = 0;
    virtual SPointOutcome& GetPointOutcome() = 0;       // of the latest point
    virtual const SPointForm& GetPointForm() const = 0; // of those that come

    // The text of a control from the plug-in's string table; false when the tool is no control.
    virtual bool GetToolTipText(SToolTipText& tip) const = 0;
};

// The one context of the process half that this library is. Never null while the plug-in runs.
PluginContext* GetPluginContext();
// Returns the one before.
PluginContext* SetPluginContext(PluginContext* pContext);

// What a folder of the plug-in asks of the plug-in object beyond that, by an interface of its own;
// null while there is no context. For what happens once an event, not for loops.
template <typename TInterface> TInterface* GetPluginPart()
{
    return dynamic_cast<TInterface*>(GetPluginContext());
}

// The context's world and the terrain of the level that is open; null without one, and without a
// context.
World* GetCurrentWorld();
Terrain* GetCurrentTerrain();
