// The menu of a row, the dialogs behind the browse buttons, and pointers to objects.

#include "tellur/proplist/CPropCtrlBrowseButton.h"
#include "tests/tellur/proplist/PropModelFixture.h"

namespace
{

class CObjects : public CPropModelTest
{
protected:
    // Opens the menu of a row and chooses an item in it; what it offered.
    std::string Menu(const std::string& strName, uint32_t uChosen = 0)
    {
        m_FrontEnd.uChosenItem = uChosen;
        m_FrontEnd.menuTexts.clear();
        m_Menu.Open(Row(strName), {});
        std::string strTexts;
        for (const std::string& strText : m_FrontEnd.menuTexts)
        {
            strTexts += strText + "|";
        }
        return strTexts;
    }

    void Browse(const std::string& strName, bool bShift = false)
    {
        m_FrontEnd.calls.clear();
        CPropCtrlBrowseButton button(m_Context, Row(strName), 1);
        m_Browser.Browse(Row(strName), button.GetKind(), bShift, button);
    }
};

} // namespace

TEST_F(CObjects, PathsAreBrowsedForInTheDialogOfTheirKind)
{
    m_Model.SetObjects({&m_Thing});
    Browse("m_File");
    EXPECT_EQ(m_Thing.m_File, "&root&/a.png") << "cancelled";
    m_User.face.strBrowseAnswer = "data/b.png";
    Browse("m_File");
    EXPECT_EQ(m_Thing.m_File, "data/b.png");
    m_User.face.strBrowseAnswer = "<no_change>";
    Browse("m_File");
    EXPECT_EQ(m_Thing.m_File, "data/b.png");
    m_FrontEnd.strChosenFolder = "/somewhere";
    Browse("m_Folder");
    EXPECT_EQ(m_Thing.m_Folder, "/somewhere");
    Browse("m_Folder", true); // with Shift it clears
    EXPECT_EQ(m_Thing.m_Folder, "");
}

TEST_F(CObjects, AttributesAreCopiedToFieldsThatTakeThem)
{
    m_Thing.m_Shape = &m_Box;
    m_Thing.m_Shapes = {&m_Ball, &m_Box};
    m_Model.SetObjects({&m_Thing});
    EXPECT_EQ(Menu("Numbers"), "");
    EXPECT_EQ(Menu("m_Free", PROP_COMMAND_COPY), "Copy attribute|Mine|");
    EXPECT_EQ(Menu("m_Count"), "Copy attribute|Mine|") << "another type";
    EXPECT_EQ(Menu("m_Share", PROP_COMMAND_PASTE), "Copy attribute|Paste attribute|Mine|");
    EXPECT_EQ(m_Thing.m_Share, 1.0F) << "2, inside the limits";
    Menu("m_Count", PROP_COMMAND_COPY);
    EXPECT_EQ(Menu("a fixed number"), "Copy attribute|Mine|") << "read only";
    Menu("x", PROP_COMMAND_COPY);
    EXPECT_EQ(Menu("m_Place"), "Copy attribute|Mine|") << "a part is no whole";
    Menu("z", PROP_COMMAND_PASTE);
    EXPECT_EQ(m_Thing.m_Place.z, 1.0F);
    // A whole list goes to a list, one object to a pointer or an element.
    Menu("m_Shapes<CTestShape[]>", PROP_COMMAND_COPY);
    EXPECT_EQ(Menu("m_Shape<CTestShape>"), "Copy attribute|Mine|");
    Menu("name12", PROP_COMMAND_COPY);
    EXPECT_EQ(Menu("m_Shapes<CTestShape[]>"), "Copy attribute|Mine|");
    Menu("m_Shape<CTestShape>", PROP_COMMAND_PASTE);
    EXPECT_EQ(m_Thing.m_Shape, &m_Ball);
    m_User.host.GetEngine().RemoveObject(12); // the copied object is gone
    EXPECT_EQ(Menu("m_Shape<CTestShape>"), "Copy attribute|Mine|");
    m_User.host.GetEngine().AddObject(12, &m_Ball);

    EXPECT_EQ(Menu("name11", PROP_COMMAND_REMOVE),
              "Remove object from list|Copy attribute|Paste attribute|Mine|");
    EXPECT_EQ(m_Thing.m_Shapes, std::vector<CRTTIObject*>{&m_Ball});
    EXPECT_EQ(FindRow("name11"), nullptr);
    Menu("m_Free", PROP_COMMAND_USER + 1);
    EXPECT_EQ(m_User.commands, std::vector<uint32_t>{PROP_COMMAND_USER + 1});
}

TEST_F(CObjects, CommandsOnObjectsAreThereForAnOwnerThatHasThem)
{
    m_Thing.m_Shape = &m_Box;
    m_User.bCommands = true;
    m_Model.SetObjects({&m_Thing});
    EXPECT_EQ(Menu("m_Free"), "Copy attribute|Mine|") << "points to nothing";
    EXPECT_EQ(Menu("m_Shape<CTestShape>", PROP_COMMAND_SELECT),
              "Select object(s)|Select chain of objects|Make this object public|Copy attribute|"
              "Mine||Delete object(s)|");
    EXPECT_EQ(m_User.commands, std::vector<uint32_t>{PROP_COMMAND_SELECT});
    EXPECT_EQ(m_Menu.GetObjects(), PropObjects{&m_Box});
    m_Box.bStatic = true;
    EXPECT_TRUE(Menu("m_Shape<CTestShape>").ends_with("Mine|")) << "it may not be deleted";
}

TEST_F(CObjects, PickedObjectsAreAssignedAsTheMenuSays)
{
    m_Model.SetObjects({&m_Thing});
    // The chooser and the menu of what it would do both choose the first item.
    m_FrontEnd.uChosenItem = 1;
    Browse("m_Shape<CTestShape>");
    EXPECT_EQ(m_FrontEnd.menuTexts, Texts{"Set attribute: m_Shape to CTestBox(11)"});
    EXPECT_EQ(m_Thing.m_Shape, &m_Box);
    Browse("m_Shape<CTestShape>", true);
    EXPECT_EQ(m_Thing.m_Shape, nullptr);

    m_Box.bStatic = true;
    Browse("m_Shape<CTestShape>");
    EXPECT_EQ(m_FrontEnd.calls.back(),
              "FrontEnd.MessageBox(You cannot choose objects which have STATIC flag set., 0x30)");
    m_Box.bStatic = false;

    m_Thing.m_Shapes = {&m_Ball};
    m_Model.RefreshValues();
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

    // Deleted on the list's row, it is cleared after a question, on an element's that element.
    const auto press = [this](const char* pszRow)
    {
        m_FrontEnd.calls.clear();
        m_Browser.ClearValue(Row(pszRow));
    };
    m_FrontEnd.eAnswer = EMessageBoxAnswer::No;
    press("m_Shapes<CTestShape[]>");
    EXPECT_EQ(m_FrontEnd.calls,
              Calls{"FrontEnd.MessageBox(Delete all pointers from m_Shapes list?, 0x24)"});
    EXPECT_EQ(m_Thing.m_Shapes.size(), 2U);
    Browse("name12", true);
    EXPECT_EQ(m_Thing.m_Shapes, std::vector<CRTTIObject*>{&m_Box});
    m_Thing.m_Shapes = {&m_Box, &m_Ball};
    m_Model.RefreshValues();
    press("name11");
    EXPECT_EQ(m_Thing.m_Shapes, std::vector<CRTTIObject*>{&m_Ball});
    press("a fixed number");
    press("Numbers");
    EXPECT_EQ(m_FrontEnd.calls, Calls{});
    m_FrontEnd.eAnswer = EMessageBoxAnswer::Yes;
    press("m_Shapes<CTestShape[]>");
    EXPECT_EQ(Value("m_Shapes<CTestShape[]>"), "empty");
}
