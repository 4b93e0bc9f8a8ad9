// The rows of a property list: their tree, their values, what a new value does to the objects.

#include "tests/tellur/proplist/PropModelFixture.h"

using CRows = CPropModelTest;

TEST_F(CRows, AreATreeOfCategoriesFieldsAndPartsInTheOrderOfTheClass)
{
    m_Thing.m_Shape = &m_Box;
    m_Thing.m_Shapes = {&m_Ball, nullptr};
    m_Model.SetObjects({&m_Thing});
    // The sixteen rows of m_Frame are closed at first.
    EXPECT_EQ(GetTexts(),
              "Numbers=|m_Share=0.5|m_Free=2|m_Count=7|Choices=|m_On=true|m_Kind=sand|"
              "m_Bits=wet|high|wet=true|steep=false|high=true|Space=|m_Place=1 2 3|x=1|y=2|z=3|"
              "m_Color=1 0.5 0|r=1|g=0.5|b=0|m_Frame=1 0 0 0 0 1 0 0 0 0 1 0 0 0 0 1|Files=|"
              "m_File=&root&/a.png|m_Folder=|a fixed number=9|"
              "m_Shape<CTestShape>=[CTestBox]name11(11)|m_Sides=4|m_Shapes<CTestShape[]>=2 items|"
              "name12=[CTestBall]name12(12)|null=null|");
}

TEST_F(CRows, FollowWhatIsHiddenAndWhatIsGone)
{
    m_Thing.m_Shape = &m_Box;
    m_Model.SetObjects({&m_Thing});
    m_Model.SetShowHidden(true);
    EXPECT_EQ(Value("m_Secret"), "1");
    EXPECT_EQ(FindRow("m_Internal"), nullptr);
    m_Model.SetShowHidden(false);
    EXPECT_EQ(FindRow("m_Secret"), nullptr);

    m_Thing.m_Shapes = {&m_Ball};
    m_Thing.m_Shape = nullptr;
    m_Model.RefreshValues();
    EXPECT_EQ(Value("m_Shapes<CTestShape[]>"), "1 item ") << "with its blank";
    EXPECT_EQ(FindRow("m_Sides"), nullptr) << "what is gone has no rows";
    m_Thing.m_Shapes.clear();
    m_Model.RefreshValues();
    EXPECT_EQ(Value("m_Shapes<CTestShape[]>"), "empty");
}

TEST_F(CRows, StayOpenOrClosedAlsoForOtherObjects)
{
    m_Model.SetObjects({&m_Thing});
    m_Model.SetOpen(Row("Numbers"), false);
    EXPECT_EQ(FindRow("m_Share"), nullptr);
    EXPECT_EQ(Row("Choices").iItem, 1);
    m_Model.SetOpen(Row("m_Frame"), true);
    EXPECT_EQ(Row("[3,2]").iItem - Row("m_Frame").iItem, 15);
    EXPECT_EQ(Value("[0,1]"), "0");
    m_Model.SetObjects({&m_Other});
    EXPECT_EQ(FindRow("m_Share"), nullptr);
    EXPECT_NE(FindRow("[3,2]"), nullptr);
}

TEST_F(CRows, OfSeveralObjectsShowWhatTheyHaveInCommon)
{
    m_Other.m_Share = 0.25F;
    m_Other.m_Place.y = 8.0F;
    m_Other.m_Bits = 1;
    m_Model.SetObjects({&m_Thing, &m_Other});
    for (const char* pszName : {"m_Share", "m_Place", "y", "m_Bits", "high"})
    {
        EXPECT_EQ(Value(pszName), "<different values>") << pszName;
    }
    EXPECT_EQ(Value("m_Free") + Value("x") + Value("wet"), "21true");
    m_Model.SetObjects({&m_Box, &m_Ball}); // fields of their common base
    EXPECT_EQ(GetTexts(), "m_Sides=4|");
    m_Model.SetObjects({&m_Thing, &m_Ball});
    EXPECT_EQ(GetTexts(), "");
}

TEST_F(CRows, WriteANewValueOnceAndReadWhateverShowsIt)
{
    m_Model.SetObjects({&m_Thing});
    Set("m_Free", "3.25");
    EXPECT_EQ(m_Told, "m_Free|");
    Set("m_Free", "3.25");
    EXPECT_EQ(TakeWrites(), Texts{"m_Free=3.25 x1"}) << "the same text is not written again";
    EXPECT_EQ(m_Thing.changes, Texts{"m_Free"});
    Set("y", "-6");
    EXPECT_EQ(m_Told, "y|m_Place|x|z|") << "the whole field shows its part";
    EXPECT_EQ(Value("m_Place"), "1 -6 3");
    EXPECT_EQ(TakeWrites(), Texts{"m_Place=1 -6 3 x1"});

    m_Other.m_Free = 70.0F;
    m_Other.m_Bits = 0;
    m_Model.SetObjects({&m_Thing, &m_Other});
    Set("m_Free", "3.25"); // what the first object has already
    EXPECT_EQ(TakeWrites(), Texts{"m_Free=3.25 x2"});
    EXPECT_EQ(Value("m_Free"), "3.25");
    Set("wet", "0"); // each object keeps its other flags
    EXPECT_EQ(TakeWrites(), (Texts{"m_Bits=4 x1", "m_Bits=0 x1"}));
    EXPECT_EQ(Value("m_Bits"), "<different values>");
}

TEST_F(CRows, WaitWithOtherObjectsForTheValueThatBringsThem)
{
    m_Model.SetObjects({&m_Thing});
    m_User.onWritten = [this]
    {
        m_Thing.m_Share = 0.25F;
        m_Model.RefreshValues();
        EXPECT_EQ(m_Told, "");
    };
    Set("m_Free", "3");
    EXPECT_TRUE(m_Told.starts_with("m_Free|Numbers|m_Share|m_Count|")) << m_Told;
    EXPECT_EQ(Value("m_Share"), "0.25");
    m_User.onWritten = [this]
    {
        m_Model.SetObjects({&m_Box});
        EXPECT_EQ(m_Told, "");
    };
    Set("y", "4");
    EXPECT_EQ(m_Told, "rows|");
    m_Told.clear();
    m_Model.SetObjects({&m_Box}); // the same: no new rows
    EXPECT_EQ(m_Told, "m_Sides|");
}

TEST_F(CRows, KeepTheirValueWhenATextIsNone)
{
    m_Model.SetObjects({&m_Thing});
    Set("m_Free", "much");
    Set("m_Count", "1.5");
    EXPECT_EQ(m_Thing.m_Count, 7);
    EXPECT_EQ(Value("m_Free"), "2");
    EXPECT_EQ(
        m_Log.TakeLines(),
        (Texts{"[CPropListCtrl::HandleFieldEdit] \"much\" is no value for CTestThing.m_Free",
               "[CPropListCtrl::HandleFieldEdit] \"1.5\" is no value for CTestThing.m_Count"}));
    Set("m_Share", "2"); // what is outside the limits is brought to the limit
    EXPECT_EQ(Value("m_Share"), "1");
    Set("m_Share", "-3");
    EXPECT_EQ(Value("m_Share"), "0");
    // An owner may hand in the text of a part, or of the whole.
    CRTTIField* pPlace = m_Thing.FindField("m_Place");
    EXPECT_TRUE(m_Model.HandleFieldEdit({&m_Thing, &m_Other}, pPlace, "9", 2));
    EXPECT_FALSE(m_Model.HandleFieldEdit({&m_Thing}, pPlace, "9", -1));
    m_Model.RefreshValues();
    EXPECT_EQ(Value("m_Place"), "1 2 9");
    EXPECT_EQ(m_Other.m_Place.z, 9.0F);
}
