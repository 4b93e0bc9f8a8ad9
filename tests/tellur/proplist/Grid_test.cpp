// The window of the property list: its cells, columns and pictures, mouse and keys on its rows.

#include "framework/core/CRegValue.h"
#include "host/FileSystem.h"
#include "tests/tellur/proplist/PropListFixture.h"

#include <QContextMenuEvent>
#include <QHeaderView>

using CGrid = CPropListTest;

TEST_F(CGrid, ShowsTheRowsOfTheModel)
{
    m_Thing.m_Shape = &m_Box;
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    EXPECT_EQ(m_List.GetItemCount(), 28);
    EXPECT_EQ(View()->model()->index(FindRow("m_Share"), 0).data(Qt::ToolTipRole).toString(),
              "m_Share: how much");
    EXPECT_EQ(Value("m_Share"), "0.5");
    m_Thing.m_Share = 0.25F;
    m_List.RefreshValues();
    EXPECT_EQ(Value("m_Share"), "0.25");
    m_List.SetShowHidden(true);
    EXPECT_EQ(Value("m_Secret"), "1");
    m_List.SetObjects({});
    EXPECT_EQ(m_List.GetItemCount(), 0);
}

TEST_F(CGrid, RowsOpenAndCloseByMouseAndKeys)
{
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    const QPoint picture =
        View()->visualRect(View()->model()->index(0, 0)).topLeft() + QPoint(8, 8);
    QTest::mouseClick(View()->viewport(), Qt::LeftButton, Qt::NoModifier, picture);
    EXPECT_EQ(FindRow("m_Share"), -1);
    QTest::keyClick(View(), Qt::Key_Right);
    EXPECT_EQ(FindRow("m_Share"), 1);
    QTest::keyClick(View(), Qt::Key_Left);
    EXPECT_EQ(FindRow("m_Share"), -1);
    QTest::mouseDClick(View()->viewport(), Qt::LeftButton, Qt::NoModifier, At("m_Frame", 0));
    EXPECT_EQ(Value("[0,0]"), "1");
}

TEST_F(CGrid, OpensTheMenuOfARowClearsByKeyAndChooses)
{
    m_Thing.m_Shapes = {&m_Ball, &m_Box};
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    m_FrontEnd.uChosenItem = PROP_COMMAND_REMOVE;
    const QPoint at = At("name12");
    QContextMenuEvent event(QContextMenuEvent::Mouse, at, View()->viewport()->mapToGlobal(at));
    QApplication::sendEvent(View()->viewport(), &event);
    EXPECT_EQ(m_List.GetMenuObjects(), PropObjects{&m_Box}) << "in the place of what is removed";
    EXPECT_EQ(FindRow("name12"), -1);
    m_List.SelectItem(FindRow("name11"));
    View()->setFocus();
    QTest::keyClick(View(), Qt::Key_Delete);
    EXPECT_EQ(Value("m_Shapes<CTestShape[]>"), "empty");
    m_FrontEnd.uChosenItem = 2;
    PropObjects picked;
    EXPECT_TRUE(m_List.ChooseObjects(&CTestShape::s_RTTI, picked));
    EXPECT_EQ(picked, PropObjects{&m_Ball});
}

TEST_F(CGrid, ColumnWidthsAreKeptUnderTheKeyAndNowhereWithoutOne)
{
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    const QAbstractItemModel& titles = *View()->header()->model();
    EXPECT_EQ(titles.headerData(0, Qt::Horizontal).toString(), "Name");
    EXPECT_EQ(titles.headerData(1, Qt::Horizontal).toString(), "Value");
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

TEST_F(CGrid, WithoutItsPicturesTheListWorks)
{
    const std::string strFolder = m_Folder.Path("data/interface");
    std::filesystem::create_directories(strFolder);
    WriteBytes(strFolder + "/_state.png", "no picture");
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    EXPECT_TRUE(m_Log.GetText().ends_with(
        "[CPropListCtrl::CreateImages] unable to load bitmap file _state.png\n"));
    EXPECT_EQ(Value("m_Share"), "0.5");
}
