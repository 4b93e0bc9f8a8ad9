#pragma once

#include <cstdint>

class CModeEditTerrainType;
class CTerrain2DDrawDlg;

// What painting asks of the plug-in object, which implements it. GetPluginPart reaches it.
class IPaintingPlugin
{
public:
    virtual ~IPaintingPlugin() = default;

    virtual int32_t GetEditTerrainTypeModeId() const = 0;             // -1 before it is registered
    virtual CModeEditTerrainType* GetEditTerrainTypeMode() const = 0; // the host's; null without
    virtual CTerrain2DDrawDlg* Get2DDrawDlg() const = 0; // borrowed, null before its first command
    virtual int32_t Get2DDrawUndoDepth() const = 0;      // the setting as it stands, strokes
    // Asks the host to make a mode current, or to leave the current one for -1; one logged line
    // when it refuses.
    virtual bool SetMode(int32_t iModeId, int32_t iParameter) = 0;
};
