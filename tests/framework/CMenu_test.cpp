#include "framework/core/CMenu.h"
#include "framework/core/ResourceModule.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

constexpr SMenuItemResource DEEP_ITEMS[] = {{31, "Deep"}};
constexpr SMenuItemResource FILE_ITEMS[] = {
    {11, "Open"}, {}, {12, "Save"}, {0, "More", DEEP_ITEMS, 1}, {0, "Title"}};
constexpr SMenuItemResource TOP_ITEMS[] = {{0, "File", FILE_ITEMS, 5}, {13, "Help"}};
constexpr SMenuResource MENUS[] = {{100, TOP_ITEMS}, {101, {}}};
const SResourceModule MODULE = {"test", MENUS, {}, {}, {}, {}};

// "id text" of items, "-" of separators, "text(…)" of pop-ups, joined by '|'.
std::string Describe(const CMenu& menu)
{
    std::string strText;
    for (size_t i = 0; i < menu.GetItemCount(); ++i)
    {
        strText += i > 0 ? "|" : "";
        const CMenu* pSubMenu = menu.GetSubMenu(i);
        const std::string strItem = menu.GetItemText(i);
        strText +=
            pSubMenu != nullptr
                ? strItem + "(" + Describe(*pSubMenu) + ")"
                : (menu.IsSeparator(i) ? "-" : std::to_string(menu.GetItemId(i)) + " " + strItem);
    }
    return strText;
}

// Adds 1000 to every id that is one, as a plug-in maps its commands.
void Renumber(CMenu& menu)
{
    for (size_t i = 0; i < menu.GetItemCount(); ++i)
    {
        if (CMenu* pSubMenu = menu.GetSubMenu(i))
        {
            Renumber(*pSubMenu);
        }
        else if (menu.GetItemId(i) != 0)
        {
            EXPECT_TRUE(menu.ModifyItem(i, menu.GetItemId(i) + 1000, menu.GetItemText(i).c_str()));
        }
    }
}

} // namespace

TEST(CMenu, LoadsWalksAndChangesInPlace)
{
    const CResourceScope scope(&MODULE);
    CMenu menu;
    EXPECT_FALSE(menu.LoadMenu(99));
    EXPECT_FALSE(menu.IsValid());
    ASSERT_TRUE(menu.LoadMenu(100));
    EXPECT_TRUE(menu.IsValid() && menu.GetSubMenu(0)->GetSubMenu(3)->IsValid());
    EXPECT_EQ(Describe(menu), "File(11 Open|-|12 Save|More(31 Deep)|0 Title)|13 Help");
    CMenu* pFile = menu.GetSubMenu(0);
    Renumber(menu);
    EXPECT_EQ(pFile, menu.GetSubMenu(0));
    EXPECT_EQ(Describe(menu), "File(1011 Open|-|1012 Save|More(1031 Deep)|0 Title)|1013 Help");
    EXPECT_FALSE(menu.ModifyItem(0, 1, "pop-up"));
    EXPECT_FALSE(menu.ModifyItem(2, 1, "beyond"));
    EXPECT_FALSE(pFile->ModifyItem(1, 1, "separator"));
    EXPECT_TRUE(menu.ModifyItem(1, 5, nullptr));
    EXPECT_FALSE(menu.LoadMenu(99));
    EXPECT_EQ(Describe(menu), "File(1011 Open|-|1012 Save|More(1031 Deep)|0 Title)|5 Help");
    ASSERT_TRUE(menu.LoadMenu(101));
    EXPECT_TRUE(menu.IsValid());
    EXPECT_EQ(Describe(menu), "");
}

TEST(CMenu, GrowsAtAnyPlaceAndMovesWhole)
{
    CMenu menu;
    EXPECT_FALSE(menu.InsertItem(0, 1, nullptr));
    EXPECT_FALSE(menu.IsValid());
    EXPECT_TRUE(menu.InsertItem(9, 1, "b"));
    EXPECT_TRUE(menu.InsertItem(0, 2, "a"));
    EXPECT_TRUE(menu.InsertItem(1, 3, "between"));
    EXPECT_TRUE(menu.InsertSeparator(9));
    CMenu subMenu;
    subMenu.InsertItem(0, 4, "x");
    CMenu* pSubMenu = menu.AppendSubMenu("more", std::move(subMenu));
    EXPECT_TRUE(pSubMenu->InsertItem(0, 5, "w"));
    const std::string strAll = "2 a|3 between|1 b|-|more(5 w|4 x)";
    EXPECT_EQ(Describe(menu), strAll);
    CMenu moved(std::move(menu));
    EXPECT_FALSE(menu.IsValid()); // NOLINT(bugprone-use-after-move): a moved menu is as made
    CMenu target;
    target.InsertItem(0, 9, "gone");
    target = std::move(moved);
    EXPECT_EQ(Describe(target), strAll);
    EXPECT_EQ(target.GetSubMenu(4), pSubMenu);
    EXPECT_EQ(target.GetItemId(5), 0U);
    EXPECT_EQ(target.GetItemText(5), "");
    EXPECT_EQ(target.GetSubMenu(5), nullptr);
}
