// What the property list shows: its tree of rows, their texts, its columns.

#include "framework/core/CRegValue.h"
#include "host/FileSystem.h"
#include "tests/tellur/proplist/PropListFixture.h"

#include <QHeaderView>

namespace
{

class CRows : public CPropListTest
{
protected:
    std::string GetNames()
    {
        std::string strNames;
        for (int i = 0; i < m_List.GetItemCount(); ++i)
        {
            strNames += m_List.GetCellText(i, 0) + "|";
        }
        return strNames;
    }
};

} // namespace

TEST_F(CRows, ATreeOfCategoriesFieldsAndPartsInTheOrderOfTheClass)
{
    m_Thing.m_Shape = &m_Box;
    m_Thing.m_Shapes = {&m_Ball, nullptr};
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    // The sixteen rows of m_Frame are closed at first.
    EXPECT_EQ(GetNames(),
              "Numbers|m_Share|m_Free|m_Count|Choices|m_On|m_Kind|m_Bits|wet|steep|high|Space|"
              "m_Place|x|y|z|m_Color|r|g|b|m_Frame|Files|m_File|m_Folder|a fixed number|"
              "m_Shape<CTestShape>|m_Sides|m_Shapes<CTestShape[]>|name12|null|");
    EXPECT_EQ(View()->model()->index(FindRow("m_Share"), 0).data(Qt::ToolTipRole).toString(),
              "m_Share: how much");
    EXPECT_EQ(Value("m_Share"), "0.5");
    EXPECT_EQ(Value("m_On"), "true");
    EXPECT_EQ(Value("m_Kind"), "sand");
    EXPECT_EQ(Value("m_Bits"), "wet|high");
    EXPECT_EQ(Value("wet"), "true");
    EXPECT_EQ(Value("steep"), "false");
    EXPECT_EQ(Value("m_Place"), "1 2 3");
    EXPECT_EQ(Value("y"), "2");
    EXPECT_EQ(Value("g"), "0.5");
    EXPECT_EQ(Value("m_Shape<CTestShape>"), "[CTestBox]name11(11)");
    EXPECT_EQ(Value("m_Sides"), "4");
    EXPECT_EQ(Value("m_Shapes<CTestShape[]>"), "2 items");
    EXPECT_EQ(Value("name12"), "[CTestBall]name12(12)");
    EXPECT_EQ(Value("null"), "null");
    EXPECT_EQ(Value("Numbers"), "");
}

TEST_F(CRows, FollowWhatIsHiddenAndWhatIsGone)
{
    m_Thing.m_Shape = &m_Box;
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    m_List.SetShowHidden(true);
    EXPECT_EQ(Value("m_Secret"), "1");
    EXPECT_EQ(FindRow("m_Internal"), -1);
    m_List.SetShowHidden(false);
    EXPECT_EQ(FindRow("m_Secret"), -1);

    m_Thing.m_Shapes = {&m_Ball};
    m_Thing.m_Shape = nullptr;
    m_List.RefreshValues();
    EXPECT_EQ(Value("m_Shapes<CTestShape[]>"), "1 item ") << "with its blank";
    EXPECT_EQ(Value("m_Shape<CTestShape>"), "null");
    EXPECT_EQ(FindRow("m_Sides"), -1) << "what is gone has no rows";
    m_Thing.m_Shapes.clear();
    m_List.RefreshValues();
    EXPECT_EQ(Value("m_Shapes<CTestShape[]>"), "empty");
}

TEST_F(CRows, RowsOpenAndCloseByMouseAndKeysAndStaySo)
{
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    const QPoint picture =
        View()->visualRect(View()->model()->index(0, 0)).topLeft() + QPoint(8, 8);
    QTest::mouseClick(View()->viewport(), Qt::LeftButton, Qt::NoModifier, picture);
    EXPECT_EQ(FindRow("m_Share"), -1);
    EXPECT_EQ(FindRow("Choices"), 1);
    QTest::keyClick(View(), Qt::Key_Right);
    EXPECT_EQ(FindRow("m_Share"), 1);
    QTest::keyClick(View(), Qt::Key_Left);
    EXPECT_EQ(FindRow("m_Share"), -1);

    QTest::mouseDClick(View()->viewport(), Qt::LeftButton, Qt::NoModifier, At("m_Frame", 0));
    ASSERT_GE(FindRow("[3,2]"), 0);
    EXPECT_EQ(FindRow("[3,2]") - FindRow("m_Frame"), 15);
    EXPECT_EQ(Value("[0,0]"), "1");
    EXPECT_EQ(Value("[0,1]"), "0");

    ASSERT_NO_FATAL_FAILURE(Show({&m_Other})); // another object of the class
    EXPECT_EQ(FindRow("m_Share"), -1);
    EXPECT_GE(FindRow("[3,2]"), 0);
}

TEST_F(CRows, SeveralObjectsShowWhatTheyHaveInCommon)
{
    m_Other.m_Share = 0.25F;
    m_Other.m_Place.y = 8.0F;
    m_Other.m_Bits = 1;
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing, &m_Other}));
    EXPECT_EQ(Value("m_Share"), "<different values>");
    EXPECT_EQ(Value("m_Free"), "2");
    EXPECT_EQ(Value("m_Place"), "<different values>");
    EXPECT_EQ(Value("x"), "1");
    EXPECT_EQ(Value("y"), "<different values>");
    EXPECT_EQ(Value("wet"), "true");
    EXPECT_EQ(Value("high"), "<different values>");

    ASSERT_NO_FATAL_FAILURE(Show({&m_Box, &m_Ball})); // fields of their common base
    EXPECT_EQ(GetNames(), "m_Sides|");
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing, &m_Ball}));
    EXPECT_EQ(GetNames(), "");
    ASSERT_NO_FATAL_FAILURE(Show({}));
    EXPECT_EQ(GetNames(), "");
}

TEST_F(CRows, ColumnWidthsAreKeptUnderTheKeyAndNowhereWithoutOne)
{
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    EXPECT_EQ(View()->header()->model()->headerData(0, Qt::Horizontal).toString(), "Name");
    EXPECT_EQ(View()->header()->model()->headerData(1, Qt::Horizontal).toString(), "Value");
    EXPECT_EQ(View()->columnWidth(0), 120);
    EXPECT_GE(View()->columnWidth(1), 80); // takes the room there is
    m_List.SaveToRegistry();
    EXPECT_FALSE(std::filesystem::exists(m_Folder.Path("tellur/registry.ini")));

    View()->setColumnWidth(0, 171);
    m_List.SetRegistryKeyPath("Software\\Test\\Columns");
    m_List.SaveToRegistry();
    CRegValue key;
    uint32_t uWidth = 0;
    ASSERT_EQ(key.Open(ERegHive::CurrentUser, "Software\\Test\\Columns"), 0);
    EXPECT_EQ(key.QueryDWord("name", uWidth), REG_RESULT_OK);
    EXPECT_EQ(uWidth, 171U);
    EXPECT_EQ(key.QueryDWord("value", uWidth), REG_RESULT_OK);
    EXPECT_EQ(uWidth, static_cast<uint32_t>(View()->columnWidth(1)));

    CPropListCtrl again;
    CTestView form(21);
    form.Bind(GRID, again);
    ASSERT_TRUE(form.Create(nullptr));
    again.SetRegistryKeyPath("Software\\Test\\Columns");
    EXPECT_EQ(again.GetColumnWidth(0), 171);
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CRows, WithoutItsPicturesTheListWorks)
{
    const std::string strFolder = m_Folder.Path("data/interface");
    std::filesystem::create_directories(strFolder);
    WriteBytes(strFolder + "/_state.png", "no picture");
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    const std::vector<std::string> lines = m_Log.TakeLines();
    ASSERT_FALSE(lines.empty());
    EXPECT_EQ(lines.back(), "[CPropListCtrl::CreateImages] unable to load bitmap file _state.png");
    EXPECT_EQ(Value("m_Share"), "0.5");
}
