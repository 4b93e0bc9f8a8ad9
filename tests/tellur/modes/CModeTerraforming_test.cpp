#include "tests/tellur/modes/ModesFixture.h"

namespace
{

constexpr ViewId VIEW = 3;
constexpr ViewPoint POINT = 44;
constexpr uint32_t FLAGS = 9;

class CModeTerraformingTest : public CModesFixture
{
protected:
    bool HasSession() const { return GetTerraformingState().GetSession() != nullptr; }

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
    const SVec3& picked = GetTerraformingState().GetPicked();
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

TEST_F(CModeTerraformingTest, EnteringTakesTheInputAndShowsTheMask)
{
    WriteGrey("mask.png", 2, 2, {0, 255, 0, 255});
    m_Brush.SetMask("mask.png");
    SetCurrentBrush(&m_Brush);
    CTerrain& terrain = m_Host.GetTerrain();
    terrain.SetEditOverlay(0);
    GetTerraformingState().SetEditMaterial("grass");
    const Lines takeInput = {
        "Host.SetModeCaption(Terraforming)", "FrontEnd.SetCursorPos(12 34)", "Host.RefreshView(1)"};
    m_Mode.Activate();
    EXPECT_EQ(TakeCalls(), takeInput);
    EXPECT_EQ(terrain.GetEditMaterial(), "grass");
    EXPECT_EQ(terrain.GetEditOverlay(), m_Brush.GetMaskHandle());
    for (int i = 0; i < 16; ++i)
    {
        const float fIdentity = i % 5 == 0 ? 1.0F : 0.0F;
        EXPECT_EQ(terrain.GetEditOverlayTransform().m[i], i == 2 ? 1.0F / 2560.0F : fIdentity) << i;
    }
    terrain.SetEditOverlay(99);
    m_Mode.Suspend(true);
    EXPECT_EQ(TakeCalls(), Lines{});
    m_Mode.Suspend(false);
    EXPECT_EQ(TakeCalls(), takeInput);
    EXPECT_EQ(terrain.GetEditOverlay(), 99U) << "the overlay stays as it is";
}

TEST_F(CModeTerraformingTest, LeavingTakesTheOverlayAwayAndDropsTheBrush)
{
    CTerrain& terrain = m_Host.GetTerrain();
    EXPECT_FALSE(m_Mode.IsAvailable());
    SetCurrentBrush(&m_Brush);
    EXPECT_TRUE(m_Mode.IsAvailable());
    terrain.SetEditMaterial("before");
    terrain.SetEditOverlay(99);
    GetTerraformingState().ApplyOverlay(EEditOverlay::On);
    EXPECT_EQ(terrain.GetEditMaterial(), "");
    EXPECT_EQ(terrain.GetEditOverlay(), 0U) << "no mask";
    terrain.SetEditMaterial("before");
    terrain.SetEditOverlay(99);
    m_Mode.Deactivate();
    EXPECT_EQ(terrain.GetEditMaterial(), "");
    EXPECT_EQ(terrain.GetEditOverlay(), 0U);
    EXPECT_EQ(m_Plugin->GetCurrentBrush(), nullptr);
    EXPECT_FALSE(m_Mode.IsAvailable());
    SetCurrentBrush(&m_Brush);
    m_Host.GetWorld().CloseTerrain();
    GetTerraformingState().ApplyOverlay(EEditOverlay::On);
    m_Mode.Deactivate();
    EXPECT_EQ(m_Plugin->GetCurrentBrush(), nullptr);
}

TEST_F(CModeTerraformingTest, TheEditMaterialShowsAtOnceOnlyWhileTerraforming)
{
    CTerrain& terrain = m_Host.GetTerrain();
    SetCurrentBrush(&m_Brush);
    GetTerraformingState().SetEditMaterial("rock");
    EXPECT_EQ(terrain.GetEditMaterial(), "");
    ASSERT_TRUE(m_Host.GetModes().ActivateMode(m_Plugin->GetTerraformingModeId(), 0));
    EXPECT_EQ(terrain.GetEditMaterial(), "rock");
    GetTerraformingState().SetEditMaterial("sand");
    EXPECT_EQ(terrain.GetEditMaterial(), "sand");
    GetTerraformingState().SetEditMaterial(nullptr);
    EXPECT_EQ(terrain.GetEditMaterial(), "");
}

TEST_F(CModeTerraformingTest, OneDragCapturesFeedsTheSessionAndReleases)
{
    SetCurrentBrush(&m_Brush);
    GetTerraformingState().SetPicked({70.0F, 8.0F, 90.0F});
    EXPECT_EQ(Press(), (Lines{"FrontEnd.SetCapture(1)", "Start(3, 9, 44)"}));
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
    for (const bool bAsked : {false, true})
    {
        m_Plugin->SetAutoUpdateNormals(bAsked);
        Press();
        for (const bool bRelease : {false, true})
        {
            m_Host.SetHeight(2, 2, m_Host.At(2, 2) + 1.0F); // as a function would
            bRelease ? Release() : Move();
            EXPECT_EQ(m_Host.GetTerrain().UpdateNormals(), !bAsked) << "whether they were stale";
        }
        m_Face.lastPick = {1, 1, 1};
        m_Host.SetHeight(2, 2, m_Host.At(2, 2) + 1.0F);
        Move();
        EXPECT_TRUE(m_Host.GetTerrain().UpdateNormals()) << "hovering updates nothing";
    }
}

TEST_F(CModeTerraformingTest, ARefusedPressKeepsTheCaptureAndIsNoDrag)
{
    m_Face.bHasWindow = false;
    EXPECT_EQ(Press(), (Lines{"FrontEnd.SetCapture(0)"})) << "a view without a window";
    EXPECT_EQ(m_Log.TakeLines(), (Lines{"[CTerrainModification::Start] brush set to NULL"}));
    EXPECT_TRUE(HasSession());
    EXPECT_EQ(Release(), Lines{}) << "the capture stays until the host releases it";

    SetCurrentBrush(&m_Brush);
    m_Host.GetWorld().CloseTerrain();
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
    m_Face.Hit(10.0F, 7.0F, 2550.0F);
    EXPECT_EQ(Move(), (Lines{"Host.PickTerrain(3, 44)"}));
    ExpectPicked(10.0F, 7.0F, 2550.0F);
    EXPECT_EQ(ToText(m_Mode.GetFootprint()), "[-40 0 2500, 60 0 2600]") << "not clipped";
    m_Face.Miss();
    EXPECT_EQ(Move(), (Lines{"Host.PickTerrain(3, 44)"}));
    ExpectPicked(-1.0F, -1.0F, -1.0F);
    EXPECT_EQ(ToText(m_Mode.GetFootprint()), "[0 0 0, 0 0 0]");
}

TEST_F(CModeTerraformingTest, HoveringWithoutBrushOrTerrainPicksNothing)
{
    GetTerraformingState().SetPicked({3.0F, 3.0F, 3.0F});
    EXPECT_EQ(Move(), Lines{});
    ExpectPicked(-1.0F, -1.0F, -1.0F);
    SetCurrentBrush(&m_Brush);
    m_Host.GetWorld().CloseTerrain();
    GetTerraformingState().SetPicked({3.0F, 3.0F, 3.0F});
    EXPECT_EQ(Move(), Lines{});
    ExpectPicked(-1.0F, -1.0F, -1.0F);
}

TEST_F(CModeTerraformingTest, BrushSizeActionsNeedABrushAndATerrain)
{
    OpenPanel();
    m_Mode.OnAction(VIEW, 2, 1);
    EXPECT_EQ(TakeCalls(), Lines{}) << "neither a step nor camera navigation";
    SetCurrentBrush(&m_Brush);
    m_Brush.SetExtent(1.0F); // a step is 2 units on a terrain 2560 units wide
    m_Mode.OnAction(VIEW, 2, 9);
    EXPECT_EQ(m_Brush.GetExtent(), -1.0F);
    EXPECT_EQ(TakeCalls(), (Lines{"Panel.RefreshExtent()"}));
    m_Host.GetWorld().CloseTerrain();
    m_Mode.OnAction(VIEW, 1, 1);
    EXPECT_EQ(m_Brush.GetExtent(), -1.0F);
}
