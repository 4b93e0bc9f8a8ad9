// Picking a height in the context menu and applying it to the current function.

#include "host/ReflectionFields.h"
#include "tests/tellur/plugin/PluginFixture.h"

#include <limits>

namespace
{

constexpr ViewId VIEW = 2;
constexpr ViewPoint POINT = 55;

class CPluginContextMenu : public CPluginFixture
{
protected:
    CPluginContextMenu()
    {
        Initialize();
        OpenPanel();
        m_Menu.InsertItem(0, 1, "Old");
        m_Face.lastPick = {3.0F, 123.456F, 9.0F};
    }

    // Whether an item was added, with what the host was asked left in the list of calls.
    bool Add(ViewId view = VIEW) { return m_Plugin->AddContextMenuItems(&m_Menu, view, POINT, 0); }

    Lines Apply()
    {
        TakeCalls();
        m_Plugin->OnCommand(3);
        return TakeCalls();
    }

    std::string GetField(const char* pszField) const
    {
        const CRTTIObject* pObject = m_Plugin->GetCurrentBrush()->GetRTTIObject();
        return pObject->FindField(pszField)->ToString(pObject);
    }

    CMenu m_Menu;
};

} // namespace

TEST_F(CPluginContextMenu, TheItemComesFirstWithThePickedHeight)
{
    const struct
    {
        std::optional<SVec3> pick;
        const char* pszText;
        bool bHas;
    } cases[] = {
        {SVec3{3, 123.456F, 9}, "Set m_Height to 123.46", true},
        {SVec3{3, 0, 9}, "Set m_Height to  0.00", true},
        {{}, "Set m_Height to -1.00", false},
        {SVec3{3, std::numeric_limits<float>::max(), 9},
         "Set m_Height to 340282346638528859811704183484516925440.00",
         true},
    };

    UseToolBrush("SetHeightFunction");
    size_t nItems = 1;
    for (const auto& testCase : cases)
    {
        SCOPED_TRACE(testCase.pszText);
        m_Face.lastPick = testCase.pick;
        EXPECT_EQ(m_Plugin->HasContextMenuItems(VIEW, POINT, 0), testCase.bHas);
        EXPECT_EQ(m_Menu.GetItemCount(), nItems);
        EXPECT_TRUE(Add()) << "also when the pick misses";
        EXPECT_EQ(TakeCalls(), (Lines{"Host.PickTerrain(2, 55)", "Host.PickTerrain(2, 55)"}));
        EXPECT_EQ(m_Menu.GetItemText(0), testCase.pszText);
        EXPECT_EQ(m_Menu.GetItemId(0), HANDLE + 3);
        EXPECT_EQ(m_Menu.GetItemCount(), ++nItems);
    }
    EXPECT_EQ(m_Menu.GetItemText(nItems - 1), "Old");
}

TEST_F(CPluginContextMenu, NothingIsOfferedWithoutPanelViewBrushOrField)
{
    const auto expectNone = [this](const char* pszWhy, ViewId view = VIEW)
    {
        EXPECT_FALSE(Add(view)) << pszWhy;
        EXPECT_FALSE(m_Plugin->HasContextMenuItems(view, POINT, 0)) << pszWhy;
        EXPECT_EQ(TakeCalls(), Lines{}) << pszWhy;
        EXPECT_EQ(m_Menu.GetItemCount(), 1U) << pszWhy;
    };
    expectNone("no brush");
    UseToolBrush("PointHeightFunction");
    expectNone("a function without a height");
    CTellurBrush* pBrush = UseToolBrush("SetHeightFunction");
    expectNone("no view", NO_VIEW);
    m_Plugin->SetPanel(nullptr);
    expectNone("no panel");
    OpenPanel();
    EXPECT_TRUE(Add()) << "and now all is there";
    m_Menu.DestroyMenu();
    m_Menu.InsertItem(0, 1, "Old");
    TakeCalls();
    pBrush->SetFunction(nullptr);
    expectNone("a brush without a function");
}

TEST_F(CPluginContextMenu, ApplyingSetsAFloatFieldAndRefreshesThePanel)
{
    UseToolBrush("SetHeightFunction");
    ASSERT_TRUE(Add());
    m_Face.lastPick = {0, 5, 0};
    m_Plugin->HasContextMenuItems(VIEW, POINT, 0); // does not change what was offered
    EXPECT_EQ(Apply(), (Lines{"Panel.RefreshBrushControls()"}));
    EXPECT_EQ(GetField("m_Height"), "123.456");

    m_Face.lastPick.reset();
    ASSERT_TRUE(Add());
    m_Plugin->SetPanel(nullptr);
    EXPECT_EQ(Apply(), Lines{}) << "no panel";
    EXPECT_EQ(GetField("m_Height"), "123.456");
    OpenPanel();
    EXPECT_EQ(Apply(), (Lines{"Panel.RefreshBrushControls()"}));
    EXPECT_EQ(GetField("m_Height"), "-1") << "a missed pick is applied as it was offered";
}

TEST_F(CPluginContextMenu, ApplyingLeavesOtherBrushesAlone)
{
    UseToolBrush("SetHeightFunction");
    ASSERT_TRUE(Add());
    m_Plugin->SetCurrentBrush(nullptr);
    EXPECT_EQ(Apply(), Lines{}) << "no brush";
    UseToolBrush("PointHeightFunction");
    EXPECT_EQ(Apply(), Lines{}) << "no field";
}
