#pragma once

#include "framework/core/Cursor.h"
#include "modes/CModeBase.h"

// Takes the input of the views for painting the terrain-type bitmap. This build has no paint layer
// and no 2D draw dialog yet, so the mode can be entered and left and shows its cursor and caption,
// and its mouse input does nothing.
class CModeEditTerrainType : public CModeBase
{
public:
    CModeEditTerrainType();

    // The same text as the terraforming mode's; hosts have always seen it so.
    const char* GetName() const override { return "ModeTerraforming"; }

    bool IsAvailable() override { return true; }

    bool CanDeactivate() override { return true; }

    bool SetCursor() override;
    void Activate() override;

    void Deactivate() override {}

    void Suspend(bool bSuspended) override;

    void OnLButtonDown(ViewId, ViewPoint, uint32_t) override {}

    void OnMouseMove(ViewId, uint32_t, ViewPoint, uintptr_t, uintptr_t) override {}

    void OnLButtonUp(ViewId, ViewPoint, uint32_t) override {}

    void Render() override {}

private:
    CursorHandle m_Cursor;
};
