#pragma once

#include "host/HostTypes.h"

#include <string>
#include <vector>

class CRTTIObject;
class World;

// The engine, third argument of InitializeMe, as long-lived as the EditorHost. A plug-in calls it
// from Initialize to NOTIFY_HOST_GOES on the UI thread (GetWorld in InitializeMe already), the draw
// operations from IEditorMode::Render only: what they draw lasts for one frame. Nothing here calls
// the plug-in. UI thread.

// Whether EngineHost::DrawLines joins the last point with the first.
enum EPolyline : int
{
    POLYLINE_OPEN = 0,
    POLYLINE_CLOSED = 1,
};

// Text macros that edit fields expand: "&name&" stands for the value registered under name.
class ITextMacroTable
{
public:
    virtual ~ITextMacroTable() = default;
    // Finds the value of a name without regard to its case; borrowed, null for an unknown one.
    virtual const char* Find(const char* pszName) const = 0;
};

class EngineHost
{
public:
    virtual ~EngineHost() = default;

    // Reads the file of a loaded texture again, after it was written. Non-zero when one of that
    // name was reloaded; 0 when none is loaded, for null, and after one logged line.
    virtual int ReloadTexture(const char* pszName) = 0;
    virtual ITextMacroTable* GetTextMacroTable() = 0;     // borrowed, never null
    virtual World* GetWorld() = 0;                        // borrowed, lives as long as the engine
    virtual CRTTIObject* FindObjectById(int32_t iId) = 0; // borrowed, null when unknown

    // Camera moves in terrain units; a view without a camera is ignored.
    virtual void StepCameraVertical(ViewId view, float fStep) = 0;   // positive is up
    virtual void StrafeCamera(ViewId view, const SVec3& offset) = 0; // in the camera's own axes
    virtual void DollyCamera(ViewId view, float fDistance) = 0;      // positive is forward

    // Debug lines, shown for one frame. Points are borrowed for the call; null draws nothing.
    virtual void DrawLine(const SVec3& from, const SVec3& to, const SColor& color) = 0;
    virtual void
    DrawLines(uint32_t uCount, const SVec3* pPoints, EPolyline eClosed, const SColor& color) = 0;

    virtual std::vector<CRTTIObject*> GetObjects() = 0; // all of them by identifier, borrowed
};
