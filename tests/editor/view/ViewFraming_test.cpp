#include "tests/editor/view/NavigatorFixture.h"

namespace
{

TEST(CViewNavigator, FramedBoxesFillThePictureFromTheSameDirection)
{
    std::mt19937 random(29);
    for (const auto& [iWidth, iHeight] : SIZES)
    {
        for (int i = 0; i < 60; ++i)
        {
            SView view(VIEW_KINDS[i % 4], iWidth, iHeight);
            const float fYaw = Random(random, 0, 359);
            view.camera.SetAngles(fYaw, i % 3 == 0 ? 70.0F : Random(random, -90, -20));
            const float fPitch = view.camera.GetPitch();
            const SVec3 at = {Random(random, 0, 512), 40, Random(random, 0, 256)};
            const SVec3 half = {
                Random(random, 9, 90), Random(random, 9, 20), Random(random, 9, 90)};
            const SExtents box = {{at.x - half.x, at.y - half.y, at.z - half.z},
                                  {at.x + half.x, at.y + half.y, at.z + half.z}};
            view.navigator.Frame(view.pTerrain.get(), box);
            view.ExpectSound();
            float fFull = 0.0F;
            for (int iCorner = 0; iCorner < 8; ++iCorner)
            {
                float fX = 0.0F;
                float fY = 0.0F;
                ASSERT_TRUE(view.Get().Project({(iCorner & 1) != 0 ? box.max.x : box.min.x,
                                                (iCorner & 2) != 0 ? box.max.y : box.min.y,
                                                (iCorner & 4) != 0 ? box.max.z : box.min.z},
                                               fX,
                                               fY));
                fFull = std::max({fFull,
                                  std::fabs(2.0F * fX / view.fWidth - 1.0F),
                                  std::fabs(2.0F * fY / view.fHeight - 1.0F)});
            }
            EXPECT_NEAR(fFull, 1.0F / 1.05F, 0.01F);
            EXPECT_NEAR(view.camera.GetYaw(), fYaw, 1e-3);
            EXPECT_TRUE(view.camera.GetPitch() == fPitch || fPitch > 0.0F);
        }
    }
}

// Flat or steep, at any shape of terrain and view: two opposite edges of the view are nearly
// touched. It stays so when the view gets another size, until somebody moves it.
TEST(CViewNavigator, TheWholeTerrainFillsTheView)
{
    for (const SVec3& size : {SVec3{1000, 5, 1000}, SVec3{1000, 900, 1000}, SVec3{4000, 100, 800}})
    {
        SHeightField field;
        field.Allocate(33, 33);
        field.size = size;
        field.pHeights[400] = size.y; // a peak
        const CTerrain terrain(std::move(field));
        const SExtents box = {{0, 0, 0}, size};
        for (const auto& [iWidth, iHeight] : {std::pair(1800, 600), {800, 600}, {300, 900}})
        {
            for (const bool bTop : {false, true})
            {
                SCOPED_TRACE(testing::Message() << size.x << ' ' << size.y << ", " << iWidth
                                                << " x " << iHeight << ", top " << bTop);
                CCamera camera;
                CViewNavigator navigator(bTop ? nullptr : &camera);
                navigator.SetSize(500, 500);
                navigator.FrameTerrain(&terrain);
                navigator.Resize(&terrain, iWidth, iHeight);
                float low[2] = {1e9F, 1e9F};
                float high[2] = {-1e9F, -1e9F};
                for (int i = 0; i < 8; ++i)
                {
                    float at[2];
                    ASSERT_TRUE(
                        navigator.GetProjection(&terrain).Project(GetCorner(box, i), at[0], at[1]));
                    for (const int iAxis : {0, 1})
                    {
                        low[iAxis] = std::min(low[iAxis], at[iAxis]);
                        high[iAxis] = std::max(high[iAxis], at[iAxis]);
                    }
                }
                const float fWide = (high[0] - low[0]) / static_cast<float>(iWidth);
                const float fTall = (high[1] - low[1]) / static_cast<float>(iHeight);
                EXPECT_GE(std::max(fWide, fTall), 0.94F);
                EXPECT_TRUE(low[0] >= 0.0F && low[1] >= 0.0F && fWide < 1.0F && fTall < 1.0F);

                navigator.Zoom(&terrain, 100, 100, 1.0F);
                const SVec3 moved = navigator.GetProjection(&terrain).position;
                navigator.Resize(&terrain, 640, 640);
                EXPECT_TRUE(Near(navigator.GetProjection(&terrain).position, moved));
            }
        }
    }
}

} // namespace
