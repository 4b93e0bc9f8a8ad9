// What a click on each channel box makes of each kind of mask.

#include "tellur/painting/ChannelRules.h"

#include <gtest/gtest.h>

#include <cstdio>

namespace
{

struct SClick
{
    EChannelBox eBox;
    uint32_t uBefore;
    uint32_t uAfter;
};

// V and E of RGB: 002 004, red: 008 010, green: 020 040, blue: 080 100, alpha: 200 400.
constexpr SClick CLICKS[] = {
    // visible colours
    {EChannelBox::RgbVisible, 0x001, 0x0AB},
    {EChannelBox::RgbVisible, 0x019, 0x0BB},
    {EChannelBox::RgbVisible, 0x1FF, 0x1FF}, // not while alpha is hidden
    {EChannelBox::RgbVisible, 0x3FF, 0x201},
    {EChannelBox::RgbVisible, 0x7FF, 0x601},
    // editable colours
    {EChannelBox::RgbEditable, 0x1FF, 0x1FF},
    {EChannelBox::RgbEditable, 0x7FF, 0x7FF},
    {EChannelBox::RgbEditable, 0x601, 0x1FF},
    {EChannelBox::RgbEditable, 0x019, 0x1FF},
    // one visible colour
    {EChannelBox::RedVisible, 0x1FF, 0x1E1},
    {EChannelBox::RedVisible, 0x0A1, 0x0AB}, // the last of three
    {EChannelBox::RedVisible, 0x081, 0x089},
    {EChannelBox::RedVisible, 0x019, 0x001},
    {EChannelBox::GreenVisible, 0x1FF, 0x199},
    {EChannelBox::GreenVisible, 0x089, 0x0AB},
    {EChannelBox::GreenVisible, 0x601, 0x621},
    {EChannelBox::BlueVisible, 0x1FF, 0x079},
    {EChannelBox::BlueVisible, 0x029, 0x0AB},
    {EChannelBox::BlueVisible, 0x3FF, 0x279},
    // one editable colour: the first click keeps what is visible
    {EChannelBox::RedEditable, 0x1FF, 0x0BB},
    {EChannelBox::RedEditable, 0x0BB, 0x019}, // the second hides the others
    {EChannelBox::RedEditable, 0x019, 0x019},
    {EChannelBox::RedEditable, 0x2A1, 0x019}, // a hidden one becomes the only visible one
    {EChannelBox::RedEditable, 0x601, 0x019},
    {EChannelBox::GreenEditable, 0x1FF, 0x0EB},
    {EChannelBox::GreenEditable, 0x0EB, 0x061},
    {EChannelBox::GreenEditable, 0x019, 0x061},
    {EChannelBox::GreenEditable, 0x0BB, 0x0EB},
    {EChannelBox::BlueEditable, 0x1FF, 0x1AB},
    {EChannelBox::BlueEditable, 0x1AB, 0x181},
    {EChannelBox::BlueEditable, 0x061, 0x181},
    // alpha
    {EChannelBox::AlphaVisible, 0x1FF, 0x3FF},
    {EChannelBox::AlphaVisible, 0x7FF, 0x1FF},
    {EChannelBox::AlphaVisible, 0x601, 0x601}, // not while the colours are hidden
    {EChannelBox::AlphaVisible, 0x681, 0x081},
    {EChannelBox::AlphaEditable, 0x1FF, 0x601},
    {EChannelBox::AlphaEditable, 0x3FF, 0x6AB},
    {EChannelBox::AlphaEditable, 0x7FF, 0x6AB},
    {EChannelBox::AlphaEditable, 0x601, 0x601},
};

} // namespace

TEST(ChannelRules, AClickGivesTheMaskOfItsRule)
{
    for (const SClick& click : CLICKS)
    {
        char szCase[64];
        std::snprintf(szCase,
                      sizeof(szCase),
                      "box %u, mask 0x%03X",
                      static_cast<uint32_t>(click.eBox),
                      click.uBefore);
        EXPECT_EQ(GetClickedMask(click.uBefore, click.eBox), click.uAfter) << szCase;
        // Channels of a palette follow the same rules; whether they count is not theirs to say.
        EXPECT_EQ(GetClickedMask(click.uBefore & ~1U, click.eBox), click.uAfter & ~1U) << szCase;
    }
}
