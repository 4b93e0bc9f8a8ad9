#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/Reflection.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace
{

void ExpectNear(const SVec3& actual, const SVec3& expected)
{
    EXPECT_NEAR(actual.x, expected.x, 1e-4F);
    EXPECT_NEAR(actual.y, expected.y, 1e-4F);
    EXPECT_NEAR(actual.z, expected.z, 1e-4F);
}

TEST(CEngineHost, DebugLinesLiveForOneFrame)
{
    CEngineHost engine;
    const SVec3 aCorners[] = {{0, 0, 0}, {1, 0, 0}, {1, 0, 1}, {0, 0, 1}};

    const std::array<uint32_t, 3> aCases[] = {
        {0, 1, 0}, {1, 1, 0}, {2, 0, 1}, {2, 1, 1}, {3, 1, 3}, {4, 0, 3}, {4, 1, 4}, {4, 2, 3}};
    for (const auto& [uCount, uClosed, uLines] : aCases)
    {
        engine.BeginFrame();
        engine.DrawLines(uCount, aCorners, static_cast<EPolyline>(uClosed), {1, 0, 0, 1});
        EXPECT_EQ(engine.GetDebugLines().size(), uLines) << uCount << " closed " << uClosed;
    }
    engine.BeginFrame();
    engine.DrawLines(9, nullptr, POLYLINE_CLOSED, {});
    engine.DrawLines(4, aCorners, POLYLINE_CLOSED, {1, 0, 0, 1});
    engine.DrawLine({5, 6, 7}, {8, 9, 10}, {0, 0, 1, 0.5F});
    ASSERT_EQ(engine.GetDebugLines().size(), 5U);
    ExpectNear(engine.GetDebugLines()[3].from, {0, 0, 1});
    ExpectNear(engine.GetDebugLines()[3].to, {0, 0, 0});
    ExpectNear(engine.GetDebugLines()[4].to, {8, 9, 10});
    EXPECT_EQ(engine.GetDebugLines()[4].color.a, 0.5F);

    ASSERT_TRUE(engine.GetCWorld().CreateTerrain(2, 2, {1, 1, 1}));
    const auto pTexture = reinterpret_cast<ITexture*>(&engine); // only compared
    engine.GetWorld()->GetTerrain()->DrawProjectedTexture({}, pTexture);
    engine.BeginFrame();
    EXPECT_TRUE(engine.GetDebugLines().empty());
    EXPECT_EQ(engine.GetCWorld().GetCTerrain()->GetProjectedTexture().pTexture, nullptr);
}

TEST(CEngineHost, CamerasMoveInTheirOwnAxes)
{
    CEngineHost engine;
    CCamera* pCamera = engine.GetCWorld().GetCameraList().AddCamera(3);
    EXPECT_EQ(engine.GetWorld()->GetCameras()->GetCameraOfView(3), pCamera);
    EXPECT_EQ(engine.GetCWorld().GetCameraList().AddCamera(NO_VIEW), nullptr);

    // Yaw 0 looks along -z with +x at the right; each quarter turn goes clockwise.
    // Angles, the place after 10 forward, the place after 2 to the right, 3 up and 4 backward.
    const float fHalf = std::sqrt(0.5F);
    const std::tuple<float, float, SVec3, SVec3> aCases[] = {
        {0, 0, {0, 0, -10}, {2, 3, 4}},
        {90, 0, {10, 0, 0}, {-4, 3, 2}},
        {-180, 0, {0, 0, 10}, {-2, 3, -4}},
        {630, 0, {-10, 0, 0}, {4, 3, -2}},
        {0, -90, {0, -10, 0}, {2, 4, -3}},
        {90, 45, {10 * fHalf, 10 * fHalf, 0}, {-7 * fHalf, -1 * fHalf, 2}},
    };
    for (const auto& [fYaw, fPitch, afterDolly, afterStrafe] : aCases)
    {
        SCOPED_TRACE(testing::Message() << fYaw << ", " << fPitch);
        pCamera->SetAngles(fYaw, fPitch);
        pCamera->SetPosition({0, 0, 0});
        engine.DollyCamera(3, 10.0F);
        ExpectNear(pCamera->GetPosition(), afterDolly);
        pCamera->SetPosition({0, 0, 0});
        engine.StrafeCamera(3, {2, 3, 4});
        ExpectNear(pCamera->GetPosition(), afterStrafe);
    }
    pCamera->SetPosition({1, 2, 3});
    engine.StepCameraVertical(3, -10.0F);
    ExpectNear(pCamera->GetPosition(), {1, -8, 3});

    engine.GetCWorld().GetCameraList().RemoveCamera(3);
    engine.StepCameraVertical(3, 1.0F);
    engine.StrafeCamera(3, {1, 1, 1});
    engine.DollyCamera(NO_VIEW, 1.0F);
}

TEST(CCamera, LooksAtTheTargetFromTheSideAsked)
{
    CCamera camera;
    const SVec3 target{100, 20, 50};
    const float fHalf = std::sqrt(0.5F);

    // Each position is 30 away from the target, as at the start.
    const std::tuple<float, float, SVec3> aCases[] = {
        {1, 0, {130, 60, 50}},
        {-1, 1, {100 - 30 * fHalf, 60, 50 + 30 * fHalf}},
        {0, -1, {100, 60, 20}},
        {0, 0, {100, 60, 80}},
    };
    for (const auto& [fX, fZ, position] : aCases)
    {
        SCOPED_TRACE(testing::Message() << fX << ", " << fZ);
        camera.SetPosition({100, 60, 80});
        camera.LookFrom(target, fX, fZ);
        ExpectNear(camera.GetPosition(), position);
        camera.Dolly(50.0F); // 30 across, 40 down
        ExpectNear(camera.GetPosition(), target);
        EXPECT_GE(camera.GetYaw(), 0.0F);
        EXPECT_LT(camera.GetYaw(), 360.0F);
    }
    const float fYaw = camera.GetYaw();
    camera.Turn(-20.0F);
    camera.Turn(20.0F);
    EXPECT_NEAR(camera.GetYaw(), fYaw, 1e-3F);
    camera.SetAngles(0, 500);
    EXPECT_EQ(camera.GetPitch(), 90.0F);
}

TEST(CEngineHost, FindsMacrosAndObjectsByName)
{
    CEngineHost engine;
    ITextMacroTable* pMacros = engine.GetTextMacroTable();
    engine.GetMacros().Set("Level_Name", "canyon");
    EXPECT_STREQ(pMacros->Find("lEVEL_nAME"), "canyon");
    engine.GetMacros().Set("LEVEL_NAME", "");
    EXPECT_STREQ(pMacros->Find("level_name"), "");
    engine.GetMacros().Set("level_name", nullptr);
    engine.GetMacros().Set(nullptr, "x");
    engine.GetMacros().Set("", "x");
    EXPECT_EQ(pMacros->Find("Level_Name"), nullptr);
    EXPECT_EQ(pMacros->Find(""), nullptr);
    EXPECT_EQ(pMacros->Find(nullptr), nullptr);

    const auto pObject = reinterpret_cast<CRTTIObject*>(&engine); // only compared
    EXPECT_TRUE(engine.AddObject(-7, pObject));
    EXPECT_FALSE(engine.AddObject(-7, reinterpret_cast<CRTTIObject*>(pMacros)));
    EXPECT_FALSE(engine.AddObject(8, nullptr));
    EXPECT_EQ(engine.FindObjectById(-7), pObject);
    engine.RemoveObject(-7);
    EXPECT_EQ(engine.FindObjectById(-7), nullptr);
}

} // namespace
