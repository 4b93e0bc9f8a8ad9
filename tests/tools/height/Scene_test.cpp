#include "tools/height/Scene.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>

namespace
{

constexpr uint32_t VERTICES = 129; // 10 units apart

SHeightField MakeField(const std::function<float(float, float)>& height)
{
    SHeightField field;
    EXPECT_TRUE(field.Allocate(VERTICES, VERTICES));
    field.size = {1280.0F, 1000.0F, 1280.0F};
    for (uint32_t i = 0; i < field.GetCount(); ++i)
    {
        field.pHeights[i] = height(static_cast<float>(i % VERTICES) * 10.0F,
                                   static_cast<float>(i / VERTICES) * 10.0F);
    }
    return field;
}

SReliefPicture Look(const SHeightField& field, const SVec3& eye, const SVec3& target)
{
    return RenderScene(field, {eye, target, 160, 90});
}

int GetLight(const SReliefPicture& picture, uint32_t uX, uint32_t uY)
{
    const uint8_t* p = picture.rgb.data() + 3 * (size_t{uY} * picture.uWidth + uX);
    return p[0] + p[1] + p[2];
}

bool IsSky(const SReliefPicture& picture, uint32_t uX, uint32_t uY)
{
    const uint8_t* p = picture.rgb.data() + 3 * (size_t{uY} * picture.uWidth + uX);
    return p[2] > p[1];
}

// The mean colour of a part of the picture.
double GetMean(const SReliefPicture& picture, uint32_t uX, uint32_t uY, uint32_t uSide)
{
    double dSum = 0.0;
    for (uint32_t i = 0; i < uSide * uSide; ++i)
    {
        dSum += GetLight(picture, uX + i % uSide, uY + i / uSide);
    }
    return dSum / (uSide * uSide);
}

// A hill of 300 units, 260 to the right of the view and 900 ahead: its top is 55 pixels right of
// the middle and 31 above it, the horizon 9.5 above it.
TEST(Scene, ShowsWhatStandsWhereAboveTheHorizon)
{
    const SHeightField field = MakeField(
        [](float x, float z)
        { return 300.0F * std::exp(-((x - 900) * (x - 900) + (z - 500) * (z - 500)) / 6000); });
    const SReliefPicture picture = Look(field, {640.0F, 200.0F, 1400.0F}, {640.0F, 150.0F, 400.0F});
    ASSERT_EQ(picture.rgb.size(), size_t{160} * 90 * 3);
    EXPECT_TRUE(IsSky(picture, 135, 11));
    EXPECT_FALSE(IsSky(picture, 135, 18));
    EXPECT_TRUE(IsSky(picture, 25, 18)) << "left and right are exchanged";
    EXPECT_TRUE(IsSky(picture, 80, 32));
    EXPECT_FALSE(IsSky(picture, 80, 88));
}

TEST(Scene, TheSunOverTheLeftShoulderLeavesTheFarSideOfARidgeInItsShadow)
{
    const SHeightField field =
        MakeField([](float x, float) { return 150.0F * std::exp(-(x - 640) * (x - 640) / 2500); });
    const SReliefPicture picture = Look(field, {640.0F, 700.0F, 900.0F}, {640.0F, 0.0F, 640.0F});
    // The ridge runs through the middle; right of its foot it is flat, as it is on the left.
    EXPECT_LT(1.2 * GetMean(picture, 110, 40, 6), GetMean(picture, 44, 40, 6));
    const SReliefPicture back = Look(field, {640.0F, 700.0F, 380.0F}, {640.0F, 0.0F, 640.0F});
    EXPECT_LT(1.2 * GetMean(back, 110, 40, 6), GetMean(back, 44, 40, 6))
        << "the sun follows the camera";
}

SColor GetColor(const SReliefPicture& picture, uint32_t uX, uint32_t uY)
{
    const uint8_t* p = picture.rgb.data() + 3 * (size_t{uY} * picture.uWidth + uX);
    return {static_cast<float>(p[0]), static_cast<float>(p[1]), static_cast<float>(p[2]), 1.0F};
}

// Straight ahead of a camera that looks steeply down on a plane that rises to the east. A tower and
// a pit behind it make the range of heights.
SColor GetGroundColor(float fHeight, float fTangent)
{
    const SHeightField field = MakeField(
        [=](float x, float z)
        {
            const bool bBehind = z > 1200.0F;
            return bBehind && x > 1200.0F ? 1000.0F
                   : bBehind && x < 80.0F ? 0.0F
                                          : fHeight + (x - 640.0F) * fTangent;
        });
    return GetColor(
        Look(field, {640.0F, fHeight + 300.0F, 660.0F}, {640.0F, fHeight, 640.0F}), 80, 45);
}

TEST(Scene, GroundIsTintedByHeightAndSlopeAndTheSkyHasNoBands)
{
    const SColor low = GetGroundColor(0.0F, 0.0F);
    const SColor high = GetGroundColor(720.0F, 0.0F);
    const SColor snow = GetGroundColor(980.0F, 0.0F);
    const SColor steep = GetGroundColor(400.0F, -0.6F); // towards the sun
    EXPECT_GT(low.g, low.r);
    EXPECT_GT(high.r, high.g);
    EXPECT_GT(snow.b, high.b + 60.0F);
    EXPECT_LT(steep.r - steep.b, high.r - high.b) << "rock is grey";

    const SReliefPicture sky =
        Look(MakeField([](float, float) { return 0.0F; }), {640, 10, 640}, {640, 40, 560});
    double dAbove = 0.0;
    int nMixed = 0;
    for (uint32_t y = 0; y < 60; ++y)
    {
        double dMean = 0.0;
        float fLeast = 255.0F;
        float fMost = 0.0F;
        for (uint32_t x = 60; x < 100; ++x)
        {
            const float fRed = GetColor(sky, x, y).r;
            dMean += static_cast<double>(fRed) / 40.0;
            fLeast = std::min(fLeast, fRed);
            fMost = std::max(fMost, fRed);
        }
        EXPECT_GT(dMean, dAbove - 0.1) << y;
        nMixed += fMost > fLeast ? 1 : 0;
        dAbove = dMean;
    }
    EXPECT_GT(nMixed, 30);
}

TEST(Scene, DistanceIsPaler)
{
    const SReliefPicture picture = Look(MakeField([](float, float) { return 0.0F; }),
                                        {640.0F, 150.0F, 1400.0F},
                                        {640.0F, 0.0F, 700.0F});
    EXPECT_GT(GetMean(picture, 76, 30, 8), GetMean(picture, 76, 80, 8));
}

// A camera anywhere draws something, whatever the heights are.
TEST(Scene, TakesEveryPlaceAndHeight)
{
    const float fNaN = std::numeric_limits<float>::quiet_NaN();
    const SHeightField wild =
        MakeField([fNaN](float x, float z) { return x < 300   ? fNaN
                                                    : z < 300 ? 1e30F
                                                              : -1e30F; });
    for (const SVec3& eye : {SVec3{640, -50, 640}, SVec3{1e9F, 1e9F, 1e9F}, SVec3{10, 0, 10}})
    {
        EXPECT_EQ(Look(wild, eye, {600, 0, 0}).rgb.size(), size_t{160} * 90 * 3);
    }
}

} // namespace
