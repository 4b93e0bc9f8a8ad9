#include "tests/editor/view/NavigatorFixture.h"

#include <algorithm>
#include <string>

namespace
{

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

TEST(CViewNavigator, TheEyeStaysAboveTheEdgeWhereItTurnsBesideTheTerrain)
{
    std::mt19937 random(7);
    for (int i = 0; i < 200; ++i)
    {
        SView view(EViewKind::Perspective, 640, 480);
        const CTerrain* pTerrain = view.pTerrain.get();
        view.camera.SetPosition({Random(random, -60, 60), 70, Random(random, 0, 256)});
        view.camera.SetAngles(Random(random, 0, 360), -40.0F);
        view.navigator.StartOrbit(pTerrain, Random(random, 0, 640), Random(random, 240, 480));
        for (int iStep = 0; iStep < 40; ++iStep)
        {
            view.navigator.Orbit(pTerrain, Random(random, -30, 30), Random(random, -40, 10));
            const SVec3 at = view.camera.GetPosition();
            ASSERT_GE(at.y, pTerrain->GetHeightAt(at.x, at.z)) << at.x << " " << at.z;
        }
    }
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
                               {.eKind = eKind, .at = {256, 10, 128}, .fHalfSide = 50});
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
