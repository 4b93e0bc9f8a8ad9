// The in-place editors, worked with mouse and keys.

#include "proplist/CPropCtrlEdit.h"
#include "proplist/PropText.h"
#include "tests/proplist/PropListFixture.h"

#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>

#include <map>

using Texts = std::vector<std::string>;

namespace
{

class CEditing : public CPropListTest
{
protected:
    void Type(const char* pszText)
    {
        auto* pEdit = Editor<QLineEdit>();
        ASSERT_NE(pEdit, nullptr);
        pEdit->selectAll();
        QTest::keyClicks(pEdit, pszText);
    }

    void Enter(const char* pszText)
    {
        ASSERT_NO_FATAL_FAILURE(Type(pszText));
        QTest::keyClick(Editor<QLineEdit>(), Qt::Key_Return);
    }

    std::string Typed() { return Editor<QLineEdit>()->text().toStdString(); }

    // The spin of the row under edit: it has no type of its own to look for.
    QWidget* Spin()
    {
        for (QWidget* pWidget : View()->viewport()->findChildren<QWidget*>())
        {
            const bool bOther = qobject_cast<QLineEdit*>(pWidget) != nullptr ||
                                qobject_cast<QPushButton*>(pWidget) != nullptr ||
                                qobject_cast<QComboBox*>(pWidget) != nullptr;
            if (pWidget->isVisible() && !bOther && pWidget->parent() == View()->viewport())
            {
                return pWidget;
            }
        }
        return nullptr;
    }

    // Presses the spin, moves to the heights of the screen in turn, lets go.
    void DragSpin(const std::vector<int>& heights)
    {
        QWidget* pSpin = Spin();
        ASSERT_NE(pSpin, nullptr);
        const int iX = pSpin->mapToGlobal(QPoint(0, 0)).x() - 50; // beside it
        const auto send = [&](QEvent::Type eType, const QPoint& local, const QPoint& screen)
        {
            QMouseEvent event(eType,
                              QPointF(local),
                              QPointF(screen),
                              eType == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                              Qt::LeftButton,
                              Qt::NoModifier);
            QApplication::sendEvent(pSpin, &event);
        };
        send(QEvent::MouseButtonPress, {3, 2}, {iX, heights.front()});
        for (size_t i = 1; i < heights.size(); ++i)
        {
            send(QEvent::MouseMove, {-50, 0}, {iX, heights[i]});
        }
        send(QEvent::MouseButtonRelease, {-50, 0}, {iX, heights.back()});
    }
};

class CMacros : public ITextMacroTable
{
public:
    const char* Find(const char* pszName) const override
    {
        const auto found = values.find(pszName);
        return found != values.end() ? found->second.c_str() : nullptr;
    }

    std::map<std::string, std::string> values;
};

} // namespace

TEST_F(CEditing, TypedTextGoesToTheObjectsOnEnterAndWhenTheFocusLeaves)
{
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    ASSERT_NO_FATAL_FAILURE(Edit("m_Free"));
    EXPECT_TRUE(Editor<QLineEdit>()->hasFocus());
    EXPECT_EQ(Editor<QLineEdit>()->selectedText(), "2");
    ASSERT_NO_FATAL_FAILURE(Enter("3.25"));
    EXPECT_EQ(m_Thing.m_Free, 3.25F);
    EXPECT_EQ(Value("m_Free"), "3.25");
    EXPECT_EQ(m_Thing.changes, Texts{"m_Free"});
    ASSERT_NO_FATAL_FAILURE(Enter("3.25"));
    EXPECT_EQ(TakeWrites(), Texts{"m_Free=3.25 x1"}) << "the same text is not written again";

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

TEST_F(CEditing, WhatIsNoValueLeavesTheOldOneAndSaysSo)
{
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    ASSERT_NO_FATAL_FAILURE(Edit("m_Free"));
    ASSERT_NO_FATAL_FAILURE(Enter("much"));
    EXPECT_EQ(m_Thing.m_Free, 2.0F);
    EXPECT_EQ(Typed(), "2");
    EXPECT_EQ(Value("m_Free"), "2");
    ASSERT_NO_FATAL_FAILURE(Edit("m_Count"));
    ASSERT_NO_FATAL_FAILURE(Enter("1.5"));
    EXPECT_EQ(m_Thing.m_Count, 7);
    EXPECT_EQ(
        m_Log.TakeLines(),
        (Texts{"[CPropListCtrl::HandleFieldEdit] \"much\" is no value for CTestThing.m_Free",
               "[CPropListCtrl::HandleFieldEdit] \"1.5\" is no value for CTestThing.m_Count"}));
    // What is outside the limits is brought to the limit.
    ASSERT_NO_FATAL_FAILURE(Edit("m_Share"));
    ASSERT_NO_FATAL_FAILURE(Enter("2"));
    EXPECT_EQ(m_Thing.m_Share, 1.0F);
    EXPECT_EQ(Typed(), "1");
    ASSERT_NO_FATAL_FAILURE(Enter("-3"));
    EXPECT_EQ(m_Thing.m_Share, 0.0F);

    ASSERT_NO_FATAL_FAILURE(Edit("a fixed number"));
    EXPECT_EQ(Editor<QWidget>(), nullptr) << "it may be read only";
    ASSERT_NO_FATAL_FAILURE(Edit("y"));
    ASSERT_NO_FATAL_FAILURE(Enter("-6"));
    EXPECT_EQ(Value("m_Place"), "1 -6 3") << "the whole field shows its part";
    EXPECT_EQ(m_Thing.m_Place.y, -6.0F);
}

TEST_F(CEditing, TheProgramsKeysWaitWhileATextIsEdited)
{
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    ASSERT_NO_FATAL_FAILURE(Edit("m_Free"));
    const auto isKept = [this](int iKey, Qt::KeyboardModifiers modifiers)
    {
        QKeyEvent event(QEvent::ShortcutOverride, iKey, modifiers);
        event.ignore();
        QApplication::sendEvent(Editor<QLineEdit>(), &event);
        return event.isAccepted();
    };
    EXPECT_TRUE(isKept(Qt::Key_T, Qt::ControlModifier));
    EXPECT_TRUE(isKept(Qt::Key_Delete, Qt::NoModifier));
    EXPECT_TRUE(isKept(Qt::Key_Escape, Qt::NoModifier));
    EXPECT_TRUE(isKept(Qt::Key_Return, Qt::NoModifier));
    EXPECT_FALSE(isKept(Qt::Key_F5, Qt::NoModifier));
}

TEST_F(CEditing, ARefreshDisturbsNobody)
{
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    ASSERT_NO_FATAL_FAILURE(Edit("m_Free"));
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

TEST_F(CEditing, DifferentValuesBecomeOneWhenSomethingIsTyped)
{
    m_Other.m_Free = 70.0F;
    m_Other.m_Color = {0.0F, 0.0F, 1.0F};
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing, &m_Other}));
    ASSERT_NO_FATAL_FAILURE(Edit("m_Free"));
    EXPECT_EQ(Typed(), "<different values>");
    QTest::keyClick(Editor<QLineEdit>(), Qt::Key_Return);
    EXPECT_EQ(TakeWrites(), Texts{}) << "nothing was typed";
    ASSERT_NO_FATAL_FAILURE(Enter("2")); // what the first object has already
    EXPECT_EQ(TakeWrites(), Texts{"m_Free=2 x2"});
    EXPECT_EQ(m_Other.m_Free, 2.0F);
    EXPECT_EQ(Value("m_Free"), "2");
    ASSERT_NO_FATAL_FAILURE(DragSpin({300, 299}));
    EXPECT_EQ(m_Other.m_Free, 2.25F) << "and now it can be dragged";

    ASSERT_NO_FATAL_FAILURE(Edit("m_Color"));
    const QImage black = Editor<QPushButton>()->grab().toImage();
    EXPECT_EQ(black.pixelColor(black.width() / 2, black.height() / 2), QColor(Qt::black));
}

TEST_F(CEditing, TextMacrosAreShownExpandedUntilTheTextIsEdited)
{
    CMacros macros;
    macros.values = {{"root", "/levels"}};
    m_User.fake.engine.pMacros = &macros;
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    View()->setFocus();
    for (int i = 0; i < 40 && m_List.GetSelectedItem() != FindRow("m_File"); ++i)
    {
        QTest::keyClick(View(), Qt::Key_Down);
    }
    EXPECT_EQ(Typed(), "/levels/a.png");
    QTest::keyClick(View(), Qt::Key_F2);
    EXPECT_EQ(Typed(), "&root&/a.png");
    ASSERT_NO_FATAL_FAILURE(Enter("&root&/b.png"));
    EXPECT_EQ(m_Thing.m_File, "&root&/b.png");

    struct SCase
    {
        const char* pszText;
        const char* pszExpanded;
    };

    for (const SCase& entry : {SCase{"&root&&root&", "/levels/levels"},
                               {"&other&/x", "&other&/x"},
                               {"a && b", "a & b"},
                               {"a & b", "a & b"},
                               {"&", "&"},
                               {"", ""}})
    {
        EXPECT_EQ(ExpandTextMacros(entry.pszText, &macros), entry.pszExpanded) << entry.pszText;
    }
    EXPECT_EQ(ExpandTextMacros("&root&", nullptr), "&root&");
    EXPECT_EQ(ExpandTextMacros(std::string(5000, 'x'), &macros).size(), 4096U);
}

TEST_F(CEditing, TheKeyboardAloneGoesThroughAllEditors)
{
    ASSERT_NO_FATAL_FAILURE(Show({&m_Thing}));
    View()->setFocus();
    const auto tab = [](bool bBack)
    {
        QTest::keyClick(QApplication::focusWidget(),
                        bBack ? Qt::Key_Backtab : Qt::Key_Tab,
                        bBack ? Qt::ShiftModifier : Qt::NoModifier);
    };
    const auto getRow = [this]
    {
        return m_List.GetCellText(m_List.GetSelectedItem(), 0);
    };
    Texts rows;
    for (int i = 0; i < 40 && m_List.HasFocus(); ++i)
    {
        tab(false);
        rows.push_back(m_List.HasFocus() ? getRow() : "outside");
    }
    EXPECT_EQ(rows,
              (Texts{"m_Share",
                     "m_Free",
                     "m_Count",
                     "m_On",
                     "m_Kind",
                     "wet",
                     "steep",
                     "high",
                     "m_Place",
                     "x",
                     "y",
                     "z",
                     "m_Color",
                     "m_Color",
                     "r",
                     "g",
                     "b",
                     "m_Frame",
                     "m_File",
                     "m_File",
                     "m_Folder",
                     "m_Folder",
                     "m_Shape<CTestShape>",
                     "m_Shape<CTestShape>",
                     "outside"}));
    EXPECT_EQ(QApplication::focusWidget(), m_Form.Find<QWidget>(22));
    tab(true);
    EXPECT_TRUE(View()->hasFocus());
    ASSERT_NO_FATAL_FAILURE(Edit("m_Free"));
    tab(true);
    EXPECT_EQ(getRow(), "m_Share");
    tab(true);
    EXPECT_TRUE(View()->hasFocus()) << "before the first editor is the list";
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
