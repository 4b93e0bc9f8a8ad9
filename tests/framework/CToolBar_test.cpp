#include "framework/core/CToolBar.h"
#include "framework/core/ResourceModule.h"

#include <gtest/gtest.h>

namespace
{

constexpr SToolBarButtonResource BUTTONS[] = {{10, 1, 0}, {20, 0, 3}};
constexpr SToolBarButtonResource OTHER_BUTTONS[] = {{30, 0, 0}};
constexpr SToolBarResource TOOL_BARS[] = {{1, 16, 15, 77, BUTTONS}, {2, 8, 9, 78, OTHER_BUTTONS}};
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
    EXPECT_EQ(bar.GetButtonCount(), 2U);
    EXPECT_EQ(bar.GetBitmapId(), 77U);
    EXPECT_EQ(bar.GetButtonWidth() * 100 + bar.GetButtonHeight(), 1615);
    EXPECT_TRUE(bar.PressButton(20, true));
    EXPECT_TRUE(bar.CheckButton(10, true));

    uint32_t uId = 0;
    uint32_t uStyle = 9;
    int iImage = 9;
    ASSERT_TRUE(bar.GetButtonInfo(1, uId, uStyle, iImage));
    EXPECT_EQ(uId, 20U);
    EXPECT_EQ(uStyle, 0U);
    EXPECT_EQ(iImage, 3);
    ASSERT_TRUE(bar.SetButtonInfo(1, 0x4102, uStyle, iImage));
    EXPECT_EQ(nChanges, 4);
    EXPECT_TRUE(bar.IsButtonPressed(0x4102));
    EXPECT_FALSE(bar.IsButtonChecked(0x4102));
    EXPECT_FALSE(bar.IsButtonPressed(20));
    EXPECT_FALSE(bar.IsButtonPressed(10));
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
    bar.SetWindowText("Terrain");
    EXPECT_EQ(bar.GetWindowText(), "Terrain");
    bar.SetWindowText(nullptr);
    EXPECT_EQ(bar.GetWindowText(), "");
    EXPECT_EQ(nChanges, 7);
    ASSERT_TRUE(bar.LoadToolBar(2));
    EXPECT_EQ(bar.GetButtonCount(), 1U);
    bar.SetChangeListener({});
    EXPECT_TRUE(bar.CheckButton(30, true));
    EXPECT_EQ(nChanges, 8);
}
