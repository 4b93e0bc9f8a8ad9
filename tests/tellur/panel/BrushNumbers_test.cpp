// What is typed into the fields of the brush's numbers and what its sliders come back to.

#include "tests/tellur/panel/PanelFixture.h"

TEST_F(CPanelFixture, WhatIsTypedAndDoesNotCountYetIsMarkedAndNoKeyThrowsItAway)
{
    ASSERT_NO_FATAL_FAILURE(OpenView());
    Take(PANEL_SET_HEIGHT);
    const auto isMarked = [this](uint32_t uId)
    {
        EXPECT_EQ(Edit(uId)->font().italic(), !Edit(uId)->toolTip().isEmpty());
        return Edit(uId)->font().italic();
    };

    const struct
    {
        uint32_t uEdit;
        uint32_t uSpin;
        uint32_t uSlider;
    } numbers[] = {{PANEL_POWER_EDIT, PANEL_POWER_SPIN, PANEL_POWER_SLIDER},
                   {PANEL_HARDNESS_EDIT, PANEL_HARDNESS_SPIN, PANEL_HARDNESS_SLIDER}};

    for (const auto& number : numbers)
    {
        SCOPED_TRACE(number.uEdit);
        const std::string strBefore = Text(number.uEdit);
        EXPECT_FALSE(isMarked(number.uEdit));
        Type(number.uEdit, "0.3");
        EXPECT_TRUE(isMarked(number.uEdit));
        m_Plugin->OnAction(1, 1, 1); // another extent is shown alone
        Type(PANEL_FADE_EDIT, "12"); // whose handler reads all fields
        EXPECT_EQ(Text(number.uEdit), "0.3");
        EXPECT_TRUE(isMarked(number.uEdit));
        Type(number.uEdit, strBefore.c_str());
        EXPECT_FALSE(isMarked(number.uEdit)) << "it is the brush's";
        Type(number.uEdit, "0.3");
        ClickSpin(number.uSpin, true);
        EXPECT_EQ(Text(number.uEdit), "0.31");
        EXPECT_FALSE(isMarked(number.uEdit));
        Type(number.uEdit, "0.7");
        Slide(number.uSlider, 20);
        EXPECT_FALSE(isMarked(number.uEdit));
        Type(number.uEdit, "0.7");
        m_Plugin->SetCurrentBrush(nullptr);
        EXPECT_FALSE(isMarked(number.uEdit));
        Take(PANEL_SET_HEIGHT);
    }
    Type(PANEL_EXTENT_EDIT, "77");
    m_Plugin->OnAction(1, 1, 1);
    EXPECT_EQ(Text(PANEL_EXTENT_EDIT), "77.0625") << "the extent itself is shown anew";
}

TEST_F(CPanelFixture, PositionsOfPowerAndHardnessComeBackButForTwo)
{
    ASSERT_NO_FATAL_FAILURE(OpenView());
    Take(PANEL_SET_HEIGHT);
    for (const uint32_t uSlider : {PANEL_POWER_SLIDER, PANEL_HARDNESS_SLIDER})
    {
        for (int i = 0; i <= 100; ++i)
        {
            Slide(uSlider, i);
            m_Plugin->SetCurrentBrush(Brush()); // which shows all numbers again
            EXPECT_EQ(Slider(uSlider)->value(), i == 53 || i == 59 ? i - 1 : i);
        }
    }
    EXPECT_EQ(Brush()->GetPowerModifier(), 1.0F);
}

TEST_F(CPanelFixture, ANumberCanBeTypedFromScratch)
{
    ASSERT_NO_FATAL_FAILURE(OpenView());
    Take(PANEL_SET_HEIGHT);
    Type(PANEL_FADE_EDIT, "12");
    QTest::keyClick(Edit(PANEL_FADE_EDIT), Qt::Key_Backspace);
    QTest::keyClick(Edit(PANEL_FADE_EDIT), Qt::Key_Backspace);
    EXPECT_EQ(Text(PANEL_FADE_EDIT), "") << "an empty field is not filled under the hand";
    EXPECT_EQ(Brush()->GetFadeFactor(), 1.0F);
    QTest::keyClicks(Edit(PANEL_FADE_EDIT), ",5"); // a comma is a point
    EXPECT_EQ(Text(PANEL_FADE_EDIT), ",5");
    EXPECT_EQ(Brush()->GetFadeFactor(), 0.5F);
    Type(PANEL_FADE_EDIT, "-");
    EXPECT_EQ(Text(PANEL_FADE_EDIT), "-");
    Edit(PANEL_EXTENT_EDIT)->setFocus();
    EXPECT_EQ(Text(PANEL_FADE_EDIT), "0.5") << "what is no number goes with the focus";
    Type(PANEL_FADE_EDIT, "+");
    Brush()->SetFadeFactor(30.0F);
    m_Plugin->SetCurrentBrush(Brush());
    EXPECT_EQ(Text(PANEL_FADE_EDIT), "30") << "another value is shown at once";
}
