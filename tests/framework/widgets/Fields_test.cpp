// Edits, data exchange, sliders and spin buttons.

#include "tests/framework/widgets/ControlsForm.h"

#include <QAction>
#include <QLineEdit>
#include <QSlider>
#include <QTimer>
#include <QWheelEvent>

namespace
{

class CFields : public CControlsForm
{
protected:
    CFields()
    {
        m_Form.Bind(ID_EDIT, m_Edit);
        m_Form.Bind(ID_SLIDER, m_Slider);
        m_Form.Bind(ID_SPIN, m_Spin);
    }

    void Type(uint32_t uId, const char* pszText)
    {
        Find<QLineEdit>(uId)->selectAll();
        QTest::keyClicks(Find(uId), pszText);
    }

    CEdit m_Edit;
    CSliderCtrl m_Slider;
    CSpinButtonCtrl m_Spin;
};

struct SScroll
{
    EScrollCode eCode;
    int iValue;

    bool operator==(const SScroll&) const = default;
};

} // namespace

TEST_F(CFields, EditsNotifyForTypedAndForSetTexts)
{
    Note(ENotify::TextChanged, ID_EDIT, "text");
    Note(ENotify::FocusLost, ID_EDIT, "left");
    Open();
    QTest::keyClicks(Find(ID_EDIT), "ab");
    m_Edit.SetWindowText("abc");
    m_Edit.SetWindowText("abc"); // no change
    EXPECT_EQ(TakeNotes(), (Notes{"text 0", "text 0", "text 0"}));
    EXPECT_EQ(m_Edit.GetWindowText(), "abc");
    m_Edit.SetLimitText(5);
    Type(ID_EDIT, "1234567");
    EXPECT_EQ(m_Edit.GetWindowText(), "12345");
    m_Edit.SetSel(1, 3);
    int iFrom = 0;
    int iTo = 0;
    m_Edit.GetSel(iFrom, iTo);
    EXPECT_TRUE(iFrom == 1 && iTo == 3);
    m_Edit.SetSel(0, -1);
    QTest::keyClick(Find(ID_EDIT), Qt::Key_Delete);
    EXPECT_EQ(m_Edit.GetWindowText(), "");
    m_Edit.SetReadOnly(true);
    QTest::keyClicks(Find(ID_EDIT), "x");
    EXPECT_EQ(m_Edit.GetWindowText(), "");
    EXPECT_TRUE(m_Edit.IsReadOnly());
    TakeNotes();
    Find(ID_EDIT)->setFocus();
    Find(ID_NUMBER)->setFocus();
    QApplication::processEvents();
    EXPECT_EQ(TakeNotes(), (Notes{"left 0"}));
}

TEST_F(CFields, ExchangeKeepsDigitsAndWhatIsBeingTyped)
{
    float fValue = 0.1234567F;
    float fNowhere = 7.0F;
    std::string strText = "first";
    int iCheck = CHECK_ON;
    m_Form.BindValue(ID_NUMBER, fValue);
    m_Form.BindText(ID_EDIT, strText);
    m_Form.BindCheck(ID_CHECK, iCheck);
    m_Form.BindValue(ID_NOWHERE, fNowhere);
    m_Form.ReadControls(); // no window yet
    EXPECT_EQ(fValue, 0.1234567F);
    Open();
    m_Form.WriteControls();
    EXPECT_EQ(m_Form.GetItemText(ID_NUMBER), "0.123457");
    EXPECT_EQ(m_Form.GetItemText(ID_EDIT), "first");
    EXPECT_EQ(m_Form.GetItemCheck(ID_CHECK), CHECK_ON);
    m_Form.ReadControls();
    EXPECT_EQ(fValue, 0.1234567F) << "the rounded text took digits away";

    // What is typed, the number it is, the text after writing it back.
    const struct
    {
        const char* pszTyped;
        float fRead;
        const char* pszWritten;
    } cases[] = {
        {"2.", 2.0F, "2."},           // a point on the way to 2.5
        {" 2.50 ", 2.5F, " 2.50 "},   // any spelling of the value
        {"+3", 3.0F, "+3"},           //
        {"12,5", 12.5F, "12,5"},      // a comma is a point
        {"1,2,5", 12.5F, "12.5"},     //
        {"1000000", 1e6F, "1000000"}, // never an exponent
        {"", 1e6F, "1000000"},        // what is no number leaves the value, and shows it again
        {"12x", 1e6F, "1000000"},     //
        {"nan", 1e6F, "1000000"},     //
        {"-0.5", -0.5F, "-0.5"},      //
        {"1e-7", 1e-7F, "1e-7"},      //
    };

    for (const auto& [pszTyped, fRead, pszWritten] : cases)
    {
        SCOPED_TRACE(pszTyped);
        Find<QLineEdit>(ID_NUMBER)->clear();
        Find<QLineEdit>(ID_NUMBER)->insert(pszTyped); // as it is pasted, letters and all
        m_Form.ReadControls();
        EXPECT_EQ(fValue, fRead);
        m_Form.WriteControls();
        EXPECT_EQ(m_Form.GetItemText(ID_NUMBER), pszWritten);
    }
    fValue = 12345678.0F;
    m_Form.WriteControls();
    EXPECT_EQ(m_Form.GetItemText(ID_NUMBER), "12345678");
    Type(ID_EDIT, "second");
    Click(Find(ID_CHECK), QPoint(8, Find(ID_CHECK)->height() / 2));
    m_Form.ReadControls();
    EXPECT_EQ(strText, "second");
    EXPECT_EQ(iCheck, CHECK_OFF);
    EXPECT_EQ(fNowhere, 7.0F);
}

TEST_F(CFields, OneThatHoldsANumberLeavesOtherKeysToTheProgram)
{
    float fValue = 1.0F;
    int nRuns = 0;
    m_Form.BindValue(ID_NUMBER, fValue);
    Open();
    QAction action;
    action.setShortcuts({QKeySequence("F"), QKeySequence("]"), QKeySequence("5")});
    QObject::connect(&action, &QAction::triggered, [&nRuns] { ++nRuns; });
    GetWidget(m_Form)->addAction(&action);
    for (const uint32_t uId : {ID_NUMBER, ID_EDIT})
    {
        Find(uId)->setFocus();
        QTest::keyClicks(Find(uId), "-1f,]2 e5G");
    }
    EXPECT_EQ(m_Form.GetItemText(ID_NUMBER), "-1,25");
    EXPECT_EQ(m_Form.GetItemText(ID_EDIT), "-1f,]2 e5G");
    EXPECT_EQ(nRuns, 2) << "those that were not taken";
}

TEST_F(CFields, AHandlerThatReadsWhileFieldsAreWrittenSpoilsNothingAndWritingIsNoEdit)
{
    float fFirst = 1.0F;
    int nEdits = 0;
    std::string strSecond = "new";
    m_Form.BindValue(ID_NUMBER, fFirst);
    m_Form.BindText(ID_EDIT, strSecond);
    m_Form.OnTextChange(ID_NUMBER, [this] { m_Form.ReadControls(); });
    m_Form.OnEdit(ID_EDIT, [&nEdits] { ++nEdits; });
    Open();
    m_Form.WriteControls();
    EXPECT_EQ(m_Form.GetItemText(ID_EDIT), "new");
    EXPECT_EQ(m_Form.GetItemText(ID_NUMBER), "1");
    EXPECT_EQ(nEdits, 0);
    m_Form.SetItemText(ID_EDIT, "by code");
    EXPECT_EQ(nEdits, 1);
}

TEST_F(CFields, SlidersTellTheirCodesAndMoveAsTheHandlerSays)
{
    std::vector<SScroll> scrolls;
    bool bMove = false;
    m_Form.OnScroll(
        [&](SNotification& notification)
        {
            EXPECT_EQ(notification.pFrom, &m_Slider);
            scrolls.push_back({notification.eScroll, notification.iValue});
            if (bMove)
            {
                m_Slider.SetPos(500);
            }
        });
    Open();
    m_Slider.SetRange(0, 1000);
    EXPECT_EQ(m_Slider.GetPageSize(), 200);
    m_Slider.SetPageSize(50);
    m_Slider.SetRange(0, 2000);
    EXPECT_EQ(m_Slider.GetPageSize(), 50);
    m_Slider.SetPos(5000);
    EXPECT_EQ(m_Slider.GetPos(), 2000);
    m_Slider.SetPos(100);
    EXPECT_TRUE(scrolls.empty());

    auto* pSlider = Find<QSlider>(ID_SLIDER);
    for (const Qt::Key eKey :
         {Qt::Key_Left, Qt::Key_Right, Qt::Key_PageDown, Qt::Key_PageUp, Qt::Key_Home, Qt::Key_End})
    {
        QTest::keyClick(pSlider, eKey);
        EXPECT_EQ(m_Slider.GetPos(), 100) << "the handler moves it";
    }
    EXPECT_EQ(scrolls,
              (std::vector<SScroll>{{EScrollCode::LineLeft, 0},
                                    {EScrollCode::LineRight, 0},
                                    {EScrollCode::PageLeft, 0},
                                    {EScrollCode::PageRight, 0},
                                    {EScrollCode::Left, 0},
                                    {EScrollCode::Right, 0}}));
    scrolls.clear();
    bMove = true;
    QTest::keyClick(pSlider, Qt::Key_Right);
    EXPECT_EQ(m_Slider.GetPos(), 500);
    bMove = false;
    scrolls.clear();

    // The thumb follows the mouse: tracks, then one final position.
    const QPoint from(pSlider->width() / 4, pSlider->height() / 2);
    QTest::mousePress(pSlider, Qt::LeftButton, Qt::NoModifier, from);
    QTest::mouseMove(pSlider, from + QPoint(20, 0));
    QTest::mouseMove(pSlider, from + QPoint(40, 0));
    QTest::mouseRelease(pSlider, Qt::LeftButton, Qt::NoModifier, from + QPoint(40, 0));
    ASSERT_GE(scrolls.size(), 2U);
    EXPECT_EQ(scrolls.back().eCode, EScrollCode::ThumbPosition);
    EXPECT_EQ(scrolls[scrolls.size() - 2].eCode, EScrollCode::ThumbTrack);
    EXPECT_EQ(scrolls.back().iValue, m_Slider.GetPos());
    EXPECT_GT(m_Slider.GetPos(), 500);
}

TEST_F(CFields, TheWheelTurnsASliderOnlyUnderTheFocus)
{
    Note(ENotify::Scrolled, ID_SLIDER, "scroll");
    Open();
    QWidget* pSlider = Find(ID_SLIDER);
    const auto turn = [pSlider]
    {
        QWheelEvent wheel(QPointF(5, 5),
                          pSlider->mapToGlobal(QPointF(5, 5)),
                          QPoint(),
                          QPoint(0, 120),
                          Qt::NoButton,
                          Qt::NoModifier,
                          Qt::NoScrollPhase,
                          false);
        QApplication::sendEvent(pSlider, &wheel);
    };
    Find(ID_EDIT)->setFocus();
    turn();
    EXPECT_EQ(TakeNotes(), Notes{});
    pSlider->setFocus();
    turn();
    EXPECT_EQ(TakeNotes(), (Notes{"scroll 0"}));
}

TEST_F(CFields, SpinsStepCountAndCanBeRefused)
{
    bool bRefuse = false;
    m_Form.On(ENotify::SpinDelta,
              ID_SPIN,
              [&](SNotification& notification)
              {
                  m_Notes.push_back(std::to_string(notification.iValue));
                  notification.bRefused = bRefuse;
              });
    Open();
    QWidget* pSpin = Find(ID_SPIN);
    const QPoint up(pSpin->width() / 2, 3);
    const QPoint down(pSpin->width() / 2, pSpin->height() - 3);
    Click(pSpin, up);
    Click(pSpin, down);
    EXPECT_EQ(TakeNotes(), (Notes{"-1", "1"})) << "counts down until it has a range";
    m_Spin.SetRange(0, 100);
    m_Spin.SetPos(100);
    Click(pSpin, up);
    EXPECT_EQ(m_Spin.GetPos(), 100);
    Click(pSpin, down);
    EXPECT_EQ(m_Spin.GetPos(), 99);
    bRefuse = true;
    Click(pSpin, down);
    EXPECT_EQ(m_Spin.GetPos(), 99);
    EXPECT_EQ(TakeNotes(), (Notes{"1", "-1", "-1"})) << "at its end it still tells";

    m_Spin.SetBuddy(ID_NOWHERE);
    EXPECT_EQ(m_Spin.GetBuddy(), 0U);
    m_Spin.SetBuddy(ID_EDIT);
    EXPECT_EQ(m_Spin.GetBuddy(), uint32_t{ID_EDIT});
    QTest::keyClick(Find(ID_EDIT), Qt::Key_Up);
    QTest::keyClick(Find(ID_EDIT), Qt::Key_Down);
    QTest::keyClick(Find(ID_NUMBER), Qt::Key_Down);
    EXPECT_EQ(TakeNotes(), (Notes{"1", "-1"}));

    // Another form in the same window has its own control of that id.
    CTestView other(CONTROLS_FORM);
    ASSERT_TRUE(other.Create(&m_Form));
    m_Spin.SetBuddy(ID_NUMBER);
    QTest::keyClick(other.Find(ID_NUMBER), Qt::Key_Up);
    EXPECT_EQ(TakeNotes(), Notes{});
    QTest::keyClick(Find(ID_NUMBER), Qt::Key_Up);
    EXPECT_EQ(TakeNotes(), (Notes{"1"}));
}

TEST_F(CFields, AHeldArrowRepeatsUntilItIsLetGo)
{
    Note(ENotify::SpinDelta, ID_SPIN, "step");
    Open();
    QWidget* pSpin = Find(ID_SPIN);
    QTest::mousePress(pSpin, Qt::LeftButton, Qt::NoModifier, QPoint(4, 3));
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_Notes.size() >= 3; }));
    QTest::mouseRelease(pSpin, Qt::LeftButton, Qt::NoModifier, QPoint(4, 3));
    TakeNotes();
    bool bLater = false; // several repeats later
    QTimer::singleShot(200, [&bLater] { bLater = true; });
    EXPECT_TRUE(QTest::qWaitFor([&bLater] { return bLater; }));
    EXPECT_EQ(TakeNotes(), Notes{});
}

TEST_F(CFields, AHeldArrowCountsForMoreTheLongerItIsHeld)
{
    Note(ENotify::SpinDelta, ID_SPIN, "step");
    Open();
    m_Spin.SetRange(0, 5000);
    m_Spin.SetBuddy(ID_EDIT);
    const auto press = [this](bool bRepeat)
    {
        QKeyEvent key(QEvent::KeyPress, Qt::Key_Up, Qt::NoModifier, QString(), bRepeat);
        QApplication::sendEvent(Find(ID_EDIT), &key);
    };
    press(false);
    for (int i = 0; i < 250; ++i)
    {
        press(true);
    }
    press(false);
    EXPECT_EQ(m_Notes[0], "step 1");
    EXPECT_EQ(m_Notes[30], "step 1");
    EXPECT_EQ(m_Notes[60], "step 2");
    EXPECT_EQ(m_Notes[150], "step 20");
    EXPECT_EQ(m_Notes[250], "step 100") << "thousands are not far";
    EXPECT_EQ(TakeNotes()[251], "step 1") << "the next press begins anew";
    EXPECT_GT(m_Spin.GetPos(), 2000);

    QWidget* pSpin = Find(ID_SPIN);
    const QPoint down(4, pSpin->height() - 3);
    QTest::mousePress(pSpin, Qt::LeftButton, Qt::NoModifier, down);
    EXPECT_TRUE(QTest::qWaitFor([this] { return m_Notes.back() == "step -2"; }));
    QTest::mouseRelease(pSpin, Qt::LeftButton, Qt::NoModifier, down);
    TakeNotes();
    QTest::mouseClick(pSpin, Qt::LeftButton, Qt::NoModifier, down);
    EXPECT_EQ(TakeNotes(), (Notes{"step -1"}));
}
