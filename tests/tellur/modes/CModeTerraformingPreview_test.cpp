// What the terraforming mode draws in a frame.

#include "tests/tellur/modes/ModesFixture.h"

namespace
{

const std::string CREATE = "World.CreateTextureFromImage(image, TellurBlobTexture)";
const std::string RELEASE = "World.ReleaseTexture(TellurBlobTexture)";
const std::string DRAW_HOVER =
    "Terrain.DrawProjectedTexture([50 0 150, 150 0 250], TellurBlobTexture)";
const std::string DRAW_ZERO = "Terrain.DrawProjectedTexture([0 0 0, 0 0 0], TellurBlobTexture)";
const std::string ASK_HOVER = "Render(none, 100 7 200)";
const std::string ASK_SESSION = "Render(session, 100 7 200)";

class CModeTerraformingPreview : public CModesFixture
{
protected:
    CModeTerraformingPreview()
    {
        LoadBrushImage();
        m_Brush.SetExtent(100.0F);
        SetCurrentBrush(&m_Brush);
    }

    void Hover(bool bHit = true, float fX = 100.0F)
    {
        m_Context.host.picks = {{bHit ? 1 : 0, {fX, 7.0F, 200.0F}}};
        m_Mode.OnMouseMove(1, 0, 0, 0, 0);
        TakeCalls();
    }

    Lines Render()
    {
        m_Mode.Render();
        return TakeCalls();
    }
};

} // namespace

TEST_F(CModeTerraformingPreview, TheTextureIsMadeOnceAndAgainAfterAChange)
{
    Hover();
    EXPECT_EQ(Render(), (Lines{ASK_HOVER, CREATE, DRAW_HOVER}));
    EXPECT_FALSE(m_Brush.IsBitmapChanged());
    EXPECT_EQ(Render(), (Lines{ASK_HOVER, DRAW_HOVER}));
    m_Brush.SetBitmapChanged(true);
    EXPECT_EQ(Render(), (Lines{ASK_HOVER, RELEASE, CREATE, DRAW_HOVER}));
    EXPECT_EQ(m_Context.world.textures.size(), 1U);

    m_Brush.SetBitmap(nullptr);
    EXPECT_EQ(Render(), (Lines{ASK_HOVER, RELEASE})) << "no image: nothing to show";
    EXPECT_FALSE(m_Brush.IsBitmapChanged());
    EXPECT_EQ(GetTerraformingState().pPreview, nullptr);
}

TEST_F(CModeTerraformingPreview, ASkyHoverAsksNobodyAndStillDrawsOverNothing)
{
    Hover(false);
    EXPECT_EQ(Render(), (Lines{CREATE, DRAW_ZERO}));
    m_Function->bDraws = true;
    EXPECT_EQ(Render(), (Lines{DRAW_ZERO}));
    Hover(true, 0.0F);
    EXPECT_EQ(Render(), (Lines{"Render(none, 0 7 200)"})) << "the terrain's border is picked, too";
}

TEST_F(CModeTerraformingPreview, AFunctionThatDrawsItselfReplacesTheBlob)
{
    Hover();
    m_Function->bDraws = true;
    EXPECT_EQ(Render(), (Lines{ASK_HOVER}));
    m_Mode.OnLButtonDown(1, 0, 0);
    TakeCalls();
    EXPECT_EQ(Render(), (Lines{ASK_SESSION})) << "the session is asked first";
}

TEST_F(CModeTerraformingPreview, DuringADragTheBlobFollowsTheSession)
{
    Hover();
    m_Mode.OnLButtonDown(1, 0, 0);
    m_Mode.OnMouseMove(1, 0, 0, 0, 0);
    TakeCalls();
    EXPECT_EQ(Render(),
              (Lines{ASK_SESSION,
                     ASK_SESSION, // the session, then the brush
                     CREATE,
                     "Terrain.DrawProjectedTexture([1 2 3, 4 5 6], TellurBlobTexture)"}));
    m_Mode.OnLButtonUp(1, 0, 0);
    TakeCalls();
    EXPECT_EQ(Render(),
              (Lines{ASK_HOVER, "Terrain.DrawProjectedTexture([1 2 3, 4 5 6], TellurBlobTexture)"}))
        << "until the next hover";
}

TEST_F(CModeTerraformingPreview, WithoutTerrainNothingAndWithoutBrushTheOldTexture)
{
    Hover();
    m_Context.world.pTerrain = nullptr;
    EXPECT_EQ(Render(), Lines{});
    m_Context.world.pTerrain = &m_Context.terrain;
    SetCurrentBrush(nullptr);
    EXPECT_EQ(Render(), Lines{}) << "no brush and no texture";
    SetCurrentBrush(&m_Brush);
    Render();
    SetCurrentBrush(nullptr);
    EXPECT_EQ(Render(), (Lines{DRAW_HOVER}));

    ReleaseBrushPreview();
    EXPECT_EQ(TakeCalls(), (Lines{RELEASE}));
    ReleaseBrushPreview();
    EXPECT_EQ(TakeCalls(), Lines{}) << "released once";
    EXPECT_TRUE(m_Context.world.textures.empty());
}
