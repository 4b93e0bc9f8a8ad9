// What a stroke does to one texel.

#include "tellur/painting/CTellur2DFunctionMul.h"
#include "tellur/painting/CTellur2DFunctionSet.h"
#include "tests/support/CNumbers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <vector>

namespace
{

using Texel = std::array<uint8_t, 4>;

constexpr uint32_t FREE = 0x001;
constexpr uint32_t RED = 0x010;
constexpr uint32_t GREEN = 0x040;
constexpr uint32_t BLUE = 0x100;
constexpr uint32_t ALPHA = 0x400;
constexpr uint32_t ALL_EDITABLE = 0x1FF;
constexpr uint32_t PALETTE = 0x1FE;

struct SCase
{
    const char* pszName;
    uint32_t uMask;
    std::array<float, 4> color;
    Texel before;
    float fWeight;
    float fStrength;
    Texel after;
    bool bChanged;
};

void Check(CTellur2DFunction& function, const SCase& one)
{
    SCOPED_TRACE(one.pszName);
    for (const bool bMaskFirst : {true, false}) // each of the two calls counts anew
    {
        if (bMaskFirst)
        {
            function.SetChannelMask(one.uMask);
        }
        function.SetColor(one.color.data());
        function.SetChannelMask(one.uMask);
        Texel texel = one.before;
        EXPECT_EQ(function.Apply(texel.data(), one.fWeight, one.fStrength, 7), one.bChanged);
        EXPECT_EQ(texel, one.after);
    }
}

// clang-format off
const SCase SET_CASES[] = {
    {"whole", ALL_EDITABLE, {1, 0.5F, 0, 1}, {0, 0, 200, 9}, 1, 1, {255, 127, 0, 9}, true},
    {"half, truncated", ALL_EDITABLE, {1, 0, 0, 1}, {0, 255, 7, 9}, 0.5F, 1, {127, 128, 4, 9}, true},
    {"weight times strength", FREE | RED, {1, 1, 1, 1}, {0, 1, 2, 3}, 0.5F, 0.5F, {63, 1, 2, 3}, true},
    {"green alone", FREE | GREEN, {0.2F, 0.4F, 0.6F, 0}, {1, 1, 1, 1}, 1, 1, {1, 102, 1, 1}, true},
    {"blue alone", FREE | BLUE, {0.2F, 0.4F, 0.6F, 0}, {1, 1, 1, 1}, 1, 1, {1, 1, 153, 1}, true},
    {"alpha takes red", FREE | ALPHA, {0.8F, 0.1F, 0.1F, 0}, {1, 2, 3, 0}, 1, 1, {1, 2, 3, 204}, true},
    {"beside alpha colours become black", FREE | RED | ALPHA, {0.8F, 0.9F, 0.9F, 0}, {100, 2, 3, 0}, 1, 1, {0, 2, 3, 204}, true},
    {"nothing editable", FREE, {1, 1, 1, 1}, {1, 2, 3, 4}, 1, 1, {1, 2, 3, 4}, false},
    {"no strength still counts", FREE | RED, {1, 1, 1, 1}, {5, 2, 3, 4}, 0, 1, {5, 2, 3, 4}, true},
    {"overshoot wraps", FREE | RED, {1, 0, 0, 1}, {0, 0, 0, 0}, 2, 1, {254, 0, 0, 0}, true},
    {"and below 0", FREE | RED, {0, 0, 0, 1}, {100, 0, 0, 0}, 2, 1, {156, 0, 0, 0}, true},
};
// clang-format on

} // namespace

TEST(PaintFunctions, SetMovesEditableChannelsTowardsTheColour)
{
    CTellur2DFunctionSet set;
    for (const SCase& one : SET_CASES)
    {
        Check(set, one);
    }
    EXPECT_FALSE(set.Apply(nullptr, 1.0F, 1.0F, 0));
    EXPECT_STREQ(set.GetName(), "Set");
    EXPECT_TRUE(set.IsUsableFor(false) && set.IsUsableFor(true));
}

TEST(PaintFunctions, SetWritesWholePaletteColoursAboveAHalf)
{
    // clang-format off
    const SCase cases[] = {
        {"at a half", PALETTE, {1, 0.5F, 0.25F, 0}, {1, 2, 3, 4}, 0.5F, 1, {1, 2, 3, 4}, false},
        {"above it", PALETTE, {1, 0.5F, 0.25F, 0}, {1, 2, 3, 4}, 0.51F, 1, {255, 127, 63, 255}, true},
        {"the product counts", PALETTE, {1, 1, 1, 0}, {1, 2, 3, 4}, 0.7F, 0.7F, {1, 2, 3, 4}, false},
        {"whatever is editable", 0, {0, 0, 1, 0}, {1, 2, 3, 4}, 1, 1, {0, 0, 255, 255}, true},
    };
    // clang-format on
    CTellur2DFunctionSet set;
    for (const SCase& one : cases)
    {
        Check(set, one);
    }
    Texel texel = {1, 2, 3, 4};
    EXPECT_FALSE(set.Apply(texel.data(), std::numeric_limits<float>::quiet_NaN(), 1.0F, 0));
}

TEST(PaintFunctions, MulScalesEditableChannelsOfFreeColours)
{
    // clang-format off
    const SCase cases[] = {
        {"half", ALL_EDITABLE, {0.5F, 0.5F, 0.5F, 1}, {200, 101, 0, 9}, 1, 1, {100, 50, 0, 9}, true},
        {"no share leaves it", FREE | RED, {0.5F, 0, 0, 1}, {200, 1, 2, 3}, 0, 1, {200, 1, 2, 3}, true},
        {"part of it", FREE | RED, {0.5F, 0, 0, 1}, {200, 1, 2, 3}, 0.5F, 1, {150, 1, 2, 3}, true},
        {"alpha by red", FREE | ALPHA, {0.25F, 1, 1, 1}, {9, 9, 9, 200}, 1, 1, {9, 9, 9, 50}, true},
        {"never below 0", FREE | RED, {0, 0, 0, 1}, {200, 1, 2, 3}, 3, 1, {0, 1, 2, 3}, true},
        {"never above 255", FREE | RED, {3, 0, 0, 1}, {200, 1, 2, 3}, 1, 1, {255, 1, 2, 3}, true},
        {"nothing editable", FREE, {0, 0, 0, 1}, {200, 1, 2, 3}, 1, 1, {200, 1, 2, 3}, false},
        {"not for palettes", PALETTE, {0, 0, 0, 1}, {200, 1, 2, 3}, 1, 1, {200, 1, 2, 3}, false},
    };
    // clang-format on
    CTellur2DFunctionMul mul;
    for (const SCase& one : cases)
    {
        Check(mul, one);
    }
    EXPECT_FALSE(mul.Apply(nullptr, 1.0F, 1.0F, 0));
    EXPECT_STREQ(mul.GetName(), "Mul");
    EXPECT_TRUE(mul.IsUsableFor(false));
    EXPECT_FALSE(mul.IsUsableFor(true));
}

TEST(PaintFunctions, ARowComesToWhatItsTexelsComeTo)
{
    constexpr float NONE = std::numeric_limits<float>::quiet_NaN();
    constexpr float FAR = std::numeric_limits<float>::infinity();
    CTellur2DFunctionSet set;
    CTellur2DFunctionMul mul;
    CNumbers numbers(1);
    for (int iRound = 0; iRound < 4000; ++iRound)
    {
        CTellur2DFunction& function = iRound % 2 == 0 ? static_cast<CTellur2DFunction&>(set) : mul;
        const float aStrengths[] = {1.0F, 0.37F, -2.5F, 999.0F, 1001.0F, 3.0e9F, -FAR, NONE};
        const float fStrength = aStrengths[numbers.Int(0, 7)];
        const float fReach = numbers.Int(0, 9) == 0 ? 1.0e8F : 1.0F; // of colours
        std::array<float, 4> color;
        std::generate(color.begin(), color.end(), [&] { return numbers.Float(-fReach, fReach); });
        function.SetColor(color.data());
        function.SetChannelMask(static_cast<uint32_t>(numbers.Int(0, 0x7FF)) |
                                (iRound % 5 ? 1 : 0));
        std::vector<uint8_t> one(static_cast<size_t>(numbers.Int(0, 21)) * 4);
        std::generate(one.begin(), one.end(), [&] { return static_cast<uint8_t>(numbers.Next()); });
        std::vector<uint8_t> row = one;
        std::vector<float> weights;
        bool bAny = false;
        for (size_t i = 0; i < one.size(); i += 4)
        {
            const float aWeights[] = {numbers.Float(0.0F, 1.0F), 1.0F, 0.0F, -1.0F, NONE};
            weights.push_back(aWeights[numbers.Int(0, 4)]);
            bAny |= weights.back() > 0.0F && function.Apply(&one[i], weights.back(), fStrength, 0);
        }
        ASSERT_EQ(function.ApplyRow(row.data(), weights.data(), weights.size(), fStrength), bAny);
        ASSERT_EQ(row, one) << iRound << " with strength " << fStrength;
    }
}

TEST(PaintFunctions, AFreshOnePaintsOpaqueBlack)
{
    CTellur2DFunctionSet set;
    Texel texel = {9, 9, 9, 9};
    EXPECT_TRUE(set.Apply(texel.data(), 1.0F, 1.0F, 0));
    EXPECT_EQ(texel, (Texel{0, 0, 0, 255}));
}
