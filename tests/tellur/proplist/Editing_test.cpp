// The in-place editors in their window: typing, clicking, the keyboard's way, the cell they share.

#include "tests/tellur/proplist/PropListFixture.h"

#include <QDir>

using CEditing = CPropListTest;

TEST_F(CEditing, TypedTextGoesToTheObjectsOnEnterAndWhenTheFocusLeaves)
{
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}, "m_Free"));
    EXPECT_TRUE(Editor<QLineEdit>()->hasFocus());
    EXPECT_EQ(Editor<QLineEdit>()->selectedText(), "2");
    ASSERT_NO_FATAL_FAILURE(Enter("3.25"));
    EXPECT_EQ(m_Thing.m_Free, 3.25F);
    ASSERT_NO_FATAL_FAILURE(Type("4"));
    EXPECT_EQ(m_Thing.m_Free, 3.25F) << "not while it is typed";
    m_Form.Find<QLineEdit>(22)->setFocus();
    EXPECT_EQ(m_Thing.m_Free, 4.0F);
    ASSERT_NO_FATAL_FAILURE(Edit("m_Free"));
    ASSERT_NO_FATAL_FAILURE(Type("5"));
    ASSERT_NO_FATAL_FAILURE(Edit("m_Count")); // another row
    EXPECT_EQ(m_Thing.m_Free, 5.0F);
    EXPECT_EQ(Typed(), "7");

    ASSERT_NO_FATAL_FAILURE(Type("8"));
    QTest::keyClick(Editor<QLineEdit>(), Qt::Key_Escape);
    EXPECT_EQ(Typed(), "7");
    QTest::keyClick(Editor<QLineEdit>(), Qt::Key_Escape);
    EXPECT_TRUE(View()->hasFocus());
    EXPECT_EQ(m_Thing.m_Count, 7);
    EXPECT_EQ(m_Log.GetText(), "");
}

TEST_F(CEditing, AnEditShowsWhatTheObjectsTook)
{
    m_Other.m_Free = 70.0F;
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing, &m_Other}, "m_Free"));
    EXPECT_EQ(Typed(), "<different values>");
    QTest::keyClick(Editor<QLineEdit>(), Qt::Key_Return);
    EXPECT_EQ(TakeWrites(), Texts{}) << "nothing was typed";
    ASSERT_NO_FATAL_FAILURE(Enter("2"));
    ASSERT_NO_FATAL_FAILURE(Enter("much"));
    EXPECT_EQ(Typed(), "2");
    QTest::keyClick(Editor<QLineEdit>(), Qt::Key_Down); // the arrow keys turn the spinner
    EXPECT_EQ(Typed(), "1.875");
    EXPECT_EQ(m_Other.m_Free, 1.875F);
    ASSERT_NO_FATAL_FAILURE(Edit("m_Place"));
    ASSERT_NO_FATAL_FAILURE(Enter("1,5 +2,25 3"));
    EXPECT_EQ(Value("m_Place"), "1.5 2.25 3");
    ASSERT_NO_FATAL_FAILURE(Edit("a fixed number"));
    EXPECT_EQ(Editor<QWidget>(), nullptr) << "it may be read only";
}

TEST_F(CEditing, ARefreshDisturbsNobody)
{
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}, "m_Free"));
    auto* pEdit = Editor<QLineEdit>();
    ASSERT_NO_FATAL_FAILURE(Type("12"));
    m_Thing.m_Share = 0.125F;
    m_List.SetObjects({&m_Thing}); // the same object: no new rows
    EXPECT_EQ(Value("m_Share"), "0.125");
    EXPECT_EQ(Editor<QLineEdit>(), pEdit);
    EXPECT_TRUE(pEdit->hasFocus());
    EXPECT_EQ(Typed(), "12");
    m_Thing.m_Free = 9.0F; // the value itself changes: it is shown
    m_List.RefreshValues();
    EXPECT_EQ(Typed(), "9");

    // The object goes while its value is being typed.
    auto pGone = std::make_unique<CTestThing>();
    m_List.SetObjects({pGone.get()});
    ASSERT_NO_FATAL_FAILURE(Edit("m_Free"));
    ASSERT_NO_FATAL_FAILURE(Type("77"));
    pGone.reset();
    m_List.SetObjects({&m_Other});
    QApplication::processEvents();
    EXPECT_EQ(m_Other.m_Free, 2.0F);
    EXPECT_EQ(TakeWrites(), Texts{});
}

TEST_F(CEditing, GoesOnAtTheOtherObjectsThatAValueBrought)
{
    m_Other.m_Count = 70;
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}, "m_Free"));
    m_User.onWritten = [this]
    {
        m_List.SetObjects({&m_Other});
    };
    ASSERT_NO_FATAL_FAILURE(Type("5"));
    QTest::keyClick(Editor<QLineEdit>(), Qt::Key_Tab);
    EXPECT_EQ(m_Thing.m_Free, 5.0F);
    EXPECT_EQ(m_List.GetSelectedItem(), FindRow("m_Count"));
    EXPECT_EQ(Typed(), "70");
    ASSERT_NO_FATAL_FAILURE(Enter("71"));
    EXPECT_EQ(m_Other.m_Count, 71);
}

TEST_F(CEditing, TextMacrosAreShownExpandedUntilTheTextIsEdited)
{
    m_Thing.m_File = "a&&b.png"; // "&&" is the macro for one "&"
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    View()->setFocus();
    for (int i = 0; i < 40 && m_List.GetSelectedItem() != FindRow("m_File"); ++i)
    {
        QTest::keyClick(View(), Qt::Key_Down);
    }
    EXPECT_EQ(Typed(), "a&b.png");
    QTest::keyClick(View(), Qt::Key_F2);
    EXPECT_EQ(Typed(), "a&&b.png");
    ASSERT_NO_FATAL_FAILURE(Enter("c&&d.png"));
    EXPECT_EQ(m_Thing.m_File, "c&&d.png");
}

TEST_F(CEditing, TheKeyboardAloneGoesThroughAllEditors)
{
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    View()->setFocus();
    std::string strRows;
    for (int i = 0; i < 40 && m_List.HasFocus(); ++i)
    {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        strRows += m_List.GetCellText(m_List.HasFocus() ? m_List.GetSelectedItem() : -1, 0) + "|";
    }
    EXPECT_EQ(strRows,
              "m_Share|m_Free|m_Count|m_On|m_Kind|wet|steep|high|m_Place|x|y|z|m_Color|m_Color|"
              "r|g|b|m_Frame|m_File|m_File|m_Folder|m_Folder|m_Shape<CTestShape>|"
              "m_Shape<CTestShape>||");
    EXPECT_EQ(QApplication::focusWidget(), m_Form.Find<QWidget>(22));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(View()->hasFocus());
    ASSERT_NO_FATAL_FAILURE(Edit("m_Free"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(m_List.GetSelectedItem(), FindRow("m_Share"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(View()->hasFocus()) << "before the first editor is the list";
}

TEST_F(CEditing, CheckBoxesHaveThreeStatesAndMakeDifferentValuesFalse)
{
    m_Other.m_On = false;
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing, &m_Other}, "m_On"));
    auto* pBox = Editor<QPushButton>();
    EXPECT_EQ(pBox->text(), "<different values>");
    const QImage third = pBox->grab().toImage();
    QTest::mouseClick(pBox, Qt::LeftButton);
    EXPECT_FALSE(m_Thing.m_On || m_Other.m_On);
    EXPECT_EQ(pBox->text(), "false");
    EXPECT_NE(pBox->grab().toImage(), third);
    QTest::keyClick(pBox, Qt::Key_Space);
    EXPECT_TRUE(m_Thing.m_On && m_Other.m_On);
}

TEST_F(CEditing, ComboBoxesChooseNamesAndClasses)
{
    m_Other.m_Kind = 3;
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing, &m_Other}, "m_Kind"));
    const auto getItems = [this]
    {
        std::string strItems = Editor<QComboBox>()->currentText().toStdString() + " of ";
        for (int i = 0; i < Editor<QComboBox>()->count(); ++i)
        {
            strItems += Editor<QComboBox>()->itemText(i).toStdString() + "|";
        }
        return strItems;
    };
    const auto press = [this](Qt::Key eKey)
    {
        Editor<QComboBox>()->setFocus();
        QTest::keyClick(Editor<QComboBox>(), eKey);
    };
    EXPECT_EQ(getItems(), "<different values> of <different values>|rock|sand|clay|");
    press(Qt::Key_Down);
    EXPECT_EQ(m_Thing.m_Kind + m_Other.m_Kind, 1 + 1);
    EXPECT_EQ(getItems(), "rock of rock|sand|clay|") << "they are not different any more";
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}, "m_Shape<CTestShape>"));
    EXPECT_EQ(getItems(), "null of null|CTestBall|CTestBox|");
    press(Qt::Key_Down);
    EXPECT_EQ(Value("m_Shape<CTestShape>"), "[CTestBall]name78(78)");
    EXPECT_EQ(Value("m_Sides"), "4") << "the new object's fields";
    press(Qt::Key_Up);
    EXPECT_EQ(FindRow("m_Sides"), -1);
}

TEST_F(CEditing, BrowseButtonsTakeWhatIsChosen)
{
    m_User.face.strBrowseAnswer = "data/b.png";
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}, "m_File"));
    QTest::mouseClick(Editor<QPushButton>(), Qt::LeftButton);
    EXPECT_EQ(Typed(), "data/b.png");
    QTest::keyClick(Editor<QPushButton>(), Qt::Key_Delete); // nothing to the list around it
    EXPECT_EQ(m_Thing.m_File, "data/b.png");
    m_FrontEnd.keys = {EKey::Shift}; // clears
    QTest::mouseClick(Editor<QPushButton>(), Qt::LeftButton);
    EXPECT_EQ(m_Thing.m_File, "");
    m_Other.m_Color = {0.0F, 0.0F, 1.0F};
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing, &m_Other}, "m_Color"));
    auto* pSwatch = Editor<QPushButton>();
    const auto getColor = [pSwatch]
    {
        return pSwatch->grab().toImage().pixelColor(pSwatch->width() / 2, pSwatch->height() / 2);
    };
    EXPECT_EQ(getColor(), QColor(Qt::black)) << "of different values";
    m_FrontEnd.uChosenColor = 0x0000FF; // red
    QTest::mouseClick(pSwatch, Qt::LeftButton);
    EXPECT_EQ(m_FrontEnd.calls.back(), "FrontEnd.ChooseColor(0)");
    EXPECT_EQ(getColor(), QColor(Qt::red));
    m_FrontEnd.uChosenColor = 0xFFFFFFFF;
    QTest::mouseClick(pSwatch, Qt::LeftButton);
    EXPECT_EQ(m_FrontEnd.calls.back(), "FrontEnd.ChooseColor(0xff)");
    EXPECT_EQ(Value("m_Color"), "1 0 0");
    SPropListHooks hooks;
    hooks.mayEdit = [](const CRTTIField&)
    {
        return false;
    };
    m_List.SetHooks(hooks);
    m_List.RefreshValues();
    EXPECT_FALSE(pSwatch->isEnabled());
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
