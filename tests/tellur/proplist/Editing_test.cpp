// What is typed into the in-place editors, and the keyboard's way through them.

#include "tellur/proplist/CPropCtrlEdit.h"
#include "tests/tellur/proplist/EditingFixture.h"

namespace
{

// An engine with one text macro, which nobody sets in the one that ships.
class CMacroEngine : public EngineHost, public ITextMacroTable
{
public:
    const char* Find(const char* pszName) const override
    {
        return std::string(pszName) == "root" ? "/levels" : nullptr;
    }

    int ReloadTexture(const char*) override { return 0; }

    ITextMacroTable* GetTextMacroTable() override { return this; }

    World* GetWorld() override { return nullptr; }

    CRTTIObject* FindObjectById(int32_t) override { return nullptr; }

    std::vector<CRTTIObject*> GetObjects() override { return {}; }

    void StepCameraVertical(ViewId, float) override {}

    void StrafeCamera(ViewId, const SVec3&) override {}

    void DollyCamera(ViewId, float) override {}

    void DrawLine(const SVec3&, const SVec3&, const SColor&) override {}

    void DrawLines(uint32_t, const SVec3*, EPolyline, const SColor&) override {}
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

    ASSERT_NO_FATAL_FAILURE(Edit("m_Place")); // a comma is a point
    ASSERT_NO_FATAL_FAILURE(Enter("1,5 +2,25 3"));
    EXPECT_EQ(Value("m_Place"), "1.5 2.25 3");
    ASSERT_NO_FATAL_FAILURE(Enter("1,5 2,2,5 3"));
    EXPECT_EQ(m_Log.TakeLines().size(), 1U);
    ASSERT_NO_FATAL_FAILURE(Enter("1 2 3"));

    ASSERT_NO_FATAL_FAILURE(Edit("a fixed number"));
    EXPECT_EQ(Editor<QWidget>(), nullptr) << "it may be read only";
    ASSERT_NO_FATAL_FAILURE(Edit("y"));
    ASSERT_NO_FATAL_FAILURE(Enter("-6"));
    EXPECT_EQ(Value("m_Place"), "1 -6 3") << "the whole field shows its part";
    EXPECT_EQ(m_Thing.m_Place.y, -6.0F);
    // An owner may hand in the text of a part, or of the whole.
    CRTTIField* pPlace = m_Thing.FindField("m_Place");
    EXPECT_TRUE(m_List.HandleFieldEdit({&m_Thing, &m_Other}, pPlace, "9", 2));
    EXPECT_FALSE(m_List.HandleFieldEdit({&m_Thing}, pPlace, "9", -1));
    m_List.RefreshValues();
    EXPECT_EQ(Value("m_Place"), "1 -6 9");
    EXPECT_EQ(m_Other.m_Place.z, 9.0F);
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
    CMacroEngine macros;
    m_User.pEngine = &macros;
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
    std::string strRows;
    for (int i = 0; i < 40 && m_List.HasFocus(); ++i)
    {
        tab(false);
        strRows += (m_List.HasFocus() ? getRow() : "outside") + "|";
    }
    EXPECT_EQ(strRows,
              "m_Share|m_Free|m_Count|m_On|m_Kind|wet|steep|high|m_Place|x|y|z|m_Color|m_Color|"
              "r|g|b|m_Frame|m_File|m_File|m_Folder|m_Folder|m_Shape<CTestShape>|"
              "m_Shape<CTestShape>|outside|");
    EXPECT_EQ(QApplication::focusWidget(), m_Form.Find<QWidget>(22));
    tab(true);
    EXPECT_TRUE(View()->hasFocus());
    ASSERT_NO_FATAL_FAILURE(Edit("m_Free"));
    tab(true);
    EXPECT_EQ(getRow(), "m_Share");
    tab(true);
    EXPECT_TRUE(View()->hasFocus()) << "before the first editor is the list";
}
