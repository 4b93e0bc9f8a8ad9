#pragma once

#include "framework/core/ResourceModule.h"
#include "tellur/brushes/CTellurBitmap.h"
#include "tellur/brushes/CTellurBrush.h"
#include "tellur/modes/CModeTerraforming.h"
#include "tellur/modes/TerraformingState.h"
#include "tellur/modification/CTerrainModification.h"
#include "tellur/resources/PluginResources.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CRecordingFunction.h"
#include "tests/support/FakeFrontEnd.h"
#include "tests/support/FakeHost.h"
#include "tests/support/TestPaths.h"

#include <gtest/gtest.h>

// A function that may draw its own preview and refuse a cursor, and whose moves give the session an
// extent that no hover has.
class CPreviewFunction : public CRecordingFunction
{
public:
    explicit CPreviewFunction(FakeCalls* pCallList)
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

    FakeCalls* pCalls;
    bool bDraws = false;
    bool bSetsCursor = true;
};

// Puts mouse capture and cursor moves into the same list as the host's calls.
class CRecordingFrontEnd : public CFakeFrontEnd
{
public:
    explicit CRecordingFrontEnd(FakeCalls* pCallList)
        : pCalls(pCallList)
    {
        cursorPos = {12, 34};
    }

    void SetCursorPos(SScreenPoint point) override
    {
        AddCall(pCalls, "FrontEnd.SetCursorPos(%d %d)", point.x, point.y);
    }

    void SetCapture(uintptr_t uWindow) override
    {
        AddCall(pCalls, "FrontEnd.SetCapture(%zu)", uWindow);
    }

    void ReleaseCapture() override { AddCall(pCalls, "FrontEnd.ReleaseCapture()"); }

    FakeCalls* pCalls;
};

// A terrain of 2560 x 1000 x 2560 units, given with a negative depth, a vertex every 320 units, and
// a brush with a recording function that a test makes current itself.
class CModesFixture : public testing::Test
{
protected:
    CModesFixture()
    {
        auto pFunction = std::make_unique<CPreviewFunction>(&m_Context.calls);
        m_Function = pFunction.get();
        m_Brush.SetFunction(pFunction.release());
        m_Context.host.activeView = 5;
    }

    ~CModesFixture() override
    {
        STerraformingState& state = GetTerraformingState();
        state.pSession.reset();
        state.pPreview = nullptr;
        state.picked = {-1.0F, -1.0F, -1.0F};
        state.strEditMaterial.clear();
    }

    void SetCurrentBrush(CTellurBrush* pBrush) { m_Context.pBrush = pBrush; }

    void LoadBrushImage()
    {
        m_Brush.LoadBitmap(TELLUR_SOURCE_DIR "/tests/scripts/images/white.png");
    }

    FakeCalls TakeCalls() { return m_Context.TakeCalls(); }

    CFakeContext m_Context{8, 8, {2560.0F, 1000.0F, -2560.0F}};
    CRecordingFrontEnd m_FrontEnd{&m_Context.calls};
    CLogCatcher m_Log;
    CTellurBrush m_Brush;
    CPreviewFunction* m_Function; // the brush's
    CResourceScope m_Scope{&GetPluginResources()};
    CModeTerraforming m_Mode;
};

using Lines = std::vector<std::string>;
