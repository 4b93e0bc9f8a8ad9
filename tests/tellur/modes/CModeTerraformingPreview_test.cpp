// What the terraforming mode draws in a frame.

#include "tests/tellur/modes/ModesFixture.h"

namespace
{

const std::string HOVER = "[50 0 150, 150 0 250]";
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
        m_Face.lastPick = bHit ? std::optional<SVec3>({fX, 7.0F, 200.0F}) : std::nullopt;
        m_Mode.OnMouseMove(1, 0, 0, 0, 0);
        TakeCalls();
    }

    // What the function is asked, then the box that the texture covers.
    Lines Render()
    {
        m_Host.GetTerrain().BeginFrame();
        m_Mode.Render();
        Lines lines = TakeCalls();
        const SProjectedTexture& shown = m_Host.GetTerrain().GetProjectedTexture();
        if (shown.pTexture != nullptr)
        {
            EXPECT_STREQ(shown.pTexture->GetName(), "TellurBlobTexture");
            lines.push_back(ToText(shown.box));
        }
        return lines;
    }

    uint32_t CountTextures() const { return CTexture::GetAliveCount() - m_Alive; }

    uint32_t m_Alive = CTexture::GetAliveCount();
};

} // namespace

TEST_F(CModeTerraformingPreview, TheTextureIsMadeOnceAndAgainAfterAChange)
{
    Hover();
    EXPECT_EQ(Render(), (Lines{ASK_HOVER, HOVER}));
    EXPECT_FALSE(m_Brush.IsBitmapChanged());
    const auto revision = []
    {
        return static_cast<CTexture*>(GetTerraformingState().GetPreview())->GetRevision();
    };
    const uint32_t uFirst = revision();
    EXPECT_EQ(Render(), (Lines{ASK_HOVER, HOVER}));
    EXPECT_EQ(revision(), uFirst);
    m_Brush.SetBitmapChanged(true);
    EXPECT_EQ(Render(), (Lines{ASK_HOVER, HOVER}));
    EXPECT_NE(revision(), uFirst);
    EXPECT_EQ(CountTextures(), 1U);

    m_Brush.SetBitmap(nullptr);
    EXPECT_EQ(Render(), (Lines{ASK_HOVER})) << "no image: nothing to show";
    EXPECT_FALSE(m_Brush.IsBitmapChanged());
    EXPECT_EQ(GetTerraformingState().GetPreview(), nullptr);
    EXPECT_EQ(CountTextures(), 0U);
}

TEST_F(CModeTerraformingPreview, ASkyHoverAsksNobodyAndStillDrawsOverNothing)
{
    Hover(false);
    EXPECT_EQ(Render(), (Lines{"[0 0 0, 0 0 0]"}));
    m_Function->bDraws = true;
    EXPECT_EQ(Render(), (Lines{"[0 0 0, 0 0 0]"}));
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
                     "[1 2 3, 4 5 6]"}));
    m_Mode.OnLButtonUp(1, 0, 0);
    TakeCalls();
    EXPECT_EQ(Render(), (Lines{ASK_HOVER, "[1 2 3, 4 5 6]"})) << "until the next hover";
}

TEST_F(CModeTerraformingPreview, WithoutABrushTheOldTextureUntilItIsReleased)
{
    Hover();
    SetCurrentBrush(nullptr);
    EXPECT_EQ(Render(), Lines{}) << "no brush and no texture";
    SetCurrentBrush(&m_Brush);
    Render();
    GetTerraformingState().ReleasePreview();
    EXPECT_EQ(CountTextures(), 0U);
    GetTerraformingState().ReleasePreview();
    m_Host.GetWorld().CloseTerrain();
    m_Mode.Render();
    EXPECT_EQ(TakeCalls(), Lines{});
    EXPECT_EQ(CountTextures(), 0U);
}
