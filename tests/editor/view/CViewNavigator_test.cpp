#include "editor/view/CViewNavigator.h"
#include "editor/view/Vectors.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CCamera.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <random>

namespace
{

constexpr float NOT_A_NUMBER = std::numeric_limits<float>::quiet_NaN();
constexpr float INFINITE = std::numeric_limits<float>::infinity();
constexpr std::pair<int, int> SIZES[] = {{1, 1}, {90, 900}, {641, 479}, {1920, 1080}, {4000, 3000}};

float Random(std::mt19937& random, float fMin, float fMax)
{
    return fMin + (fMax - fMin) * static_cast<float>(random() % 100003) / 100002.0F;
}

std::unique_ptr<CTerrain> MakeHills(float fHeight)
{
    SHeightField field;
    field.Allocate(129, 65);
    field.size = {512, 200, 256};
    for (uint32_t z = 0; z < 65; ++z)
    {
        for (uint32_t x = 0; x < 129; ++x)
        {
            const float fShape =
                std::sin(static_cast<float>(x) * 0.2F) * std::cos(static_cast<float>(z) * 0.15F);
            field.pHeights[z * 129 + x] = fHeight * (1.0F + fShape);
        }
    }
    return std::make_unique<CTerrain>(std::move(field));
}

bool Near(const SVec3& a, const SVec3& b)
{
    return a.x == b.x && a.y == b.y && a.z == b.z;
}

// A view, its terrain and what must hold at any time.
struct SView
{
    SView(EViewKind eKind, int iWidth, int iHeight)
        : navigator(eKind == EViewKind::Perspective ? &camera : nullptr, eKind)
        , fWidth(static_cast<float>(iWidth))
        , fHeight(static_cast<float>(iHeight))
    {
        navigator.SetSize(iWidth, iHeight);
        navigator.FrameTerrain(pTerrain.get());
    }

    SViewProjection Get() const { return navigator.GetProjection(pTerrain.get()); }

    void ExpectAt(const SVec3& point, float fX, float fY) const
    {
        float fAtX = 0.0F;
        float fAtY = 0.0F;
        ASSERT_TRUE(Get().Project(point, fAtX, fAtY));
        EXPECT_NEAR(fAtX, fX, 1.0F);
        EXPECT_NEAR(fAtY, fY, 1.0F);
    }

    void ExpectSound() const
    {
        const SViewProjection view = Get();
        float matrix[16];
        view.GetMatrix(matrix);
        for (const float fValue : matrix)
        {
            ASSERT_TRUE(std::isfinite(fValue));
        }
        EXPECT_LT(view.fNear, view.fFar);
        EXPECT_TRUE(view.bOrthographic || view.fNear > 0.0F);
        EXPECT_TRUE(camera.GetYaw() >= 0.0F && camera.GetYaw() <= 360.0F);
        EXPECT_TRUE(camera.GetPitch() >= -90.0F && camera.GetPitch() <= 90.0F);
        SVec3 ground;
        const bool bOver =
            pTerrain->PickRay({view.position.x, 1e6F, view.position.z}, {0, -1, 0}, ground);
        EXPECT_TRUE(!bOver || view.position.y > ground.y) << "below the ground";
        // What is in the picture is between near and far plane, in a view from above also where
        // the terrain was as high or as low as it may be a moment ago.
        for (uint32_t i = 0; i < 129 * 65; i += 7)
        {
            const bool bWas = view.bOrthographic && i % 2 == 0;
            const SVec3 at = {
                4.0F * static_cast<float>(i % 129),
                bWas ? pTerrain->GetSize().y * static_cast<float>(i / 2 % 2)
                     : pTerrain->GetHeightData()[i],
                4.0F * static_cast<float>(i / 129)}; // NOLINT(bugprone-integer-division): the row
            const float fW = matrix[3] * at.x + matrix[7] * at.y + matrix[11] * at.z + matrix[15];
            const float fDepth =
                matrix[2] * at.x + matrix[6] * at.y + matrix[10] * at.z + matrix[14];
            float fX = 0.0F;
            float fY = 0.0F;
            if (view.Project(at, fX, fY) && fX >= 0.0F && fX <= fWidth && fY >= 0.0F &&
                fY <= fHeight)
            {
                EXPECT_LE(std::fabs(fDepth), fW * 1.0001F) << "vertex " << i;
            }
        }
    }

    CCamera camera;
    CViewNavigator navigator;
    std::unique_ptr<CTerrain> pTerrain = MakeHills(30.0F);
    float fWidth;
    float fHeight;
};

TEST(CViewNavigator, WhatIsGrabbedStaysUnderTheCursor)
{
    std::mt19937 random(17);
    for (const auto& [iWidth, iHeight] : SIZES)
    {
        for (const EViewKind eKind : VIEW_KINDS)
        {
            SCOPED_TRACE(std::to_string(iWidth) + GetViewName(eKind));
            int nStopped = 0;
            int nTurned = 0;
            for (int i = 0; i < 120; ++i)
            {
                SView view(eKind, iWidth, iHeight);
                const CTerrain* pTerrain = view.pTerrain.get();
                view.camera.Turn(Random(random, 0, 360));
                view.navigator.Frame(pTerrain, {{0, 0, 0}, {512, 60, 256}});
                const float fX = Random(random, 0, view.fWidth);
                const float fMiddle = view.fHeight * 0.5F;
                const float fReach = std::min(view.fWidth, view.fHeight) * 0.4F;
                const float fY = fMiddle + Random(random, -fReach, fReach);
                view.navigator.Zoom(pTerrain, fX, fY, Random(random, -3, 8));
                SVec3 under;
                const bool bGround = view.navigator.Pick(pTerrain, fX, fY, under);
                view.navigator.Zoom(pTerrain, fX, fY, Random(random, -5, 5));
                view.ExpectSound();
                if (!bGround)
                {
                    continue;
                }
                view.ExpectAt(under, fX, fY);
                view.navigator.StartPan(pTerrain, fX, fY);
                const float fToX = Random(random, 0, view.fWidth);
                const float fToY = fMiddle + Random(random, -fReach, fReach);
                const SVec3 before = view.Get().position;
                view.navigator.Pan(pTerrain, fToX, fToY);
                view.ExpectSound();
                const bool bStopped = Near(before, view.Get().position);
                nStopped += bStopped ? 1 : 0;
                view.ExpectAt(under, bStopped ? fX : fToX, bStopped ? fY : fToY);
                view.navigator.StartOrbit(pTerrain, fToX, fToY);
                SVec3 pivot;
                const bool bPivot = view.navigator.Pick(pTerrain, fToX, fToY, pivot);
                for (int iStep = 0; bPivot && iStep < 40; ++iStep)
                {
                    const float fYaw = view.camera.GetYaw();
                    view.navigator.Orbit(
                        pTerrain, Random(random, -99, 99), Random(random, -99, 99));
                    view.ExpectAt(pivot, fToX, fToY);
                    nTurned += fYaw != view.camera.GetYaw() ? 1 : 0;
                }
                view.ExpectSound();
            }
            EXPECT_LT(nStopped, 30);
            EXPECT_EQ(nTurned > 500, eKind == EViewKind::Perspective);
        }
    }
}

TEST(CViewNavigator, OrbitTurnsHalfADegreeAPixelUpToTheVertical)
{
    SView view(EViewKind::Perspective, 640, 480);
    view.camera.SetAngles(0.0F, -35.0F);
    view.navigator.Frame(view.pTerrain.get(), {{0, 0, 0}, {512, 60, 256}});
    view.navigator.StartOrbit(view.pTerrain.get(), 320, 240);
    view.navigator.Orbit(view.pTerrain.get(), 10, 20);
    EXPECT_NEAR(view.camera.GetYaw(), 5.0F, 1e-3);
    EXPECT_NEAR(view.camera.GetPitch(), -45.0F, 1e-3);
    view.navigator.Orbit(view.pTerrain.get(), -30, 2000);
    EXPECT_NEAR(view.camera.GetYaw(), 350.0F, 1e-3);
    EXPECT_EQ(view.camera.GetPitch(), -90.0F);
    view.navigator.Orbit(view.pTerrain.get(), 0, -2000); // from below: the ground is in the way
    EXPECT_EQ(view.camera.GetPitch(), -90.0F);
}

TEST(CViewNavigator, ZoomEndsBeforeTheGroundInFrontAndBehind)
{
    for (const auto& [fX, fY] : {std::pair{320.0F, 240.0F}, {320.0F, 200.0F}, {240.0F, 300.0F}})
    {
        SView view(EViewKind::Perspective, 640, 480);
        for (int i = 0; i < 100; ++i)
        {
            view.navigator.Zoom(view.pTerrain.get(), fX, fY, 1.5F);
        }
        view.ExpectSound();
        SVec3 hit;
        ASSERT_TRUE(view.navigator.Pick(view.pTerrain.get(), fX, fY, hit));
        const SVec3 at = view.camera.GetPosition();
        EXPECT_NEAR(std::hypot(at.x - hit.x, at.y - hit.y, at.z - hit.z), 1.0F, 0.1F)
            << "a quarter of a cell";
        for (int i = 0; i < 100; ++i)
        {
            view.navigator.Zoom(view.pTerrain.get(), fX, fY, -1.0F);
        }
        view.ExpectSound();
    }
    // In a valley, the back to a hill: out again only as far as the hill.
    SView view(EViewKind::Perspective, 640, 480);
    view.camera.SetAngles(90.0F, -5.0F);
    view.camera.SetPosition({4.0F * 24, 20.0F, 8.0F});
    SVec3 ground;
    ASSERT_TRUE(view.navigator.Pick(view.pTerrain.get(), 320, 240, ground));
    view.navigator.Zoom(view.pTerrain.get(), 320, 240, -30.0F);
    view.ExpectSound();
    EXPECT_LT(view.camera.GetPosition().x, 4.0F * 24);
    EXPECT_GT(view.camera.GetPosition().x, 4.0F * 12);
}

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

TEST(CViewNavigator, FlyingSlidesAlongTheGroundAndDoesNotDependOnTheFrameRate)
{
    std::mt19937 random(31);
    SView view(EViewKind::Perspective, 640, 480);
    for (int i = 0; i < 3000; ++i)
    {
        view.camera.Turn(Random(random, -20, 20));
        const bool bHome = view.camera.GetPosition().x < 0 || view.camera.GetPosition().x > 512 ||
                           view.camera.GetPosition().z < 0 || view.camera.GetPosition().z > 256;
        if (bHome)
        {
            view.navigator.FrameTerrain(view.pTerrain.get());
        }
        SFlyKeys keys;
        keys.bForward = true;
        keys.bDown = i % 5 != 0;
        keys.bFast = i % 7 == 0;
        EXPECT_TRUE(view.navigator.Fly(view.pTerrain.get(), keys, Random(random, 0.001F, 0.3F)));
        if (i % 10 == 0)
        {
            view.ExpectSound();
        }
    }
    // From beside the terrain and below it there is no way up through it.
    SView low(EViewKind::Perspective, 640, 480);
    low.camera.SetAngles(90.0F, 0.0F);
    low.camera.SetPosition({-1.0F, -50.0F, 100.0F});
    for (int i = 0; i < 50; ++i)
    {
        low.navigator.Fly(low.pTerrain.get(), {true}, 0.02F);
    }
    EXPECT_EQ(low.camera.GetPosition().y, -50.0F);
    low.ExpectSound();
    // Level over level ground the height stays, and so the speed.
    SView once(EViewKind::Perspective, 640, 480);
    SView often(EViewKind::Perspective, 640, 480);
    for (SView* pView : {&once, &often})
    {
        pView->pTerrain = MakeHills(0.0F);
        pView->camera.SetAngles(90.0F, 0.0F);
        pView->camera.SetPosition({100, 50, 100});
    }
    SFlyKeys keys;
    keys.bForward = true;
    once.navigator.Fly(once.pTerrain.get(), keys, 0.2F);
    for (int i = 0; i < 20; ++i)
    {
        often.navigator.Fly(often.pTerrain.get(), keys, 0.01F);
    }
    EXPECT_GT(once.camera.GetPosition().x, 101.0F);
    EXPECT_NEAR(once.camera.GetPosition().x, often.camera.GetPosition().x, 0.01F);
    EXPECT_FALSE(once.navigator.Fly(once.pTerrain.get(), SFlyKeys(), 0.2F));
}

TEST(CViewNavigator, FlyingWithoutACameraFollowsThePicture)
{
    SFlyKeys keys;
    keys.bForward = true;
    keys.bRight = true;
    const std::pair<EViewKind, SVec3> ways[] = {
        {EViewKind::Top, {1, 0, -1}}, {EViewKind::Front, {1, 1, 0}}, {EViewKind::Side, {0, 1, -1}}};
    for (const auto& [eKind, way] : ways)
    {
        SView flat(eKind, 640, 480);
        const SVec3 from = flat.Get().position;
        EXPECT_TRUE(flat.navigator.Fly(flat.pTerrain.get(), keys, 0.1F));
        const SVec3 to = flat.Get().position;
        const float fStep = std::max(std::fabs(to.x - from.x), std::fabs(to.z - from.z));
        EXPECT_GT(fStep, 1.0F) << GetViewName(eKind);
        EXPECT_NEAR(to.x - from.x, way.x * fStep, 1e-3F) << GetViewName(eKind);
        EXPECT_NEAR(to.y - from.y, way.y * fStep, 1e-3F) << GetViewName(eKind);
        EXPECT_NEAR(to.z - from.z, way.z * fStep, 1e-3F) << GetViewName(eKind);
    }
}

TEST(CViewNavigator, ComesBackToWhereItLookedFromAndNeverIntoTheGround)
{
    for (const EViewKind eKind : VIEW_KINDS)
    {
        SCOPED_TRACE(GetViewName(eKind));
        SView view(eKind, 640, 480);
        view.camera.SetAngles(70.0F, -20.0F);
        view.navigator.Zoom(view.pTerrain.get(), 200, 300, 3.0F);
        const SViewLook look = view.navigator.GetLook();
        float before[16];
        view.Get().GetMatrix(before);
        view.camera.SetAngles(0.0F, -90.0F);
        view.navigator.FrameTerrain(view.pTerrain.get());
        SViewLook other = look;
        other.eKind = eKind == EViewKind::Top ? EViewKind::Front : EViewKind::Top;
        SViewLook broken = look;
        broken.at.x = NOT_A_NUMBER;
        for (const SViewLook& no : {other, broken})
        {
            const SVec3 at = view.Get().position;
            view.navigator.SetLook(view.pTerrain.get(), no);
            EXPECT_TRUE(Near(view.Get().position, at));
        }
        view.navigator.SetLook(view.pTerrain.get(), look);
        float after[16];
        view.Get().GetMatrix(after);
        EXPECT_TRUE(std::equal(std::begin(before), std::end(before), after));
        view.pTerrain = MakeHills(90.0F); // the ground has risen since
        view.navigator.SetLook(view.pTerrain.get(),
                               {.eKind = eKind, .at = {256, 10, 128}, .fHalfHeight = 50});
        view.ExpectSound();
    }
}

TEST(CViewNavigator, NonsenseAndNoLevelChangeNothingForTheWorse)
{
    for (const EViewKind eKind : VIEW_KINDS)
    {
        SView view(eKind, -5, 0);
        view.fWidth = 1.0F;
        view.fHeight = 1.0F;
        const SVec3 before = view.Get().position;
        view.navigator.Orbit(view.pTerrain.get(), 5, 5); // none was started
        view.navigator.Pan(view.pTerrain.get(), 5, 5);
        for (const float fBad : {NOT_A_NUMBER, INFINITE, -INFINITE})
        {
            const CTerrain* pTerrain = view.pTerrain.get();
            view.navigator.StartPan(pTerrain, 0.5F, 0.5F);
            view.navigator.Pan(pTerrain, fBad, 0.5F);
            view.navigator.StartOrbit(pTerrain, 0.5F, 0.5F);
            view.navigator.Orbit(pTerrain, fBad, 1);
            view.navigator.Zoom(pTerrain, 0.5F, 0.5F, fBad);
            view.navigator.Zoom(pTerrain, 0.5F, fBad, 1);
            view.navigator.Fly(pTerrain, {true}, -std::fabs(fBad));
            view.navigator.FrameSpot(pTerrain, {0, 0, 0}, fBad);
            view.navigator.Frame(pTerrain, {{fBad, 0, 0}, {1, 1, 1}});
        }
        EXPECT_TRUE(Near(view.Get().position, before));
        for (int i = 0; i < 400; ++i)
        {
            view.navigator.Zoom(nullptr, 0.9F, 0.1F, i < 200 ? -30.0F : 30.0F);
            view.navigator.StartPan(nullptr, 0.1F, 0.2F);
            view.navigator.Pan(nullptr, 1e6F, -1e6F);
            view.navigator.StartOrbit(nullptr, 0.1F, 0.2F);
            view.navigator.Orbit(nullptr, 1e30F, -1e30F);
            view.navigator.Fly(nullptr, {true}, 0.1F);
        }
        view.navigator.FrameSpot(nullptr, {5, 5, 5}, 0.0F);
        view.navigator.FrameTerrain(view.pTerrain.get());
        view.ExpectSound();
    }
}

} // namespace
