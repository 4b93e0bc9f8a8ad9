#include "tests/tellur/modes/ModesFixture.h"

namespace
{

constexpr ViewId VIEW = 3;
constexpr ViewPoint POINT = 44;
constexpr uint32_t FLAGS = 9;

class CModeTerraformingTest : public CModesFixture
{
protected:
    bool HasSession() const { return GetTerraformingState().pSession != nullptr; }

    Lines Press()
    {
        m_Mode.OnLButtonDown(VIEW, POINT, FLAGS);
        return TakeCalls();
    }

    Lines Move()
    {
        m_Mode.OnMouseMove(VIEW, FLAGS, POINT, 100, 200);
        return TakeCalls();
    }

    Lines Release()
    {
        m_Mode.OnLButtonUp(VIEW, POINT, FLAGS);
        return TakeCalls();
    }
};

void ExpectPicked(float fX, float fY, float fZ)
{
    const SVec3& picked = GetTerraformingState().picked;
    EXPECT_TRUE(picked.x == fX && picked.y == fY && picked.z == fZ);
}

} // namespace

TEST_F(CModeTerraformingTest, TheBrushDecidesTheCursor)
{
    EXPECT_FALSE(m_Mode.SetCursor());
    EXPECT_EQ(m_Log.TakeLines(),
              (Lines{"[CModeTerraforming::SetCursor] no handle to arrow cursor available"}));

    SetCurrentBrush(&m_Brush);
    EXPECT_TRUE(m_Mode.SetCursor());
    m_Function->bSetsCursor = false;
    EXPECT_FALSE(m_Mode.SetCursor());
    EXPECT_EQ(m_Log.TakeLines(), Lines{});

    m_Brush.SetFunction(nullptr);
    EXPECT_FALSE(m_Mode.SetCursor());
    EXPECT_EQ(m_Log.TakeLines(), (Lines{"[CTellurBrush::SetCursor] no function interface"}));
}

TEST_F(CModeTerraformingTest, EnteringWarnsTakesTheInputAndShowsTheMask)
{
    m_Context.textures.Put("mask.png", 2, 2, {0, 255, 0, 255});
    m_Brush.SetMask("mask.png"); // handle 101; its size for (2560, 1) is 25601
    SetCurrentBrush(&m_Brush);
    GetTerraformingState().strEditMaterial = "grass";
    TakeCalls();

    const Lines takeInput = {
        "Host.SetModeCaption(Terraforming)", "FrontEnd.SetCursorPos(12 34)", "Host.RefreshView(5)"};
    Lines enter = {"Context.CheckHeightMapWritable()"};
    enter.insert(enter.end(), takeInput.begin(), takeInput.end());
    enter.insert(enter.end(),
                 {"Terrain.SetEditMaterial(grass)",
                  "Terrain.SetEditOverlay(101)",
                  "World.MakeOverlayTransform(25601)",
                  "Terrain.SetEditOverlayTransform()"});
    m_Mode.Activate();
    EXPECT_EQ(TakeCalls(), enter);
    for (int i = 0; i < 16; ++i)
    {
        const float fIdentity = i % 5 == 0 ? 1.0F : 0.0F;
        EXPECT_EQ(m_Context.terrain.overlayTransform.m[i], i == 2 ? 1.0F / 25601.0F : fIdentity)
            << i;
    }

    m_Mode.Suspend(true);
    EXPECT_EQ(TakeCalls(), Lines{});
    m_Mode.Suspend(false);
    EXPECT_EQ(TakeCalls(), takeInput) << "no warning, and the overlay stays as it is";
}

TEST_F(CModeTerraformingTest, TheOverlayFollowsBrushMaskAndTerrainAndLeavingDropsTheBrush)
{
    EXPECT_FALSE(m_Mode.IsAvailable());
    SetCurrentBrush(&m_Brush);
    EXPECT_TRUE(m_Mode.IsAvailable());
    ApplyEditOverlay(EEditOverlay::On);
    EXPECT_EQ(TakeCalls(), (Lines{"Terrain.SetEditMaterial()", "Terrain.SetEditOverlay(0)"}))
        << "no mask: no transform";
    m_Mode.Deactivate();
    EXPECT_EQ(TakeCalls(),
              (Lines{"Terrain.SetEditMaterial(null)",
                     "Terrain.SetEditOverlay(0)",
                     "Context.SetCurrentBrush(null)"}));
    EXPECT_FALSE(m_Mode.IsAvailable());
    m_Context.world.pTerrain = nullptr;
    ApplyEditOverlay(EEditOverlay::On);
    m_Mode.Deactivate();
    EXPECT_EQ(TakeCalls(), (Lines{"Context.SetCurrentBrush(null)"}));
}

TEST_F(CModeTerraformingTest, TheEditMaterialShowsAtOnceOnlyWhileTerraforming)
{
    m_Context.iTerraformingModeId = 0;
    m_Context.modes.RegisterMode(new CModeTerraforming, 7);
    SetEditMaterialName("rock");
    EXPECT_EQ(GetTerraformingState().strEditMaterial, "rock");
    m_Context.modes.iCurrent = 0;
    TakeCalls();
    SetEditMaterialName("sand");
    EXPECT_EQ(TakeCalls(), (Lines{"Terrain.SetEditMaterial(sand)"}));
    SetEditMaterialName(nullptr);
    EXPECT_EQ(TakeCalls(), (Lines{"Terrain.SetEditMaterial()"}));
}

TEST_F(CModeTerraformingTest, OneDragCapturesFeedsTheSessionAndReleases)
{
    SetCurrentBrush(&m_Brush);
    GetTerraformingState().picked = {70.0F, 8.0F, 90.0F};
    EXPECT_EQ(Press(), (Lines{"FrontEnd.SetCapture(77)", "Start(3, 9, 44)"}));
    EXPECT_EQ(Move(), (Lines{"Move(3, 9, 44, 100, 200)"}));
    ExpectPicked(70.0F, 8.0F, 90.0F); // of the last hover
    EXPECT_EQ(Release(),
              (Lines{"End(3, 9, 44)", "FrontEnd.ReleaseCapture()", "Host.OnTerrainChanged()"}));
    EXPECT_FALSE(HasSession());
    EXPECT_EQ(Release(), Lines{}) << "a release without a press";
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CModeTerraformingTest, NormalsFollowEveryMoveAndTheReleaseWhenAsked)
{
    SetCurrentBrush(&m_Brush);
    m_Context.bAutoUpdateNormals = true;
    Press();
    EXPECT_EQ(Move(),
              (Lines{"Move(3, 9, 44, 100, 200)",
                     "Context.UpdateTerrainNormals()",
                     "Terrain.UpdateNormals()"}));
    EXPECT_EQ(Release(),
              (Lines{"End(3, 9, 44)",
                     "Context.UpdateTerrainNormals()",
                     "Terrain.UpdateNormals()",
                     "FrontEnd.ReleaseCapture()",
                     "Host.OnTerrainChanged()"}));
    m_Context.host.lastPick = {1, {1, 1, 1}};
    EXPECT_EQ(Move(), (Lines{"Host.PickTerrain(3, 44, 0)"})) << "hovering updates nothing";
}

TEST_F(CModeTerraformingTest, ARefusedPressKeepsTheCaptureAndIsNoDrag)
{
    m_Context.host.bHasWindow = false;
    EXPECT_EQ(Press(), (Lines{"FrontEnd.SetCapture(0)"})) << "a view without a window";
    EXPECT_EQ(m_Log.TakeLines(), (Lines{"[CTerrainModification::Start] brush set to NULL"}));
    EXPECT_TRUE(HasSession());
    EXPECT_EQ(Release(), Lines{}) << "the capture stays until the host releases it";

    SetCurrentBrush(&m_Brush);
    m_Context.world.pTerrain = nullptr;
    EXPECT_EQ(Press(), (Lines{"FrontEnd.SetCapture(0)", "Start(3, 9, 44)"}));
    EXPECT_EQ(m_Log.TakeLines(),
              (Lines{"[CTerrainModification::Start] terrain set to NULL",
                     "[CTerrainModification::InitializeBuffers] terrain set to NULL",
                     "[CTerrainModification::Start] failed to initialize buffers"}));
}

TEST_F(CModeTerraformingTest, HoveringPicksAndTakesTheWholeFootprint)
{
    SetCurrentBrush(&m_Brush);
    m_Brush.SetExtent(100.0F);
    for (const int iResult : {0, 2, -1})
    {
        SCOPED_TRACE(iResult);
        m_Context.host.Hit(10.0F, 7.0F, 2550.0F);
        EXPECT_EQ(Move(), (Lines{"Host.PickTerrain(3, 44, 0)"}));
        ExpectPicked(10.0F, 7.0F, 2550.0F);
        EXPECT_EQ(ToText(m_Mode.GetFootprint()), "[-40 0 2500, 60 0 2600]") << "not clipped";

        m_Context.host.picks = {{iResult, {5.0F, 5.0F, 5.0F}}};
        EXPECT_EQ(Move(), (Lines{"Host.PickTerrain(3, 44, 0)"}));
        ExpectPicked(-1.0F, -1.0F, -1.0F);
        EXPECT_EQ(ToText(m_Mode.GetFootprint()), "[0 0 0, 0 0 0]");
    }
}

TEST_F(CModeTerraformingTest, HoveringWithoutBrushOrTerrainPicksNothing)
{
    GetTerraformingState().picked = {3.0F, 3.0F, 3.0F};
    EXPECT_EQ(Move(), Lines{});
    ExpectPicked(-1.0F, -1.0F, -1.0F);
    SetCurrentBrush(&m_Brush);
    m_Context.world.pTerrain = nullptr;
    GetTerraformingState().picked = {3.0F, 3.0F, 3.0F};
    EXPECT_EQ(Move(), Lines{});
    ExpectPicked(-1.0F, -1.0F, -1.0F);
}

TEST_F(CModeTerraformingTest, BrushSizeActionsNeedABrushAndATerrain)
{
    SetCurrentBrush(&m_Brush);
    m_Brush.SetExtent(1.0F); // a step is 2 units on a terrain 2560 units wide
    m_Mode.OnAction(VIEW, 2, 9);
    EXPECT_EQ(m_Brush.GetExtent(), -1.0F);
    EXPECT_EQ(TakeCalls(), (Lines{"Context.RefreshPanelExtent()"}));
    m_Context.world.pTerrain = nullptr;
    m_Mode.OnAction(VIEW, 1, 1);
    EXPECT_EQ(m_Brush.GetExtent(), -1.0F);
    m_Context.world.pTerrain = &m_Context.terrain;
    SetCurrentBrush(nullptr);
    m_Mode.OnAction(VIEW, 2, 1);
    EXPECT_EQ(TakeCalls(), Lines{}) << "neither a step nor camera navigation";
}
