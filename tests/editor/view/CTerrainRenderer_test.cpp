#include "tests/editor/view/RenderFixture.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace
{

// Rough ground between 0 and about 60 units.
float GetRough(float fX, float fZ)
{
    return 30.0F + 12.0F * std::sin(fX * 0.021F) * std::cos(fZ * 0.017F) +
           9.0F * std::sin(fX * 0.11F + fZ * 0.07F) +
           8.0F * std::sin(fX * 0.9F) * std::sin(fZ * 1.1F);
}

float GetFlat(float /*fX*/, float /*fZ*/)
{
    return 50.0F;
}

constexpr SColor SKY = {1.0F, 0.0F, 1.0F, 1.0F}; // that no ground has

int CountSky(const QImage& picture)
{
    int nSky = 0;
    for (int y = 0; y < picture.height(); ++y)
    {
        for (int x = 0; x < picture.width(); ++x)
        {
            nSky += picture.pixel(x, y) == 0xFFFF00FF ? 1 : 0;
        }
    }
    return nSky;
}

class CTerrainRendererTest : public CRenderFixture
{
protected:
    // Whether all that the view shows is inside the terrain, at every height it has.
    bool ShowsOnlyGround(const SViewProjection& view)
    {
        const SVec3 size = GetTerrain().GetSize();
        for (int i = 0; i < 4; ++i)
        {
            const SRay ray = view.GetRay(i % 2 == 0 ? 0.0F : static_cast<float>(WIDTH),
                                         i / 2 == 0 ? 0.0F : static_cast<float>(HEIGHT));
            const float fWay = -ray.origin.y / ray.direction.y;
            const float fX = ray.origin.x + ray.direction.x * fWay;
            const float fZ = ray.origin.z + ray.direction.z * fWay;
            if (!(fWay > 0.0F && fX > 0.0F && fZ > 0.0F && fX < size.x && fZ < size.z))
            {
                return false;
            }
        }
        return true;
    }

    // Adds to the heights of the vertices in a rectangle, as a stroke does.
    void Raise(const SVertexRect& rect, float fBy)
    {
        CTerrain& terrain = GetTerrain();
        std::vector<float> heights(size_t{terrain.GetVerticesX()} * terrain.GetVerticesZ());
        terrain.GetHeights(heights.data(), heights.size());
        for (uint32_t z = rect.uMinZ; z < rect.uEndZ; ++z)
        {
            for (uint32_t x = rect.uMinX; x < rect.uEndX; ++x)
            {
                heights[size_t{z} * terrain.GetVerticesX() + x] += fBy;
            }
        }
        const auto toUnits = [](uint32_t uVertex)
        {
            return static_cast<float>(uVertex) * 10.0F;
        };
        terrain.SetHeights(heights.data(),
                           heights.size(),
                           {{toUnits(rect.uMinX), 0.0F, toUnits(rect.uMinZ)},
                            {toUnits(rect.uEndX - 1), 1000.0F, toUnits(rect.uEndZ - 1)}});
    }
};

TEST_F(CTerrainRendererTest, SlopesThatFaceTheSunAreLighter)
{
    MakeTerrain(64,
                [](float fX, float fZ)
                { return 200.0F - 0.5F * std::hypot(fX - 320.0F, fZ - 320.0F); });
    const SViewProjection view = LookDown();
    // Yaw of the sun, then where on the cone the light falls.
    const std::tuple<float, float, float> aCases[] = {
        {0.0F, 420.0F, 320.0F},
        {90.0F, 320.0F, 420.0F},
        {180.0F, 220.0F, 320.0F},
        {270.0F, 320.0F, 220.0F},
    };
    for (const auto& [fYaw, fX, fZ] : aCases)
    {
        SCOPED_TRACE(fYaw);
        m_Settings.fSunYaw = fYaw;
        for (const bool bFlat : {false, true})
        {
            m_Settings.bFlatShading = bFlat;
            m_Settings.fAmbient = 0.2F;
            const QImage picture = Draw(view);
            const int iLit = GetPixel(picture, view, fX, fZ).green();
            const int iDark = GetPixel(picture, view, 640.0F - fX, 640.0F - fZ).green();
            EXPECT_GT(iLit, iDark + 40);
            m_Settings.fAmbient = 0.6F;
            EXPECT_GT(GetPixel(Draw(view), view, 640.0F - fX, 640.0F - fZ).green(), iDark + 20);
        }
    }
}

TEST_F(CTerrainRendererTest, AnEditUploadsItsRegionAndShowsAsInAFreshPicture)
{
    MakeTerrain(200, GetRough);
    const auto pRenderer = MakeRenderer(64); // 16 tiles, the last ones narrower
    const SViewProjection view = LookDown();
    const QImage before = Draw(view, pRenderer.get());
    EXPECT_GE(pRenderer->GetStatistics().uUploadedBytes, 201U * 201U * 4U);
    EXPECT_EQ(CountDifferent(Draw(view, pRenderer.get()), before), 0);
    EXPECT_EQ(pRenderer->GetStatistics().uUploadedBytes, 0U);

    // Inside a tile, over the corner of four, one vertex on a border, the last corner.
    const SVertexRect aEdits[] = {
        {20, 20, 44, 40}, {60, 60, 70, 72}, {128, 90, 129, 91}, {190, 190, 201, 201}};
    for (const SVertexRect& rect : aEdits)
    {
        SCOPED_TRACE(rect.uMinX);
        const QImage last = Draw(view, pRenderer.get());
        Raise(rect, 40.0F);
        const QImage edited = Draw(view, pRenderer.get());
        // Heights and normals of what changed, those of the smaller pictures, and the vertices that
        // tiles share.
        const uint64_t uVertices =
            uint64_t{rect.uEndX - rect.uMinX + 2} * (rect.uEndZ - rect.uMinZ + 2);
        EXPECT_LE(pRenderer->GetStatistics().uUploadedBytes, uVertices * 10 * 2 + 2000);
        EXPECT_GT(pRenderer->GetStatistics().uUploadedBytes, 0U);
        EXPECT_GT(CountDifferent(edited, last), 0);
        const auto pFresh = MakeRenderer(64);
        EXPECT_EQ(CountDifferent(edited, Draw(view, pFresh.get())), 0);
    }
}

TEST_F(CTerrainRendererTest, NeighboursOfAnyDetailMeetWithoutGaps)
{
    MakeTerrain(256, GetRough);
    m_Settings.skyTop = m_Settings.skyBottom = SKY;
    std::mt19937 random(7);
    const auto roll = [&](float fFrom, float fTo)
    {
        return std::uniform_real_distribution<float>(fFrom, fTo)(random);
    };
    const auto pWhole = MakeRenderer();
    const auto pTiled = MakeRenderer(64);
    int nPictures = 0;
    for (int i = 0; i < 4000 && nPictures < 60; ++i)
    {
        SViewProjection view = Look({roll(0.0F, 2560.0F), roll(70.0F, 900.0F), roll(0.0F, 2560.0F)},
                                    roll(0.0F, 6.28F),
                                    roll(-1.5F, -0.5F));
        if (!ShowsOnlyGround(view))
        {
            continue;
        }
        ++nPictures;
        m_Settings.fQuality = roll(0.05F, 1.0F);
        m_Settings.fDetailPixels = roll(0.5F, 6.0F);
        for (CTerrainRenderer* pRenderer : {pWhole.get(), pTiled.get()})
        {
            const QImage picture = Draw(view, pRenderer);
            EXPECT_EQ(CountSky(picture), 0) << "picture " << nPictures;
        }
    }
    EXPECT_EQ(nPictures, 60);
}

TEST_F(CTerrainRendererTest, TilesMakeNoDifference)
{
    MakeTerrain(256, GetRough);
    m_Settings.fDetailPixels = 0.0F; // all that the terrain has
    const auto pTiled = MakeRenderer(64);
    const SViewProjection aViews[] = {LookDown(),
                                      Look({640.0F, 90.0F, 640.0F}, 0.9F, -0.3F),
                                      Look({1270, 300, 1290}, 3.9F, -1.2F)};
    for (const SViewProjection& view : aViews)
    {
        const QImage one = Draw(view);
        const QImage many = Draw(view, pTiled.get());
        // Smaller pictures of the normals end at a tile's border.
        EXPECT_LT(CountDifferent(one, many, 12), WIDTH * HEIGHT / 100);
        EXPECT_GT(CountDifferent(one, QImage(one.size(), one.format()), 12), WIDTH * HEIGHT / 2);
    }
}

TEST_F(CTerrainRendererTest, ALargeTerrainIsThereAtOnceAndComesInTileByTileForAllItsViews)
{
    MakeTerrain(1024, GetRough);
    const SViewProjection view = LookDown();
    const auto pCopies = std::make_shared<CTerrainCopies>(256);
    CTerrainRenderer first(pCopies);
    CTerrainRenderer second(pCopies);
    std::string strFault;
    ASSERT_TRUE(first.Initialize(strFault) && second.Initialize(strFault)) << strFault;
    m_Settings.skyTop = m_Settings.skyBottom = SKY;
    const QImage all = Draw(view, MakeRenderer(256).get());
    m_Settings.uMostNewBytes = 100000; // a third of a tile
    int nLast = CountDifferent(Draw(view, &first), all);
    EXPECT_GT(nLast, 0);
    int nFrames = 1;
    while (!pCopies->IsComplete() && nFrames < 100)
    {
        ++nFrames;
        CTerrainRenderer& renderer = nFrames % 2 == 0 ? second : first;
        const QImage picture = Draw(view, &renderer);
        EXPECT_EQ(CountSky(picture), CountSky(all)) << nFrames;
        const int nMissing = CountDifferent(picture, all);
        EXPECT_LE(nMissing, nLast + WIDTH) << "a little where tiles end";
        EXPECT_LT(renderer.GetStatistics().uUploadedBytes, 500000U);
        nLast = nMissing;
    }
    EXPECT_EQ(nLast, 0);
    EXPECT_GT(nFrames, 16);
    Raise({250, 100, 270, 120}, 30.0F);
    const QImage edited = Draw(view, &first);
    EXPECT_GT(first.GetStatistics().uUploadedBytes, 0U);
    EXPECT_EQ(CountDifferent(Draw(view, &second), edited), 0);
    EXPECT_EQ(second.GetStatistics().uUploadedBytes, 0U);
    // A change of everything is coarse at once, and whole, and comes in like a terrain.
    Raise({0, 0, 1025, 1025}, 100.0F);
    m_Settings.uMostNewBytes = CTerrainCopies::ALL_BYTES;
    const QImage raised = Draw(view, MakeRenderer(256).get());
    m_Settings.uMostNewBytes = 100000;
    for (nFrames = 0; nFrames == 0 || (!pCopies->IsComplete() && nFrames < 100); ++nFrames)
    {
        EXPECT_EQ(CountSky(Draw(view, &second)), CountSky(raised)) << nFrames;
        EXPECT_FALSE(nFrames == 0 && pCopies->HasTile(0, 0));
    }
    EXPECT_GT(nFrames, 16);
    EXPECT_EQ(CountDifferent(Draw(view, &second), raised), 0);
    first.Release(); // the other one goes on
    EXPECT_EQ(CountDifferent(Draw(view, &second), raised), 0);
}

TEST_F(CTerrainRendererTest, GroundThatIsThereMeetsTheCoarseWithoutGapsAndTakesEdits)
{
    MakeTerrain(1024, GetRough);
    m_Settings.skyTop = m_Settings.skyBottom = SKY;
    m_Settings.uMostNewBytes = 300000;
    m_Settings.fDetailPixels = 0.5F;
    std::string strFault;
    // Over the corner of four tiles: the finest patches beside those of every 32nd vertex.
    const SViewProjection view = Look({5000.0F, 200.0F, 5050.0F}, 0.8F, -1.2F);
    ASSERT_TRUE(ShowsOnlyGround(view));
    CTerrainRenderer renderer(std::make_shared<CTerrainCopies>(512, 32));
    ASSERT_TRUE(renderer.Initialize(strFault)) << strFault;
    QImage last = Draw(view, &renderer);
    for (int i = 0; i < 30 && !renderer.GetStatistics().bComplete; ++i)
    {
        Raise({530, 530, 600, 600}, 10.0F);
        const QImage picture = Draw(view, &renderer);
        EXPECT_EQ(CountSky(picture), 0) << i;
        EXPECT_GT(CountDifferent(picture, last), 0) << i;
        last = picture;
    }
    EXPECT_TRUE(renderer.GetStatistics().bComplete);
    m_Settings.uMostNewBytes = CTerrainCopies::ALL_BYTES;
    EXPECT_EQ(CountDifferent(last, Draw(view, MakeRenderer(512).get())), 0);
}

TEST_F(CTerrainRendererTest, QualityBoundsTheTriangles)
{
    MakeTerrain(512, GetRough);
    m_Settings.fDetailPixels = 0.1F;
    const auto pRenderer = MakeRenderer();
    const SViewProjection view = Look({100.0F, 200.0F, 100.0F}, 0.8F, -0.2F);
    uint32_t uBefore = std::numeric_limits<uint32_t>::max();
    for (const float fQuality : {1.0F, 0.5F, 0.1F})
    {
        m_Settings.fQuality = fQuality;
        Draw(view, pRenderer.get());
        const uint32_t uTriangles = pRenderer->GetStatistics().uTriangles;
        EXPECT_GT(uTriangles, 0U);
        EXPECT_LT(uTriangles, uBefore);
        // Twice 16 x 16 of them a patch; a third more where patches keep to their neighbours.
        EXPECT_LT(static_cast<float>(uTriangles), 512.0F * 420.0F * 1.34F * fQuality);
        uBefore = uTriangles;
    }
}

TEST_F(CTerrainRendererTest, FollowsLevelsThatComeAndGo)
{
    const auto pRenderer = MakeRenderer();
    MakeTerrain(32, GetFlat);
    const SViewProjection view = LookDown();
    const QImage flat = Draw(view, pRenderer.get());
    MakeTerrain(100, GetRough);
    const QImage rough = Draw(view, pRenderer.get());
    EXPECT_EQ(CountDifferent(rough, Draw(view)), 0);
    EXPECT_GT(CountDifferent(rough, flat), 1000);
    m_Engine->GetCWorld().CloseTerrain();
    const QImage sky = Draw(view, pRenderer.get());
    EXPECT_EQ(pRenderer->GetStatistics().uTriangles, 0U);
    EXPECT_GT(CountDifferent(sky, rough), 1000);
    MakeTerrain(32, GetFlat);
    EXPECT_EQ(CountDifferent(Draw(view, pRenderer.get()), flat), 0);
    // What the context lost is made again.
    pRenderer->Release();
    std::string strFault;
    ASSERT_TRUE(pRenderer->Initialize(strFault)) << strFault;
    EXPECT_EQ(CountDifferent(Draw(view, pRenderer.get()), flat), 0);
}

} // namespace
