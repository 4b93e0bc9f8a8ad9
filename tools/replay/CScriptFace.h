#pragma once

#include "editor/core/CHeadlessFace.h"
#include "framework/core/IFrontEnd.h"

class World;

// The person at the script player: the script says where the cursor is and which keys are held.
class CScriptFace : public CHeadlessFace, public IFrontEnd
{
public:
    // Where picking looks up heights; borrowed, null picks nothing. Set once the host has it.
    void SetWorld(World* pWorld) { m_World = pWorld; }

    // What the cursor is over from here on: a horizontal position whose height is the terrain's at
    // the time of the pick (outside the terrain: nothing), an exact hit, or nothing.
    void PointAtPosition(float fX, float fZ);
    void PointAtHit(const SVec3& hit);
    void PointAtNothing();

    void SetKeys(bool bControl, bool bAlt);

    // IHostFace
    IFrontEnd* GetFrontEnd() override { return this; }

    bool PickTerrain(ViewId view, ViewPoint point, SVec3& hit) override;

    // IFrontEnd
    bool IsKeyDown(EKey eKey) const override;

    SScreenPoint GetCursorPos() const override { return m_CursorPos; }

    void SetCursorPos(SScreenPoint point) override { m_CursorPos = point; }

    SScreenPoint GetScreenSize() const override { return {1920, 1080}; }

    void SetCursor(const SCursorResource*) override {}

    void SetCapture(uintptr_t) override {}

    void ReleaseCapture() override {}

    EMessageBoxAnswer MessageBox(const char* pszText, uint32_t uFlags) override; // logs, answers OK

    bool ChooseColor(uint32_t&) override { return false; }

    uint32_t TrackPopupMenu(const CMenu&, SScreenPoint) override { return 0; }

private:
    enum class ETarget
    {
        Nothing,
        Position,
        Hit,
    };

    World* m_World = nullptr;
    ETarget m_Target = ETarget::Nothing;
    SVec3 m_Point; // a position has no y
    bool m_bControl = false;
    bool m_bAlt = false;
    SScreenPoint m_CursorPos = {};
};
