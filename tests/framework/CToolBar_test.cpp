#include "framework/core/CToolBar.h"
#include "framework/core/ResourceModule.h"

#include <gtest/gtest.h>

namespace
{

constexpr SToolBarButtonResource BUTTONS[] = {{10, 1, 0}, {20, 0, 3}};
constexpr SToolBarResource TOOL_BARS[] = {{1, 16, 15, 77, BUTTONS}};
const SResourceModule MODULE = {"test", {}, TOOL_BARS, {}, {}, {}};

} // namespace

TEST(CToolBar, ButtonsKeepTheirStateWhenTheirCommandIsMapped)
{
    const CResourceScope scope(&MODULE);
    CToolBar bar;
    int nChanges = 0;
    bar.SetChangeListener([&nChanges] { ++nChanges; });
    EXPECT_FALSE(bar.LoadToolBar(3));
    EXPECT_EQ(nChanges, 0);
    ASSERT_TRUE(bar.LoadToolBar(1));
    EXPECT_EQ(bar.GetButtonWidth() * 100 + bar.GetButtonHeight(), 1615);
    EXPECT_TRUE(bar.PressButton(20, true));
    EXPECT_TRUE(bar.CheckButton(10, true));

    uint32_t uId = 0;
    uint32_t uStyle = 9;
    int iImage = 9;
    ASSERT_TRUE(bar.GetButtonInfo(1, uId, uStyle, iImage));
    EXPECT_TRUE(uId == 20 && uStyle == 0 && iImage == 3);
    ASSERT_TRUE(bar.SetButtonInfo(1, 0x4102, uStyle, iImage));
    EXPECT_EQ(nChanges, 4);
    EXPECT_TRUE(bar.IsButtonPressed(0x4102));
    EXPECT_FALSE(bar.IsButtonChecked(0x4102));
    EXPECT_FALSE(bar.IsButtonPressed(20));
    EXPECT_TRUE(bar.IsButtonChecked(10));
    EXPECT_TRUE(bar.PressButton(0x4102, false));
    EXPECT_FALSE(bar.IsButtonPressed(0x4102));

    EXPECT_FALSE(bar.PressButton(20, true));
    EXPECT_FALSE(bar.CheckButton(20, true));
    EXPECT_FALSE(bar.SetButtonInfo(2, 1, 1, 1));
    EXPECT_FALSE(bar.GetButtonInfo(2, uId, uStyle, iImage));
    EXPECT_EQ(uId, 20U);
    EXPECT_FALSE(bar.LoadToolBar(3));
    EXPECT_EQ(bar.GetButtonCount(), 2U);
    EXPECT_EQ(nChanges, 5);
    bar.SetChangeListener({});
    EXPECT_TRUE(bar.CheckButton(10, false));
    EXPECT_EQ(nChanges, 5);
}
