// The in-place editors that are worked with the mouse: spinner, check box, combo boxes.

#include "tests/tellur/proplist/EditingFixture.h"

#include <QDir>

TEST_F(CEditing, TheSpinnerCountsByItsStepAndStopsAtTheLimits)
{
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    ASSERT_NO_FATAL_FAILURE(Edit("m_Free"));
    QTest::mouseClick(Spin(), Qt::LeftButton, Qt::NoModifier, QPoint(3, 2));
    EXPECT_EQ(m_Thing.m_Free, 2.125F);
    EXPECT_EQ(Typed(), "2.125");
    QTest::mouseClick(Spin(), Qt::LeftButton, Qt::NoModifier, QPoint(3, Spin()->height() - 2));
    QTest::keyClick(Editor<QLineEdit>(), Qt::Key_Down); // the edit's arrow keys turn it too
    EXPECT_EQ(m_Thing.m_Free, 1.875F);
    // The press steps once, then every pixel.
    ASSERT_NO_FATAL_FAILURE(DragSpin({300, 290, 280}));
    EXPECT_EQ(m_Thing.m_Free, 1.875F + 0.125F + 20 * 0.125F);
    EXPECT_EQ(TakeWrites().size(), 6U) << "each move writes at once";

    ASSERT_NO_FATAL_FAILURE(Edit("m_Share"));
    ASSERT_NO_FATAL_FAILURE(DragSpin({300, 350, 349}));
    EXPECT_EQ(m_Thing.m_Share, 0.12F) << "from the limit 0, with two digits";
    ASSERT_NO_FATAL_FAILURE(Edit("m_Count"));
    ASSERT_NO_FATAL_FAILURE(DragSpin({300, 297}));
    EXPECT_EQ(m_Thing.m_Count, 7 + 2 + 6);
    ASSERT_NO_FATAL_FAILURE(Edit("m_Place")); // all components together
    ASSERT_NO_FATAL_FAILURE(DragSpin({300, 292}));
    EXPECT_EQ(Value("m_Place"), "2.125 3.125 4.125");
    ASSERT_NO_FATAL_FAILURE(Edit("m_Color"));
    EXPECT_EQ(Spin(), nullptr) << "only its parts have one";
    ASSERT_NO_FATAL_FAILURE(Edit("r"));
    EXPECT_NE(Spin(), nullptr);
}

TEST_F(CEditing, ADragGoesOnBeyondTheScreenWithoutAJump)
{
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    ASSERT_NO_FATAL_FAILURE(Edit("m_Free"));
    // The screen is 800 high: at the top the cursor goes to 795, at the bottom to 1.
    ASSERT_NO_FATAL_FAILURE(DragSpin({8, 0}));
    EXPECT_EQ(m_FrontEnd.cursorPos.y, 795);
    ASSERT_NO_FATAL_FAILURE(DragSpin({8, 0, 795, 785}));
    EXPECT_EQ(m_Thing.m_Free, 2.0F + 0.125F * (1 + 8 + 1 + 8 + 10));
    ASSERT_NO_FATAL_FAILURE(DragSpin({790, 799}));
    EXPECT_EQ(m_FrontEnd.cursorPos.y, 1);
    m_FrontEnd.calls.clear();
    ASSERT_NO_FATAL_FAILURE(DragSpin({300, 301}));
    EXPECT_EQ(m_FrontEnd.calls.size(), 2U) << "captured and let go";
    m_Other.m_Free = 70.0F;
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing, &m_Other}));
    ASSERT_NO_FATAL_FAILURE(Edit("m_Free"));
    TakeWrites();
    ASSERT_NO_FATAL_FAILURE(DragSpin({300, 250}));
    EXPECT_EQ(TakeWrites(), Texts{}) << "different values do not move";
}

TEST_F(CEditing, CheckBoxesHaveThreeStatesAndMakeDifferentValuesFalse)
{
    m_Other.m_Bits = 0;
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing, &m_Other}));
    ASSERT_NO_FATAL_FAILURE(Edit("m_On"));
    auto* pBox = Editor<QPushButton>();
    EXPECT_EQ(pBox->text(), "true");
    QTest::mouseClick(pBox, Qt::LeftButton);
    EXPECT_FALSE(m_Thing.m_On || m_Other.m_On);
    EXPECT_EQ(pBox->text(), "false");
    EXPECT_EQ(Value("m_On"), "false");
    QTest::keyClick(pBox, Qt::Key_Space);
    EXPECT_TRUE(m_Thing.m_On && m_Other.m_On);

    ASSERT_NO_FATAL_FAILURE(Edit("wet"));
    pBox = Editor<QPushButton>();
    EXPECT_EQ(pBox->text(), "<different values>");
    const QImage third = pBox->grab().toImage();
    QTest::mouseClick(pBox, Qt::LeftButton);
    EXPECT_EQ(m_Thing.m_Bits, 4U) << "the other flags stay";
    EXPECT_EQ(m_Other.m_Bits, 0U);
    EXPECT_EQ(pBox->text(), "false");
    EXPECT_NE(pBox->grab().toImage(), third);
    QTest::mouseClick(pBox, Qt::LeftButton);
    EXPECT_EQ(m_Thing.m_Bits, 5U);
    EXPECT_EQ(m_Other.m_Bits, 1U);
    EXPECT_EQ(Value("m_Bits"), "<different values>");
}

TEST_F(CEditing, ComboBoxesChooseNamesAndClasses)
{
    m_Other.m_Kind = 3;
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing, &m_Other}));
    ASSERT_NO_FATAL_FAILURE(Edit("m_Kind"));
    auto* pCombo = Editor<QComboBox>();
    EXPECT_EQ(pCombo->count(), 4);
    EXPECT_EQ(pCombo->currentText(), "<different values>");
    ASSERT_NO_FATAL_FAILURE(Choose("rock"));
    EXPECT_EQ(m_Thing.m_Kind, 1);
    EXPECT_EQ(m_Other.m_Kind, 1);
    pCombo = Editor<QComboBox>();
    EXPECT_EQ(pCombo->count(), 3) << "they are not different any more";
    EXPECT_EQ(pCombo->currentText(), "rock");

    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    ASSERT_NO_FATAL_FAILURE(Edit("m_Shape<CTestShape>"));
    pCombo = Editor<QComboBox>();
    ASSERT_NE(pCombo, nullptr);
    ASSERT_EQ(pCombo->count(), 3);
    EXPECT_EQ(pCombo->itemText(0), "null");
    EXPECT_EQ(pCombo->itemText(1), "CTestBall");
    EXPECT_EQ(pCombo->itemText(2), "CTestBox");
    EXPECT_EQ(pCombo->currentText(), "null");
    ASSERT_NO_FATAL_FAILURE(Choose("CTestBall"));
    ASSERT_NE(m_Thing.m_Shape, nullptr);
    EXPECT_STREQ(m_Thing.m_Shape->GetClassNameA(), "CTestBall");
    EXPECT_EQ(Value("m_Shape<CTestShape>"), "[CTestBall]name78(78)");
    EXPECT_EQ(Value("m_Sides"), "4") << "the new object's fields";
    ASSERT_NO_FATAL_FAILURE(Choose("null"));
    EXPECT_EQ(m_Thing.m_Shape, nullptr);
    EXPECT_EQ(FindRow("m_Sides"), -1);
}

TEST_F(CEditing, EditorsShareTheCellTheyLieOver)
{
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    QDir().mkpath("pictures");
    for (const char* pszName :
         {"m_Share", "m_Kind", "m_On", "m_Color", "m_File", "m_Shape<CTestShape>"})
    {
        SCOPED_TRACE(pszName);
        ASSERT_NO_FATAL_FAILURE(Edit(pszName));
        const QRect cell = View()->visualRect(View()->model()->index(FindRow(pszName), 1));
        QRect all;
        for (QWidget* pWidget : View()->viewport()->findChildren<QWidget*>())
        {
            if (pWidget->isVisible() && pWidget->parent() == View()->viewport())
            {
                EXPECT_TRUE(cell.contains(pWidget->geometry()));
                EXPECT_GE(pWidget->width(), cell.height() / 2);
                EXPECT_FALSE(all.intersects(pWidget->geometry()));
                all |= pWidget->geometry();
            }
        }
        EXPECT_EQ(all, cell);
        GetWidget(m_Form)->grab().save(QString("pictures/properties-%1.png").arg(FindRow(pszName)));
    }
}
