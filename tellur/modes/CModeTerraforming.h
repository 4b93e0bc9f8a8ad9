#pragma once

#include "framework/core/Cursor.h"
#include "tellur/modes/CModeBase.h"

class Terrain;

// Drags the current brush over the terrain: a press starts a modification, moves feed it, the
// release ends it. Between drags the brush footprint under the cursor is previewed. Available while
// there is a current brush; leaving the mode drops the brush.
class CModeTerraforming : public CModeBase
{
public:
    CModeTerraforming();

    const char* GetName() const override { return "ModeTerraforming"; }

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
    // 1 and 2 make the brush larger and smaller; the rest is camera navigation.
    void OnAction(ViewId view, int iAction, uint32_t uCount) override;
    void Render() override;

    const SExtents& GetFootprint() const { return m_Footprint; } // what the preview covers

private:
    void Hover(ViewId view, ViewPoint point);

    CursorHandle m_Arrow;
    SExtents m_Footprint; // terrain units, y is 0
};
