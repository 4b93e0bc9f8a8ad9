// How the bitmap that is being painted shows on the terrain, and what of it goes to the card.

#include "engine/paint/CPaintLayer.h"
#include "host/Image.h"
#include "tests/editor/view/RenderFixture.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/TestPaths.h"

namespace
{

// Paints one colour whole.
class CSolid : public ITerrain2DFunction
{
public:
    explicit CSolid(std::array<uint8_t, 4> color)
        : m_Color(color)
    {
    }

    const char* GetName() const override { return "Solid"; }

    bool IsUsableFor(bool) const override { return true; }

    bool Apply(uint8_t* pTexel, float, float, uint32_t) override
    {
        std::copy(m_Color.begin(), m_Color.end(), pTexel);
        return true;
    }

private:
    std::array<uint8_t, 4> m_Color;
};

constexpr uint32_t SIDE = 64; // texels, on a terrain of 640 units

class CPaintedTerrain : public CRenderFixture
{
protected:
    void SetUp() override
    {
        CRenderFixture::SetUp();
        MakeTerrain(64, [](float, float) { return 0.0F; });
        m_Layer = std::make_unique<CPaintLayer>(m_Engine->GetCWorld());
        m_Settings.fHaze = 0.0F;
        m_Settings.pPaintLayer = m_Layer.get();
    }

    void Begin(uint32_t uSide, uint32_t uChannels = 0x1FF)
    {
        const std::vector<uint8_t> white(16, 255);
        const std::unique_ptr<IImage> pShape(
            IL_CreateImageFromBufferFormat(4, 4, EImageFormat::Indexed8, white.data()));
        const std::unique_ptr<IImage> pWork(
            IL_CreateImageFromBufferFormat(uSide, uSide, EImageFormat::Rgba32, nullptr));
        m_Layer->Begin(pWork.get(), pShape.get(), uChannels);
    }

    void Paint(const SExtents& box, std::array<uint8_t, 4> color)
    {
        CSolid solid(color);
        m_Layer->Paint(box, &solid, 1.0F, 0.0F);
    }

    QColor Look(float fX, float fZ)
    {
        const SViewProjection view = LookDown();
        return GetPixel(Draw(view, m_Renderer.get()), view, fX, fZ);
    }

    CLogCatcher m_Log;
    std::unique_ptr<CPaintLayer> m_Layer;
    std::unique_ptr<CTerrainRenderer> m_Renderer;
};

bool IsNear(const QColor& a, const QColor& b, int iTolerance = 3)
{
    return std::abs(a.red() - b.red()) <= iTolerance &&
           std::abs(a.green() - b.green()) <= iTolerance &&
           std::abs(a.blue() - b.blue()) <= iTolerance;
}

} // namespace

TEST_F(CPaintedTerrain, TexelsAreBlendedOverTheShadedGround)
{
    const QColor ground = Look(100, 100);
    Begin(SIDE);
    Paint({{0, 0, 0}, {320, 0, 640}}, {200, 100, 50, 0});
    m_Layer->SetBlendFactor(1.0F);
    EXPECT_TRUE(IsNear(Look(100, 100), QColor(200, 100, 50))) << "the colour itself, unshaded";
    EXPECT_TRUE(IsNear(Look(500, 100), QColor(0, 0, 0)));
    m_Layer->SetBlendFactor(0.5F);
    EXPECT_TRUE(IsNear(
        Look(100, 100),
        QColor((200 + ground.red()) / 2, (100 + ground.green()) / 2, (50 + ground.blue()) / 2)));
    m_Layer->SetBlendFactor(0.0F);
    EXPECT_TRUE(IsNear(Look(100, 100), ground));
    m_Layer->SetBlendFactor(1.0F);
    m_Layer->End();
    EXPECT_TRUE(IsNear(Look(100, 100), ground));
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CPaintedTerrain, VisibleChannelsAloneAreShown)
{
    const QColor ground = Look(100, 100);
    Begin(SIDE);
    Paint({{0, 0, 0}, {640, 0, 640}}, {200, 100, 50, 128});
    m_Layer->SetBlendFactor(1.0F);
    const std::pair<uint32_t, QColor> cases[] = {
        {0x1FF, QColor(200, 100, 50)},
        {0x019, QColor(200, 0, 0)},
        {0x0A1, QColor(0, 100, 50)},
        {0x601, QColor(128, 128, 128)},
        {0x001, ground},
        {0x1FE, QColor(50, 100, 200)}, // texels of a palette have blue first
        {0x3FF,
         QColor((200 + ground.red()) / 2, (100 + ground.green()) / 2, (50 + ground.blue()) / 2)}};
    for (const auto& [uChannels, color] : cases)
    {
        m_Layer->SetChannelMask(uChannels);
        const QColor seen = Look(100, 100);
        EXPECT_TRUE(IsNear(seen, color)) << uChannels << " " << seen.name().toStdString();
    }
}

TEST_F(CPaintedTerrain, OnlyTheTexelsOfAStrokeAreSent)
{
    m_Renderer = MakeRenderer();
    Begin(1024); // 1.6 texels a unit
    m_Layer->SetBlendFactor(1.0F);
    Look(0, 0);
    EXPECT_GE(m_Renderer->GetStatistics().uUploadedBytes, 1024U * 1024 * 4);
    Look(0, 0);
    EXPECT_EQ(m_Renderer->GetStatistics().uUploadedBytes, 0U);
    // Far from the view a texel is a fraction of a pixel: the smaller copies have the stroke too.
    Paint({{100, 0, 100}, {200, 0, 200}}, {255, 0, 0, 255});
    EXPECT_TRUE(IsNear(Look(150, 150), QColor(255, 0, 0)));
    EXPECT_TRUE(IsNear(Look(300, 150), QColor(0, 0, 0)));
    EXPECT_TRUE(m_Renderer->GetStatistics().uUploadedBytes == 0U) << "by the picture before";
    Paint({{100, 0, 100}, {200, 0, 200}}, {0, 255, 0, 255});
    Look(150, 150);
    EXPECT_EQ(m_Renderer->GetStatistics().uUploadedBytes, 160U * 160 * 4);
    // A picture whose smaller copies are made by the card in parts is that of one made at once.
    const SViewProjection view = LookDown();
    const QImage parts = Draw(view, m_Renderer.get());
    m_Renderer.reset();
    EXPECT_LE(CountDifferent(parts, Draw(view), 2), 0);
}

TEST_F(CPaintedTerrain, MappingOutlineAndMaterialShow)
{
    Begin(2);
    Paint({{320, 0, 0}, {640, 0, 640}}, {255, 255, 255, 255});
    m_Layer->SetBlendFactor(1.0F);
    EXPECT_LE(Look(160, 320).red(), 3) << "the centre of a black texel";
    m_Layer->SetTexelToVertexMapping(true);
    EXPECT_NEAR(Look(160, 320).red(), 64, 4) << "a quarter of the way between two";
    EXPECT_LE(Look(2, 320).red(), 3);
    EXPECT_GE(Look(637, 320).red(), 252);

    const SViewProjection view = LookDown();
    const QImage without = Draw(view);
    const SExtents box = {{200, 0, 200}, {440, 0, 440}};
    m_Layer->SetBrush(&box, nullptr);
    const QImage with = Draw(view);
    EXPECT_FALSE(IsNear(GetPixel(with, view, 200, 320), GetPixel(without, view, 200, 320), 20));
    EXPECT_FALSE(IsNear(GetPixel(with, view, 320, 320), GetPixel(without, view, 320, 320)));
    EXPECT_TRUE(IsNear(GetPixel(with, view, 320, 320), GetPixel(without, view, 320, 320), 80))
        << "what is painted shows through";
    EXPECT_TRUE(IsNear(GetPixel(with, view, 100, 320), GetPixel(without, view, 100, 320)));

    m_Layer->SetBlendFactor(0.0F);
    const QImage plain = Draw(view);
    m_Layer->SetMaterial(TELLUR_SOURCE_DIR "/data/materials/checker.mat");
    EXPECT_GT(CountDifferent(Draw(view), plain, 8), 1000);
}

TEST_F(CPaintedTerrain, ABitmapThatTheCardCannotHoldIsSaidOnce)
{
    const std::unique_ptr<IImage> pWide(
        IL_CreateImageFromBufferFormat(32768, 1, EImageFormat::Rgba32, nullptr));
    const QColor ground = Look(100, 100);
    m_Renderer = MakeRenderer();
    m_Layer->Begin(pWide.get(), nullptr, 0x1FF);
    m_Layer->SetBlendFactor(1.0F);
    const QColor seen = Look(100, 100);
    Look(100, 100);
    const std::vector<std::string> lines = m_Log.TakeLines();
    ASSERT_LE(lines.size(), 1U);
    if (!lines.empty()) // cards differ
    {
        EXPECT_NE(lines[0].find("32768 x 1 texels"), std::string::npos) << lines[0];
        EXPECT_TRUE(IsNear(seen, ground));
    }
}
