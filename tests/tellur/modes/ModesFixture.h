#pragma once

#include "tellur/brushes/CTellurBitmap.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/modes/CModeTerraforming.h"
#include "tellur/modes/CTerraformingState.h"
#include "tellur/modification/CTerrainModification.h"
#include "tests/support/CRecordingFunction.h"
#include "tests/tellur/plugin/PluginFixture.h"

// A function that may draw its own preview and refuse a cursor, and whose moves give the session an
// extent that no hover has.
class CPreviewFunction : public CRecordingFunction
{
public:
    explicit CPreviewFunction(Calls* pCallList)
        : CRecordingFunction("Preview", pCallList)
        , pCalls(pCallList)
    {
    }

    int OnMouseMove(ITerrainModification* pModification,
                    ITellurBrush* pBrush,
                    ViewId view,
                    uint32_t uFlags,
                    ViewPoint point,
                    uintptr_t uExtra1,
                    uintptr_t uExtra2) override
    {
        pModification->SetExtents({{1.0F, 2.0F, 3.0F}, {4.0F, 5.0F, 6.0F}});
        return CRecordingFunction::OnMouseMove(
            pModification, pBrush, view, uFlags, point, uExtra1, uExtra2);
    }

    bool Render(ITerrainModification* pModification, ITellurBrush*, const SVec3* pPoint) override
    {
        const char* pszSession = pModification != nullptr ? "session" : "none";
        AddCall(pCalls, "Render(%s, %g %g %g)", pszSession, pPoint->x, pPoint->y, pPoint->z);
        return bDraws;
    }

    bool SetCursor() override { return bSetsCursor; }

    Calls* pCalls;
    bool bDraws = false;
    bool bSetsCursor = true;
};

// Puts mouse capture and cursor moves into the same list as the host's calls.
class CRecordingFrontEnd : public CFakeFrontEnd
{
public:
    explicit CRecordingFrontEnd(Calls* pCallList)
    {
        pCalls = pCallList;
        cursorPos = {12, 34};
    }

    void SetCursorPos(SScreenPoint point) override
    {
        AddCall(pCalls, "FrontEnd.SetCursorPos(%d %d)", point.x, point.y);
    }
};

// The plug-in's modes in a host with a terrain of 2560 x 1000 x 2560 units, given with a negative
// depth, a vertex every 320 units, and a brush with a recording function that a test makes current.
class CModesFixture : public CPluginFixture
{
protected:
    CModesFixture()
    {
        m_Host.NewLevel(8, {2560.0F, 1000.0F, -2560.0F});
        Initialize();
        auto pFunction = std::make_unique<CPreviewFunction>(&m_Face.calls);
        m_Function = pFunction.get();
        m_Brush.SetFunction(pFunction.release());
    }

    ~CModesFixture() override
    {
        m_Host.DestroyPluginObjects();
        GetTerraformingState().DropSession();
        m_Plugin->SetCurrentBrush(nullptr); // it goes before the plug-in does
    }

    // Forgets the calls.
    void SetCurrentBrush(CTellurBrush* pBrush)
    {
        m_Plugin->SetCurrentBrush(pBrush);
        TakeCalls();
    }

    void LoadBrushImage()
    {
        m_Brush.LoadBitmap(TELLUR_SOURCE_DIR "/tests/scripts/images/white.png");
    }

    CRecordingFrontEnd m_Watched{&m_Face.calls};
    CTellurBrush m_Brush;
    CPreviewFunction* m_Function; // the brush's
    CResourceScope m_Scope{&GetPluginResources()};
    CModeTerraforming m_Mode;
};
