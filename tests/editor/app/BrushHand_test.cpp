// Values of the brush by a key that is held and the mouse of an X server.

#include "tests/editor/app/ToolKeysFixture.h"

TEST_F(CToolKeys, AHeldKeyAndTheMouseChangeAValueWhereTheFootprintIs)
{
    ASSERT_NO_FATAL_FAILURE(StartWithTool());
    OpenPanel();
    MoveBy(0, 0);
    const SVec3 place = m_Watcher.hover;
    ASSERT_GT(place.x, 0.0F);
    Hold("b");
    EXPECT_EQ(GetNote(), "brush 40.0");
    MoveBy(60, 0);
    MoveBy(90, -30);
    EXPECT_NEAR(Get(EBrushValue::Extent), 80.0F, 0.1F); // twice in 120 pixels
    EXPECT_EQ(GetNote(), "brush 80.0");
    EXPECT_EQ(PanelItem<QLineEdit>(2128).text(), "80");
    EXPECT_EQ(m_Watcher.hover.x, place.x) << "the footprint stays";
    EXPECT_EQ(m_Watcher.hover.z, place.z);
    Repeat(Qt::Key_B, "b");
    Hold("shift");
    LetGo("shift");
    SavePicture("brush-hand");
    MoveTo(*m_Window->findChild<QDockWidget*>("panel"), {0.5, 0.5}); // and back
    MoveBy(-90, 30);
    EXPECT_NEAR(Get(EBrushValue::Extent), 20.0F, 0.1F);
    EXPECT_EQ(m_Watcher.hover.x, place.x);
    LetGo("b");
    EXPECT_NE(m_Watcher.hover.x, place.x) << "the cursor is the plug-in's again";
    MoveBy(0, 0);
    EXPECT_NEAR(Get(EBrushValue::Extent), 20.0F, 0.1F);

    const struct
    {
        const char* pszKey;
        EBrushValue eValue;
        float fUp;
    } cases[] = {{"v", EBrushValue::Power, 0.5F}, {"h", EBrushValue::Hardness, 0.5F}};

    for (const auto& test : cases)
    {
        Tools().SetBrushValue(test.eValue, 0.0F);
        MoveBy(0, 0);
        Hold(test.pszKey);
        MoveBy(0, -125);
        EXPECT_NEAR(Get(test.eValue), test.fUp, 0.01F) << test.pszKey;
        MoveBy(200, -125);
        EXPECT_EQ(Get(test.eValue), 1.0F) << test.pszKey;
        LetGo(test.pszKey);
    }
    MoveBy(0, 0);
    Tools().SetBrushValue(EBrushValue::Extent, 40.0F);
    Tools().SetBrushValue(EBrushValue::Hardness, 0.0F);
    const std::vector<float> stroke = GetStroke();
    ASSERT_NO_FATAL_FAILURE(TakeBrush("RelativeHeightFunction", "m_Height", "500"));
    EXPECT_EQ(GetStroke(), stroke) << "the same brush by script";
}

TEST_F(CToolKeys, DigitsSayTheValueThatAHeldKeyMeans)
{
    ASSERT_NO_FATAL_FAILURE(StartWithTool());
    Hold("b");
    MoveBy(30, 0);
    EXPECT_NE(Get(EBrushValue::Extent), 40.0F);
    for (const char* pszKey : {"1", "2", "period", "7", "BackSpace", "5"})
    {
        Key(pszKey);
    }
    EXPECT_EQ(GetNote(), "brush 12.5");
    MoveBy(60, 0); // a hand that shakes
    LetGo("b");
    EXPECT_EQ(Get(EBrushValue::Extent), 12.5F);
    EXPECT_EQ(Tools().GetFunctionName(), "RelativeHeightFunction") << "digits took no tool";

    Hold("h");
    Do({"key", "7", "key", "0", "key", "Return"});
    EXPECT_EQ(Get(EBrushValue::Hardness), 70.0F);
    Do({"key", "9", "key", "Escape"}); // the value of before
    EXPECT_EQ(Get(EBrushValue::Hardness), 0.0F);
    Key("2"); // the key is still down, but its work is over
    LetGo("h");
    EXPECT_EQ(Tools().GetFunctionName(), "PointHeightFunction");

    Hold("v");
    Do({"key", "comma", "key", "2", "key", "5"});
    LetGo("v");
    EXPECT_EQ(Get(EBrushValue::Power), 0.25F);
    Key("ctrl+t");
    Hold("v");
    EXPECT_EQ(GetNote(), "no tool");
    LetGo("v");
}

TEST_F(CToolKeys, AHeldKeyEndsWhereTheKeyboardOrAButtonGoes)
{
    ASSERT_NO_FATAL_FAILURE(StartWithTool());
    for (const bool bButton : {false, true})
    {
        MoveBy(0, 0);
        Hold("b");
        MoveBy(60, 0);
        const float fExtent = Get(EBrushValue::Extent);
        EXPECT_NE(fExtent, 40.0F);
        if (bButton)
        {
            Do({"mousedown", "1"});
            EXPECT_TRUE(GetHost().GetInput().IsDragging());
            MoveBy(90, 0);
            Do({"mouseup", "1"});
        }
        else
        {
            Key("F6"); // the panel opens and has the keyboard
            EXPECT_FALSE(GetView().hasFocus());
        }
        const SVec3 before = m_Watcher.hover;
        MoveBy(120, 0);
        EXPECT_EQ(Get(EBrushValue::Extent), fExtent);
        EXPECT_NE(m_Watcher.hover.x, before.x) << "moves are the plug-in's again";
        LetGo("b");
        GetView().setFocus();
        Tools().SetBrushValue(EBrushValue::Extent, 40.0F);
    }
    MoveBy(0, 0);
    Hold("b");
    MoveBy(120, 0);
    EXPECT_NEAR(Get(EBrushValue::Extent), 80.0F, 0.1F) << "and it works the next time";
    MoveTo(GetView(1), {0.5, 0.5}); // the other view takes the keyboard
    MoveTo(GetView(1), {0.6, 0.5});
    EXPECT_NEAR(Get(EBrushValue::Extent), 80.0F, 0.1F);
    LetGo("b");
}

TEST_F(CToolKeys, TheSizeOfWhatIsPaintedGoesByTheSameKeys)
{
    ASSERT_NO_FATAL_FAILURE(StartWithBitmap());
    Click(Item(2143)); // "Edit"
    m_Window->activateWindow();
    ASSERT_TRUE(WaitFor([this] { return m_Window->isActiveWindow(); }, "the window is active"));
    GetView().setFocus();
    MoveBy(0, 0);
    EXPECT_EQ(Get(EBrushValue::Extent), 80.0F); // 40 to each side
    Key("bracketright");
    EXPECT_EQ(Get(EBrushValue::Extent), 88.0F);
    Hold("b");
    Do({"key", "6", "key", "0"});
    LetGo("b");
    EXPECT_EQ(Get(EBrushValue::Extent), 60.0F);
    EXPECT_EQ(Item<QLineEdit>(2158).text(), "30");
    Key("x");
    EXPECT_EQ(GetNote(), "no tool");
    EXPECT_TRUE(Tools().IsPainting());
}

TEST_F(CToolKeys, TheNumberOfATool)
{
    ASSERT_NO_FATAL_FAILURE(StartWithTool());
    Hold("n");
    EXPECT_EQ(GetNote(), "height 500.0");
    for (const char* pszKey : {"minus", "8"})
    {
        Key(pszKey);
    }
    LetGo("n");
    EXPECT_EQ(Get(EBrushValue::Amount), -8.0F);
    const std::vector<float> lowered = GetStroke();
    EXPECT_NEAR(*std::min_element(lowered.begin(), lowered.end()), 12.0F, 1.0F);

    Key("5");
    MoveBy(0, 0);
    Hold("n");
    MoveBy(45, 0);
    EXPECT_EQ(GetNote(), "levels 3");
    Key("Escape");
    LetGo("n");
    EXPECT_EQ(Get(EBrushValue::Amount), 1.0F);
    Key("6");
    Hold("n");
    EXPECT_EQ(GetNote(), "this tool has no number");
    LetGo("n");
}
