#pragma once

#include "framework/core/Cursor.h"
#include "tellur/modes/CModeBase.h"

#include <string>

// Drags out a rectangle on the terrain; a release over a large enough one asks for a file and has
// the terrain write that extent as STL.
class CModeExportTerrainExtent : public CModeBase
{
public:
    CModeExportTerrainExtent();

    const char* GetName() const override { return "ModeExportTerrainExtent"; }

    bool IsAvailable() override;

    bool CanDeactivate() override { return true; }

    bool SetCursor() override;
    void Activate() override;
    void Deactivate() override;
    void Suspend(bool bSuspended) override;
    void OnLButtonDown(ViewId view, ViewPoint point, uint32_t uFlags) override;
    void OnMouseMove(ViewId view,
                     uint32_t uFlags,
                     ViewPoint point,
                     uintptr_t uExtra1,
                     uintptr_t uExtra2) override;
    void OnLButtonUp(ViewId view, ViewPoint point, uint32_t uFlags) override;
    void Render() override;

private:
    bool Pick(ViewId view, ViewPoint point, SVec3& hit) const;
    void RecomputeBox();

    bool m_Dragging = false;
    bool m_Suspended = false;
    CursorHandle m_Cursor;
    SVec3 m_Start;
    SVec3 m_Current;
    SExtents m_Box; // flat, at the lower of the two heights
};

// The save dialog of both STL exports; empty when cancelled or without a host.
std::string AskForStlFile();
