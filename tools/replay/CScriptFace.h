#pragma once

#include "editor/core/CHeadlessFace.h"
#include "editor/script/CScriptCursor.h"
#include "framework/core/COffscreenWindows.h"
#include "framework/core/IFrontEnd.h"

class World;

// The person at the script player: the script says where the cursor is and which keys are held.
class CScriptFace : public CHeadlessFace, public IFrontEnd
{
public:
    // Sets where picking looks up heights: borrowed, and null picks nothing. Called once the host,
    // which is made with this face, has a world.
    void SetWorld(World* pWorld) { m_World = pWorld; }

    CScriptCursor& GetCursor() { return m_Cursor; }

    // IHostFace
    IFrontEnd* GetFrontEnd() override { return this; }

    bool PickTerrain(ViewId /*view*/, ViewPoint /*point*/, SVec3& hit) override
    {
        return m_Cursor.Pick(m_World, hit);
    }

    bool PrepareWindows() override { return m_Windows.Open(); }

    // IFrontEnd
    bool IsKeyDown(EKey eKey) const override { return m_Cursor.IsKeyDown(eKey); }

    SScreenPoint GetCursorPos() const override { return m_CursorPos; }

    void SetCursorPos(SScreenPoint point) override { m_CursorPos = point; }

    SScreenPoint GetScreenSize() const override { return {1920, 1080}; }

    void SetCursor(const SCursorResource*) override {}

    void SetCapture(uintptr_t) override {}

    void ReleaseCapture() override {}

    EMessageBoxAnswer MessageBox(const char* pszText, uint32_t uFlags) override; // logs, answers OK

    bool ChooseColor(uint32_t&) override { return false; }

    bool ChooseFolder(std::string&) override { return false; }

    uint32_t TrackPopupMenu(const CMenu&, SScreenPoint) override { return 0; }

private:
    COffscreenWindows m_Windows; // opened when a script needs windows
    World* m_World = nullptr;
    CScriptCursor m_Cursor;
    SScreenPoint m_CursorPos = {};
};
