// Dialogs behind the browse buttons, the menu of a row, and pointers to objects.

#include "tests/tellur/proplist/PropListFixture.h"

#include <QContextMenuEvent>
#include <QLineEdit>
#include <QPushButton>

using Texts = std::vector<std::string>;

namespace
{

class CObjects : public CPropListTest
{
protected:
    // Opens the menu of a row and chooses an item in it.
    void Menu(const std::string& strName, uint32_t uChosen)
    {
        ASSERT_GE(FindRow(strName), 0) << strName;
        m_FrontEnd.uChosenItem = uChosen;
        m_FrontEnd.menuTexts.clear();
        const QPoint at = At(strName);
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, View()->viewport()->mapToGlobal(at));
        QApplication::sendEvent(View()->viewport(), &event);
        QApplication::processEvents();
    }

    Texts MenuTexts(const std::string& strName)
    {
        Menu(strName, 0);
        return m_FrontEnd.menuTexts;
    }

    QPushButton* Browse(const std::string& strName)
    {
        Edit(strName);
        auto* pButton = Editor<QPushButton>();
        if (pButton == nullptr)
        {
            ADD_FAILURE() << strName;
            return nullptr;
        }
        m_FrontEnd.calls.clear();
        QTest::mouseClick(pButton, Qt::LeftButton);
        return pButton;
    }
};

} // namespace

TEST_F(CObjects, BrowseButtonsOpenTheDialogOfTheirKind)
{
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    Browse("m_File");
    EXPECT_EQ(m_Thing.m_File, "&root&/a.png") << "cancelled";
    m_User.face.strBrowseAnswer = "data/b.png";
    Browse("m_File");
    EXPECT_EQ(m_Thing.m_File, "data/b.png");
    EXPECT_EQ(Editor<QLineEdit>()->text(), "data/b.png");
    m_User.face.strBrowseAnswer = "<no_change>";
    Browse("m_File");
    EXPECT_EQ(m_Thing.m_File, "data/b.png");

    m_FrontEnd.strChosenFolder = "/somewhere";
    Browse("m_Folder");
    EXPECT_EQ(m_Thing.m_Folder, "/somewhere");
    QTest::keyClick(Editor<QPushButton>(), Qt::Key_Delete); // nothing to the list around it
    EXPECT_EQ(m_Thing.m_Folder, "/somewhere");
    m_FrontEnd.keys = {EKey::Shift}; // clears
    Browse("m_Folder");
    EXPECT_EQ(m_Thing.m_Folder, "");
    m_FrontEnd.keys.clear();

    m_FrontEnd.uChosenColor = 0x0000FF; // red
    const QPushButton* pSwatch = Browse("m_Color");
    EXPECT_EQ(m_FrontEnd.calls, Calls{"FrontEnd.ChooseColor(0x80ff)"});
    EXPECT_EQ(Value("m_Color"), "1 0 0");
    const QImage red = const_cast<QPushButton*>(pSwatch)->grab().toImage();
    EXPECT_EQ(red.pixelColor(red.width() / 2, red.height() / 2), QColor(255, 0, 0));
    m_FrontEnd.uChosenColor = 0xFFFFFFFF;
    Browse("m_Color");
    EXPECT_EQ(Value("m_Color"), "1 0 0");

    SPropListHooks hooks;
    hooks.mayEdit = [](const CRTTIField&)
    {
        return false;
    };
    m_List.SetHooks(hooks);
    m_List.RefreshValues();
    EXPECT_FALSE(pSwatch->isEnabled());
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CObjects, AttributesAreCopiedToFieldsThatTakeThem)
{
    m_Thing.m_Shape = &m_Box;
    m_Thing.m_Shapes = {&m_Ball, &m_Box};
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    EXPECT_EQ(MenuTexts("Numbers"), Texts{});
    EXPECT_EQ(MenuTexts("m_Free"), (Texts{"Copy attribute", "Mine"}));
    ASSERT_NO_FATAL_FAILURE(Menu("m_Free", PROP_COMMAND_COPY));
    EXPECT_EQ(MenuTexts("m_Count"), (Texts{"Copy attribute", "Mine"})) << "another type";
    EXPECT_EQ(MenuTexts("m_Share"), (Texts{"Copy attribute", "Paste attribute", "Mine"}));
    ASSERT_NO_FATAL_FAILURE(Menu("m_Share", PROP_COMMAND_PASTE));
    EXPECT_EQ(m_Thing.m_Share, 1.0F) << "2, inside the limits";
    ASSERT_NO_FATAL_FAILURE(Menu("m_Count", PROP_COMMAND_COPY));
    EXPECT_EQ(MenuTexts("a fixed number"), (Texts{"Copy attribute", "Mine"})) << "read only";
    ASSERT_NO_FATAL_FAILURE(Menu("x", PROP_COMMAND_COPY));
    EXPECT_EQ(MenuTexts("m_Place"), (Texts{"Copy attribute", "Mine"})) << "a part is no whole";
    ASSERT_NO_FATAL_FAILURE(Menu("z", PROP_COMMAND_PASTE));
    EXPECT_EQ(m_Thing.m_Place.z, 1.0F);

    // A whole list goes to a list, one object to a pointer or an element.
    ASSERT_NO_FATAL_FAILURE(Menu("m_Shapes<CTestShape[]>", PROP_COMMAND_COPY));
    EXPECT_EQ(MenuTexts("m_Shape<CTestShape>"), (Texts{"Copy attribute", "Mine"}));
    ASSERT_NO_FATAL_FAILURE(Menu("name12", PROP_COMMAND_COPY));
    EXPECT_EQ(MenuTexts("m_Shapes<CTestShape[]>"), (Texts{"Copy attribute", "Mine"}));
    ASSERT_NO_FATAL_FAILURE(Menu("m_Shape<CTestShape>", PROP_COMMAND_PASTE));
    EXPECT_EQ(m_Thing.m_Shape, &m_Ball);
    m_User.host.GetEngine().RemoveObject(12); // the copied object is gone
    EXPECT_EQ(MenuTexts("m_Shape<CTestShape>"), (Texts{"Copy attribute", "Mine"}));
    m_User.host.GetEngine().AddObject(12, &m_Ball);

    EXPECT_EQ(MenuTexts("name11"),
              (Texts{"Remove object from list", "Copy attribute", "Paste attribute", "Mine"}));
    ASSERT_NO_FATAL_FAILURE(Menu("name11", PROP_COMMAND_REMOVE));
    EXPECT_EQ(m_Thing.m_Shapes, std::vector<CRTTIObject*>{&m_Ball});
    EXPECT_EQ(FindRow("name11"), -1);
    ASSERT_NO_FATAL_FAILURE(Menu("m_Free", PROP_COMMAND_USER + 1));
    EXPECT_EQ(m_User.commands, std::vector<uint32_t>{PROP_COMMAND_USER + 1});
}

TEST_F(CObjects, CommandsOnObjectsAreThereForAnOwnerThatHasThem)
{
    m_Thing.m_Shape = &m_Box;
    m_User.bCommands = true;
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    EXPECT_EQ(MenuTexts("m_Free"), (Texts{"Copy attribute", "Mine"})) << "points to nothing";
    EXPECT_EQ(MenuTexts("m_Shape<CTestShape>"),
              (Texts{"Select object(s)",
                     "Select chain of objects",
                     "Make this object public",
                     "Copy attribute",
                     "Mine",
                     "",
                     "Delete object(s)"}));
    ASSERT_NO_FATAL_FAILURE(Menu("m_Shape<CTestShape>", PROP_COMMAND_SELECT));
    EXPECT_EQ(m_User.commands, std::vector<uint32_t>{PROP_COMMAND_SELECT});
    EXPECT_EQ(m_List.GetMenuObjects(), PropObjects{&m_Box});
    m_Box.bStatic = true;
    EXPECT_EQ(MenuTexts("m_Shape<CTestShape>").back(), "Mine") << "it may not be deleted";
}

TEST_F(CObjects, PickedObjectsAreAssignedAsTheMenuSays)
{
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    // The chooser and the menu of what it would do both choose the first item.
    m_FrontEnd.uChosenItem = 1;
    Browse("m_Shape<CTestShape>");
    EXPECT_EQ(m_FrontEnd.menuTexts, Texts{"Set attribute: m_Shape to CTestBox(11)"});
    EXPECT_EQ(m_Thing.m_Shape, &m_Box);
    m_FrontEnd.keys = {EKey::Shift};
    Browse("m_Shape<CTestShape>");
    EXPECT_EQ(m_Thing.m_Shape, nullptr);
    m_FrontEnd.keys.clear();

    m_Box.bStatic = true;
    Browse("m_Shape<CTestShape>");
    EXPECT_EQ(m_Thing.m_Shape, nullptr);
    EXPECT_EQ(m_FrontEnd.calls.back(),
              "FrontEnd.MessageBox(You cannot choose objects which have STATIC flag set., 0x30)");
    m_Box.bStatic = false;

    m_Thing.m_Shapes = {&m_Ball};
    m_List.RefreshValues();
    Browse("name12"); // an element of the list
    EXPECT_EQ(m_FrontEnd.menuTexts,
              (Texts{"Add CTestBox(11) to m_Shapes",
                     "Replace CTestBall(12) with CTestBox(11) in m_Shapes"}));
    EXPECT_EQ(m_Thing.m_Shapes, (std::vector<CRTTIObject*>{&m_Ball, &m_Box}));
    Browse("name12");
    EXPECT_EQ(m_FrontEnd.menuTexts,
              (Texts{"Swap positions CTestBall(12) <---> CTestBox(11) in m_Shapes",
                     "Remove CTestBox(11) from m_Shapes"}));
    EXPECT_EQ(m_Thing.m_Shapes, (std::vector<CRTTIObject*>{&m_Box, &m_Ball}));

    // Delete on the list's row clears it after a question, on an element's that element.
    const auto press = [this](const char* pszRow)
    {
        m_FrontEnd.calls.clear();
        m_List.SelectItem(FindRow(pszRow));
        View()->setFocus();
        QTest::keyClick(View(), Qt::Key_Delete);
    };
    m_FrontEnd.eAnswer = EMessageBoxAnswer::No;
    press("m_Shapes<CTestShape[]>");
    EXPECT_EQ(m_FrontEnd.calls,
              Calls{"FrontEnd.MessageBox(Delete all pointers from m_Shapes list?, 0x24)"});
    EXPECT_EQ(m_Thing.m_Shapes.size(), 2U);
    m_FrontEnd.keys = {EKey::Shift};
    Browse("name12");
    EXPECT_EQ(m_Thing.m_Shapes, std::vector<CRTTIObject*>{&m_Box});
    m_Thing.m_Shapes = {&m_Box, &m_Ball};
    m_List.RefreshValues();
    press("name11");
    EXPECT_EQ(m_Thing.m_Shapes, std::vector<CRTTIObject*>{&m_Ball});
    press("a fixed number");
    press("Numbers");
    EXPECT_EQ(m_FrontEnd.calls, Calls{});
    m_FrontEnd.eAnswer = EMessageBoxAnswer::Yes;
    press("m_Shapes<CTestShape[]>");
    EXPECT_TRUE(m_Thing.m_Shapes.empty());
    EXPECT_EQ(Value("m_Shapes<CTestShape[]>"), "empty");
}
