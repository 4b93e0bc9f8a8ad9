#include "engine/terrain/Relief.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>

namespace
{

using FHeight = std::function<float(uint32_t, uint32_t)>;

std::vector<float> MakeHeights(uint32_t uSizeX, uint32_t uSizeZ, const FHeight& height)
{
    std::vector<float> heights;
    for (uint32_t i = 0; i < uSizeX * uSizeZ; ++i)
    {
        heights.push_back(height(i % uSizeX, i / uSizeX));
    }
    return heights;
}

struct SPixel
{
    int r = 0;
    int g = 0;
    int b = 0;

    int GetSum() const { return r + g + b; }

    bool operator==(const SPixel&) const = default;
};

SPixel GetPixel(const SReliefPicture& picture, uint32_t uX, uint32_t uY)
{
    const uint8_t* p = picture.rgb.data() + 3 * (size_t{uY} * picture.uWidth + uX);
    return {p[0], p[1], p[2]};
}

SReliefPicture Draw(const std::vector<float>& heights,
                    uint32_t uSizeX,
                    uint32_t uSizeZ,
                    const SVec3& size,
                    const SReliefOptions& options)
{
    SReliefPicture picture;
    EXPECT_TRUE(RenderRelief(heights.data(), uSizeX, uSizeZ, size, options, picture));
    EXPECT_EQ(picture.rgb.size(), size_t{picture.uWidth} * picture.uHeight * 3);
    return picture;
}

TEST(Relief, LightComesFromTheNorthWestWhichIsTheUpperLeft)
{
    // A pyramid in a plain; its tint is the same on all sides at equal height.
    const auto pyramid = [](uint32_t x, uint32_t z)
    {
        const int iAway =
            std::max(std::abs(static_cast<int>(x) - 40), std::abs(static_cast<int>(z) - 40));
        return static_cast<float>(std::max(0, 20 - iAway));
    };
    const SReliefPicture picture =
        Draw(MakeHeights(81, 81, pyramid), 81, 81, {80, 50, 80}, {0, 0.0F, 20.0F});
    EXPECT_GT(GetPixel(picture, 30, 40).GetSum(), GetPixel(picture, 50, 40).GetSum() + 60);
    EXPECT_GT(GetPixel(picture, 40, 30).GetSum(), GetPixel(picture, 40, 50).GetSum() + 60);
    EXPECT_EQ(GetPixel(picture, 2, 2), GetPixel(picture, 78, 60)) << "flat ground is one colour";
    EXPECT_GT(GetPixel(picture, 2, 2).g, GetPixel(picture, 2, 2).r + 20) << "lowland is green";
}

TEST(Relief, AFixedRangeMakesPicturesComparable)
{
    std::vector<float> heights =
        MakeHeights(65, 65, [](uint32_t x, uint32_t z) { return static_cast<float>(x * z % 23); });
    const SReliefOptions options{0, 0.0F, 40.0F};
    const SReliefPicture before = Draw(heights, 65, 65, {640, 100, 640}, options);
    heights[20 * 65 + 20] = 90.0F; // beyond the range
    const SReliefPicture after = Draw(heights, 65, 65, {640, 100, 640}, options);
    for (uint32_t i = 0; i < 65 * 65; ++i)
    {
        const bool bNear = std::abs(static_cast<int>(i % 65) - 20) <= 1 &&
                           std::abs(static_cast<int>(i / 65) - 20) <= 1;
        const bool bSame = GetPixel(before, i % 65, i / 65) == GetPixel(after, i % 65, i / 65);
        EXPECT_TRUE(bSame || bNear) << i;
    }
    EXPECT_FALSE(GetPixel(before, 20, 20) == GetPixel(after, 20, 20));
}

TEST(Relief, SizeKeepsTheTerrainsProportionsAndSmallPicturesShowMeans)
{
    const std::tuple<SVec3, uint32_t, uint32_t, uint32_t> aCases[] = {
        {{100, 10, 100}, 0, 101, 51},
        {{100, 10, -50}, 40, 40, 20},
        {{-300, 10, 400}, 1000, 750, 1000},
        {{1, 10, 1e30F}, 64, 2, 64},
        {{1e-45F, 10, 1e-45F}, 16, 16, 16},
    };
    const std::vector<float> heights = MakeHeights(
        101, 51, [](uint32_t x, uint32_t z) { return (x + z) % 2 == 0 ? 0.0F : 10.0F; });
    for (const auto& [size, uSide, uWidth, uHeight] : aCases)
    {
        const SReliefPicture picture = Draw(heights, 101, 51, size, {uSide, 0.0F, 10.0F});
        EXPECT_EQ(picture.uWidth, uWidth) << uSide;
        EXPECT_EQ(picture.uHeight, uHeight) << uSide;
    }
    // Sixteen vertices and more under a pixel: the checkerboard melts to the colour of its mean.
    const SReliefPicture mean = Draw(heights, 101, 51, {1e6F, 10, 5e5F}, {20, 0.0F, 10.0F});
    const SReliefPicture flat =
        Draw(std::vector<float>(101 * 51, 5.0F), 101, 51, {1e6F, 10, 5e5F}, {20, 0.0F, 10.0F});
    EXPECT_NEAR(GetPixel(mean, 10, 5).GetSum(), GetPixel(flat, 10, 5).GetSum(), 30);
}

TEST(Relief, RefusesWhatIsNoTerrainAndBearsWhatIsNoNumber)
{
    std::vector<float> heights(9, 1.0F);
    SReliefPicture picture;
    EXPECT_FALSE(RenderRelief(nullptr, 3, 3, {1, 1, 1}, {}, picture));
    EXPECT_FALSE(RenderRelief(heights.data(), 1, 9, {1, 1, 1}, {}, picture));
    EXPECT_FALSE(RenderRelief(heights.data(), 3, 3, {0, 1, 1}, {}, picture));
    EXPECT_FALSE(RenderRelief(heights.data(), 3, 3, {1, 1, 1}, {16386, 0, 0}, picture));
    EXPECT_TRUE(picture.rgb.empty());
    heights[4] = std::numeric_limits<float>::quiet_NaN();
    heights[8] = std::numeric_limits<float>::infinity();
    EXPECT_TRUE(RenderRelief(heights.data(), 3, 3, {1, 1, 1}, {}, picture));
    EXPECT_EQ(picture.rgb.size(), 27U);
}

} // namespace
