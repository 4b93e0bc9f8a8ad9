#include "framework/drawing/CDrawContext.h"
#include "framework/drawing/SystemColors.h"
#include "tests/framework/widgets/ControlsForm.h"

#include <QPushButton>

namespace
{

// Draws itself in one colour by its state and remembers what it was given.
class CDrawnButton : public CButton
{
public:
    SDrawItem item;
    int nPresses = 0;
    bool bKeepsClicks = false; // its parent does not hear of them
    bool bDownAfterDefault = false;
    ColorRef uGround = 0;

protected:
    void DrawItem(const SDrawItem& drawn) override
    {
        item = drawn;
        uGround = drawn.pContext->GetPixel(0, 0);
        drawn.pContext->FillRect(drawn.rect, MakeColor(200, 40, 10));
    }

    bool OnNotify(SNotification& notification) override
    {
        return bKeepsClicks && notification.eKind == ENotify::Clicked;
    }

    bool OnLButtonDown(const SMouseEvent&) override
    {
        ++nPresses;
        DoDefault();
        bDownAfterDefault = true;
        return false; // the usual processing has run and does not run again
    }
};

class CButtons : public CControlsForm
{
protected:
    CDrawnButton m_Drawn;
    CButton m_Three;
    CButton m_Toggle;
};

} // namespace

TEST_F(CButtons, ClicksReachTheHandlerOfTheirIdAloneAndChangeWhatTheKindChanges)
{
    for (const uint32_t uId : {ID_PUSH, ID_CHECK, ID_THREE, ID_TOGGLE, ID_NOWHERE})
    {
        m_Form.OnClick(uId, [this, uId] { m_Notes.push_back(std::to_string(uId)); });
    }
    m_Form.Bind(ID_THREE, m_Three);
    CButton nowhere;
    m_Form.Bind(ID_NOWHERE, nowhere);
    Open();
    for (const uint32_t uId : {ID_PUSH, ID_CHECK, ID_TOGGLE, ID_THREE, ID_DRAWN})
    {
        Click(Find(uId), QPoint(8, Find(uId)->height() / 2));
    }
    EXPECT_EQ(TakeNotes(), (Notes{"11", "12", "14", "13"}));
    EXPECT_EQ(m_Form.GetItemCheck(ID_CHECK), CHECK_ON);
    EXPECT_EQ(m_Form.GetItemCheck(ID_TOGGLE), CHECK_ON);
    EXPECT_EQ(m_Form.GetItemCheck(ID_PUSH), CHECK_OFF);
    EXPECT_EQ(m_Three.GetCheck(), CHECK_OFF) << "its owner changes it";

    // By code nobody hears of it.
    for (const int iState : {CHECK_UNDETERMINED, CHECK_ON, CHECK_OFF, CHECK_UNDETERMINED})
    {
        m_Three.SetCheck(iState);
        m_Form.CheckItem(ID_CHECK, iState);
        EXPECT_EQ(m_Three.GetCheck(), iState);
        EXPECT_EQ(m_Form.GetItemCheck(ID_CHECK), iState == CHECK_ON ? CHECK_ON : CHECK_OFF);
    }
    QTest::keyClick(Find(ID_PUSH), Qt::Key_Space);
    m_Form.EnableItem(ID_PUSH, false);
    Click(Find(ID_PUSH));
    EXPECT_EQ(TakeNotes(), (Notes{"11"}));
    EXPECT_FALSE(nowhere.IsWindow());
    EXPECT_FALSE(m_Form.IsItemEnabled(ID_PUSH));
    nowhere.SetCheck(CHECK_ON); // nothing to change
    EXPECT_EQ(nowhere.GetCheck(), CHECK_OFF);
}

TEST_F(CButtons, OwnerDrawnOnesGetContextRectangleAndState)
{
    m_Form.Bind(ID_DRAWN, m_Drawn);
    m_Form.Bind(ID_TOGGLE, m_Toggle);
    Note(ENotify::Clicked, ID_DRAWN, "click");
    Note(ENotify::DoubleClicked, ID_DRAWN, "double");
    Open();
    auto* pButton = Find<QPushButton>(ID_DRAWN);
    Find(ID_EDIT)->setFocus();
    const QImage picture = pButton->grab().toImage();
    const double fScale = pButton->devicePixelRatioF();
    EXPECT_EQ(picture.pixelColor(picture.width() - 1, picture.height() - 1), QColor(200, 40, 10));
    EXPECT_EQ(m_Drawn.item.rect, (SRect{0, 0, picture.width(), picture.height()}));
    EXPECT_EQ(m_Drawn.uGround, GetSystemColor(ESystemColor::ButtonFace));
    EXPECT_EQ(picture.width(), qRound(pButton->width() * fScale));
    EXPECT_EQ(m_Drawn.item.uState, 0U);

    int nPressed = 0;
    QObject::connect(pButton, &QPushButton::pressed, [&nPressed] { ++nPressed; });
    QTest::mousePress(pButton, Qt::LeftButton);
    EXPECT_EQ(nPressed, 1) << "the usual processing runs once";
    pButton->grab();
    EXPECT_EQ(m_Drawn.item.uState & ITEM_SELECTED, uint32_t{ITEM_SELECTED});
    EXPECT_EQ(m_Drawn.nPresses, 1);
    EXPECT_TRUE(m_Drawn.bDownAfterDefault);
    QTest::mouseRelease(pButton, Qt::LeftButton);
    EXPECT_EQ(TakeNotes(), (Notes{"click 0"}));
    QTest::mouseDClick(pButton, Qt::LeftButton);
    EXPECT_EQ(TakeNotes().back(), "double 0");
    pButton->setFocus();
    pButton->grab();
    EXPECT_EQ(m_Drawn.item.uState, pButton->hasFocus() ? uint32_t{ITEM_FOCUS} : 0U);
    TakeNotes();
    m_Drawn.bKeepsClicks = true;
    Click(pButton);
    EXPECT_EQ(TakeNotes(), Notes{});
    m_Drawn.EnableWindow(false);
    pButton->grab();
    EXPECT_EQ(m_Drawn.item.uState, uint32_t{ITEM_DISABLED});

    // A push-like check button becomes one that changes nothing by itself.
    m_Toggle.SetOwnerDraw();
    Click(Find(ID_TOGGLE));
    EXPECT_EQ(m_Toggle.GetCheck(), CHECK_OFF);
}
