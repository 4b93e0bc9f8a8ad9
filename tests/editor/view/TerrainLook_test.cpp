#include "tests/editor/view/RenderFixture.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/CTempFolder.h"
#include "tests/support/TestPaths.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

// What is laid over the ground: materials, bitmap, mask, preview, lines.

namespace
{

class CTerrainLookTest : public CRenderFixture
{
};

float GetFlat(float /*fX*/, float /*fZ*/)
{
    return 50.0F;
}

TEST_F(CTerrainLookTest, ThePreviewTintsTheGroundInItsBoxOnly)
{
    MakeTerrain(64, GetFlat);
    const SViewProjection view = LookDown();
    const auto pRenderer = MakeRenderer();
    const QImage plain = Draw(view, pRenderer.get());
    // Strong in the half with the higher x.
    ITexture* pShape = MakeTexture(16, [](uint32_t uX, uint32_t) { return uX < 8 ? 0 : 255; });
    const SExtents box = {{200.0F, 0.0F, 100.0F}, {360.0F, 0.0F, 260.0F}};
    GetTerrain().DrawProjectedTexture(box, pShape);
    const QImage tinted = Draw(view, pRenderer.get());
    for (int x = 5; x < 640; x += 10)
    {
        for (int z = 5; z < 640; z += 10)
        {
            const auto fX = static_cast<float>(x);
            const auto fZ = static_cast<float>(z);
            const bool bIn = fX > 290.0F && fX < 350.0F && fZ > 110.0F && fZ < 250.0F;
            const bool bOut = fX < 260.0F || fX > 364.0F || fZ < 96.0F || fZ > 264.0F;
            const QColor from = GetPixel(plain, view, fX, fZ);
            const QColor to = GetPixel(tinted, view, fX, fZ);
            EXPECT_TRUE(!bOut || from == to) << fX << ", " << fZ;
            EXPECT_TRUE(!bIn || to.red() - to.blue() > from.red() - from.blue() + 60)
                << fX << ", " << fZ;
        }
    }
    m_Engine->BeginFrame(); // which takes the preview away
    EXPECT_EQ(CountDifferent(Draw(view, pRenderer.get()), plain), 0);
}

TEST_F(CTerrainLookTest, TheMaskCoversWhatItKeepsOnATerrainThatIsNotSquare)
{
    SHeightField field;
    ASSERT_TRUE(field.Allocate(33, 65));
    field.size = {240.0F, 1000.0F, 640.0F};
    m_Engine->GetCWorld().TakeTerrain(std::move(field));
    const SViewProjection view = LookDown();
    const QImage plain = Draw(view);
    CWorld& world = m_Engine->GetCWorld();
    constexpr uint32_t SIDE = 64;
    const auto getTexel = [](uint32_t uX, uint32_t uY)
    {
        const uint32_t uBlock = std::min(uX, SIDE - 1) / 8 * 5 + std::min(uY, SIDE - 1) / 8 * 3;
        return static_cast<uint8_t>(uBlock % 4 < 2 ? 0 : 255); // black keeps
    };
    const uint32_t uHandle = world.RegisterTerrainTexture(MakeTexture(SIDE, getTexel), "mask");
    SMatrix4 transform = {};
    world.MakeOverlayTransform(&transform.m[2], 240.0F);
    GetTerrain().SetEditOverlay(uHandle);
    GetTerrain().SetEditOverlayTransform(transform);
    const QImage masked = Draw(view);
    int nSeen = 0;
    int nWrong = 0;
    for (int x = 1; x < 240; x += 3)
    {
        for (int z = 1; z < 640; z += 3)
        {
            const auto uX = static_cast<uint32_t>(x * static_cast<int>(SIDE) / 240);
            const auto uY = static_cast<uint32_t>(z * static_cast<int>(SIDE) / 640);
            const uint8_t uTexel = getTexel(uX, uY);
            // A brush blends the texel with the ones behind it.
            if (uTexel == getTexel(uX + 1, uY) && uTexel == getTexel(uX, uY + 1) &&
                uTexel == getTexel(uX + 1, uY + 1))
            {
                const QColor color =
                    GetPixel(masked, view, static_cast<float>(x), static_cast<float>(z));
                ++nSeen;
                nWrong += (color.red() > color.green() + 40) == (uTexel == 0) ? 0 : 1;
            }
        }
    }
    EXPECT_GT(nSeen, 10000);
    EXPECT_LE(nWrong, nSeen / 100) << "of " << nSeen;
    GetTerrain().SetEditOverlay(0);
    EXPECT_EQ(CountDifferent(Draw(view), plain), 0);
}

TEST_F(CTerrainLookTest, TheTypeBitmapIsStretchedOverTheTerrain)
{
    MakeTerrain(64, GetFlat);
    const SViewProjection view = LookDown();
    ITexture* pTypes = MakeTexture(4,
                                   [](uint32_t uX, uint32_t uY)
                                   { return uY < 2 ? (uX < 2 ? 0 : 80) : (uX < 2 ? 160 : 255); });
    m_Settings.pTypeBitmap = pTypes;
    m_Settings.fTypeBlend = 1.0F;
    const QImage picture = Draw(view);
    const int aiGreys[] = {GetPixel(picture, view, 100.0F, 100.0F).green(),
                           GetPixel(picture, view, 540.0F, 100.0F).green(),
                           GetPixel(picture, view, 100.0F, 540.0F).green(),
                           GetPixel(picture, view, 540.0F, 540.0F).green()};
    EXPECT_LT(aiGreys[0], 10);
    EXPECT_TRUE(std::is_sorted(std::begin(aiGreys), std::end(aiGreys)));
    EXPECT_GT(aiGreys[1], aiGreys[0] + 30);
    EXPECT_GT(aiGreys[3], aiGreys[2] + 30);
    // Twice the light of the ground shows through half of the bitmap.
    m_Settings.fTypeBlend = 0.5F;
    EXPECT_GT(GetPixel(Draw(view), view, 100.0F, 100.0F).green(), aiGreys[0] + 30);
}

TEST_F(CTerrainLookTest, MaterialsShowWhatTheirNamesSay)
{
    // A ramp along x from 0 to 640, with a cliff in the middle that the slope colours find.
    MakeTerrain(64, [](float fX, float) { return fX * 0.75F + (fX > 325.0F ? 200.0F : 0.0F); });
    const SViewProjection view = LookDown();
    const std::string strFolder = TELLUR_SOURCE_DIR "/data/materials/";
    const auto draw = [&](const char* pszName)
    {
        m_Settings.strDefaultMaterial = strFolder + pszName;
        return Draw(view);
    };
    const auto isSame = [](const QColor& a, const QColor& b)
    {
        return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) +
                   std::abs(a.blue() - b.blue()) <
               12;
    };
    const QImage grey = draw("grey.mat");
    EXPECT_TRUE(isSame(GetPixel(grey, view, 100.0F, 100.0F), GetPixel(grey, view, 500.0F, 400.0F)));

    const QImage checker = draw("checker.mat");
    const QColor corner = GetPixel(checker, view, 105.0F, 105.0F);
    EXPECT_FALSE(isSame(corner, GetPixel(checker, view, 115.0F, 105.0F)));
    EXPECT_FALSE(isSame(corner, GetPixel(checker, view, 105.0F, 115.0F)));
    EXPECT_TRUE(isSame(corner, GetPixel(checker, view, 115.0F, 115.0F)));

    const QImage bands = draw("bands.mat");
    EXPECT_FALSE(
        isSame(GetPixel(bands, view, 20.0F, 100.0F), GetPixel(bands, view, 620.0F, 100.0F)));
    EXPECT_TRUE(isSame(GetPixel(bands, view, 20.0F, 100.0F), GetPixel(bands, view, 20.0F, 500.0F)));

    const QImage slope = draw("slope.mat");
    EXPECT_TRUE(
        isSame(GetPixel(slope, view, 20.0F, 100.0F), GetPixel(slope, view, 620.0F, 100.0F)));
    EXPECT_FALSE(
        isSame(GetPixel(slope, view, 20.0F, 100.0F), GetPixel(slope, view, 325.0F, 100.0F)));

    // Lines along z: a row has many colours, a column has one.
    const QImage contours = draw("contours.mat");
    int nChanges = 0;
    for (int x = 10; x < 300; x += 1)
    {
        const auto fX = static_cast<float>(x);
        nChanges += isSame(GetPixel(contours, view, fX, 300.0F),
                           GetPixel(contours, view, fX + 2.7F, 300.0F))
                        ? 0
                        : 1;
        EXPECT_TRUE(
            isSame(GetPixel(contours, view, fX, 300.0F), GetPixel(contours, view, fX, 330.0F)));
    }
    EXPECT_GT(nChanges, 8);

    // The terrain's own name wins over the default.
    GetTerrain().SetEditMaterial((strFolder + "grey.mat").c_str());
    EXPECT_EQ(CountDifferent(draw("checker.mat"), grey), 0);
}

TEST_F(CTerrainLookTest, HollowsAreDarkerAndTheBordersOfTilesAreNot)
{
    // Along z a valley at x 200 and a ridge at x 440, with even slopes between.
    const auto getHeight = [](float fX, float)
    {
        const float fAt = fX - 200.0F;
        return fX < 440.0F ? std::fabs(fAt) * 0.6F : 144.0F - (fX - 440.0F) * 0.6F;
    };
    MakeTerrain(64, getHeight);
    const SViewProjection view = LookDown();
    const std::string strHollows = TELLUR_SOURCE_DIR "/data/materials/hollows.mat";
    const CTempFolder folder;
    WriteBytes(folder.Path("plain.mat"),
               "!kind( s )\n!color( v4 )\nkind( \"plain\" )\ncolor( [0.72, 0.70, 0.66, 1.0] )\n");
    m_Settings.strDefaultMaterial = folder.Path("plain.mat");
    const QImage plain = Draw(view);
    m_Settings.strDefaultMaterial = strHollows;
    const auto pRenderer = MakeRenderer();
    const QImage hollows = Draw(view, pRenderer.get());
    const auto getShare = [&](float fX)
    {
        return static_cast<float>(GetPixel(hollows, view, fX, 320.0F).green()) /
               static_cast<float>(GetPixel(plain, view, fX, 320.0F).green());
    };
    EXPECT_LT(getShare(200.0F), 0.7F);
    EXPECT_LT(getShare(230.0F), getShare(200.0F) + 0.3F) << "and what lies near it";
    EXPECT_NEAR(getShare(320.0F), 1.0F, 0.05F) << "an even slope sees its half of the sky";
    EXPECT_GT(getShare(440.0F), 1.02F);
    // In two by two tiles nearly the same: what lies beyond the border of one does not count.
    EXPECT_EQ(CountDifferent(Draw(view, MakeRenderer(32).get()), hollows, 30), 0);
    // A stroke that fills the valley takes the shade away at once.
    const std::vector<float> flat(65 * 65, 30.0F);
    GetTerrain().SetHeights(flat.data(), flat.size(), {{150, 0, 0}, {250, 0, 640}});
    EXPECT_GT(
        static_cast<float>(GetPixel(Draw(view, pRenderer.get()), view, 200.0F, 320.0F).green()),
        1.2F * static_cast<float>(GetPixel(hollows, view, 200.0F, 320.0F).green()));
}

TEST_F(CTerrainLookTest, AFaultyMaterialIsOneLineAndPlainGrey)
{
    MakeTerrain(16, GetFlat);
    const SViewProjection view = LookDown();
    const QImage grey = Draw(view);
    const CTempFolder folder;
    const std::pair<const char*, const char*> aCases[] = {
        {"", "no known kind of material"},
        {"!kind( s )\nkind( \"marble\" )\n", "no known kind of material"},
        {"!kind( s )\n!color( v4 )\nkind( \"checker\" )\ncolor( [1, 0, 0, 1] )\n",
         "too few colours"},
        {"!kind( s )\n!step( f )\nkind( \"plain\" )\nstep( -1 )\n", "too few colours"},
        {"!kind( s\n", "unexpected character"},
        {nullptr, "cannot be read"},
    };
    int nCase = 0;
    for (const auto& [pszText, pszFault] : aCases)
    {
        SCOPED_TRACE(pszFault);
        const std::string strPath = folder.Path("case") + std::to_string(++nCase) + ".mat";
        if (pszText != nullptr)
        {
            WriteBytes(strPath, pszText);
        }
        CLogCatcher log;
        const auto pRenderer = MakeRenderer();
        m_Settings.strDefaultMaterial = strPath;
        EXPECT_EQ(CountDifferent(Draw(view, pRenderer.get()), grey), 0);
        Draw(view, pRenderer.get()); // says it once
        // The parser says one thing more about a file that it gives up.
        std::vector<std::string> lines = log.TakeLines();
        std::erase(lines, "");
        ASSERT_FALSE(lines.empty());
        EXPECT_LE(lines.size(), lines.front().find("CTCParse") == std::string::npos ? 1U : 2U);
        EXPECT_NE(lines.front().find(strPath), std::string::npos) << lines.front();
        EXPECT_NE(lines.front().find(pszFault), std::string::npos) << lines.front();
    }
}

TEST_F(CTerrainLookTest, LinesAndDebugLinesShow)
{
    MakeTerrain(32, GetFlat);
    const SViewProjection view = LookDown();
    const QImage plain = Draw(view);
    m_Settings.bGrid = true;
    const int nGrid = CountDifferent(Draw(view), plain);
    EXPECT_GT(nGrid, 1000);
    EXPECT_LT(nGrid, WIDTH * HEIGHT / 2);
    m_Settings.bGrid = false;
    m_Settings.bWireFrame = true;
    EXPECT_GT(CountDifferent(Draw(view), plain), 100);
    m_Settings.bWireFrame = false;
    m_Engine->DrawLine({0.0F, 60.0F, 160.0F}, {320.0F, 60.0F, 160.0F}, {0.0F, 0.0F, 1.0F, 1.0F});
    const QImage lined = Draw(view);
    EXPECT_GT(CountDifferent(lined, plain), 150);
    EXPECT_LT(CountDifferent(lined, plain), 1500);
    EXPECT_GT(GetPixel(lined, view, 160.0F, 160.0F).blue(),
              GetPixel(lined, view, 160.0F, 160.0F).red() + 60);
}

} // namespace
