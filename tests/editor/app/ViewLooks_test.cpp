// Where the views look from: kept with the level, also of those that are closed, in windows of
// another shape, and moved by commands.

#include "editor/app/CDocumentActions.h"
#include "editor/app/SLevelViews.h"
#include "engine/terrain/CTerrain.h"
#include "tests/editor/app/EditorFixture.h"

#include <QAction>

namespace
{

class CViewLooks : public CEditorFixture
{
protected:
    CViewArea& Area() { return m_Window->GetViews(); }

    std::string GetLooks()
    {
        std::string strLooks;
        for (CViewWidget* pView : Area().GetViews())
        {
            strLooks += SLevelViews{{pView->GetNavigator().GetLook()}, {}}.MakeText("");
        }
        return strLooks;
    }

    // Whether the view shows that spot of the ground.
    bool Shows(size_t i, const SVec3& spot)
    {
        const SViewProjection view = GetView(i).GetNavigator().GetProjection(GetTerrain());
        float fX = 0.0F;
        float fY = 0.0F;
        return view.Project(spot, fX, fY) && GetView(i).GetNavigator().IsInside(fX, fY);
    }
};

} // namespace

TEST_F(CViewLooks, CamerasAndBookmarksComeBackWithTheirLevel)
{
    std::filesystem::create_directories(m_Folder.Path("levels"));
    const std::string strFirst = m_Folder.Path("levels/first.level");
    const std::string strOther = m_Folder.Path("levels/other.level");
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_TRUE(m_Editor->GetDocument().SaveAs(strOther.c_str()));
    ASSERT_TRUE(m_Editor->GetDocument().SaveAs(strFirst.c_str()));
    for (size_t i = 0; i < 2; ++i)
    {
        MoveTo(GetView(i), {0.3, 0.6});
        Do({"click", "4", "click", "4"}); // closer
        Key(i == 0 ? "ctrl+alt+3" : "ctrl+alt+0");
    }
    const std::string strBookmarked = GetLooks();
    EXPECT_FALSE(m_Window->GetCommands().Find("bookmark.go_4")->isEnabled());
    Key("ctrl+6");
    MoveTo(GetView(), {0.5, 0.6});
    Do({"click", "5"});
    const std::string strLeft = GetLooks();
    ASSERT_NE(strLeft, strBookmarked);
    ASSERT_TRUE(m_Window->GetDocuments().OpenFile(strOther));
    Settle();
    const std::string strFramed = GetLooks();
    EXPECT_NE(strFramed, strLeft) << "a level that was never left is shown whole";
    EXPECT_FALSE(m_Window->GetCommands().Find("bookmark.go_3")->isEnabled());

    m_Window->close();
    Stop();
    ASSERT_NO_FATAL_FAILURE(Start(false));
    ASSERT_TRUE(m_Window->GetDocuments().OpenFile(strFirst));
    Settle();
    EXPECT_EQ(GetLooks(), strLeft);
    MoveTo(GetView(), {0.5, 0.5});
    Key("alt+3");
    Key("alt+0"); // of the top view, while the cursor is in the other one
    EXPECT_EQ(GetLooks(), strBookmarked);
    // Nothing of it is beside the level.
    size_t nFiles = 0;
    for (const auto& entry : std::filesystem::directory_iterator(m_Folder.Path("levels")))
    {
        nFiles += entry.path().extension() == ".views" ? 1 : 0;
    }
    EXPECT_EQ(nFiles, 0U);
    std::error_code error;
    EXPECT_FALSE(std::filesystem::is_empty(m_Folder.Path("state/tellur/views"), error));
}

TEST_F(CViewLooks, OneThatWasClosedLooksFromWhereItDidWhenItIsOpenedAgain)
{
    const std::string strLevel = m_Folder.Path("closed.level");
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_TRUE(m_Editor->GetDocument().SaveAs(strLevel.c_str()));
    Trigger("view.four");
    Settle();
    for (const size_t i : {0, 3}) // the others show all of the terrain
    {
        MoveTo(GetView(i), {0.3, 0.5});
        Do({"click", "4", "click", "4"});
    }
    const std::string strLooks = GetLooks();
    EXPECT_NE(strLooks.find("framed( \"Top\" )"), std::string::npos) << strLooks;
    MoveTo(GetView(0), {0.5, 0.5});
    for (const bool bAgain : {false, true}) // the level, too
    {
        Trigger("view.one");
        if (bAgain)
        {
            m_Window->close();
            Stop();
            ASSERT_NO_FATAL_FAILURE(Start(false));
            ASSERT_TRUE(m_Window->GetDocuments().OpenFile(strLevel));
        }
        Settle();
        Trigger("view.four");
        Settle();
        EXPECT_EQ(GetLooks(), strLooks) << bAgain;
    }
}

TEST_F(CViewLooks, FlatOnesCutNothingInANarrowerWindowAndShowFlatGround)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    Trigger("view.four");
    Settle();
    MoveTo(GetView(1), {0.5, 0.5});
    Do({"click", "5"}); // moved, so it frames nothing by itself
    m_Window->resize(640, m_Window->height());
    Settle();
    for (size_t i = 1; i < 4; ++i)
    {
        SCOPED_TRACE(GetViewName(GetView(i).GetKind()));
        EXPECT_TRUE(Shows(i, {0.0F, 20.0F, 320.0F}) && Shows(i, {320.0F, 20.0F, 0.0F}));
        EXPECT_TRUE(
            Area().rect().contains(QRect(GetView(i).mapTo(&Area(), QPoint()), GetView(i).size())));
    }
    SavePicture("views-narrow");
    for (size_t i = 2; i < 4; ++i)
    {
        const QImage view = Grab(GetView(i));
        int nLine = 0; // columns in which something is darker than the sky behind it
        for (int x = 0; x < view.width(); ++x)
        {
            nLine += qGray(view.pixel(x, view.height() / 2)) < 120 ||
                             qGray(view.pixel(x, view.height() / 2 - 1)) < 120
                         ? 1
                         : 0;
        }
        EXPECT_GT(nLine, view.width() / 2) << i;
    }
}

TEST_F(CViewLooks, CommandsGoFromViewToViewAndTiltTheCameraThere)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    MoveTo(GetView(1), {0.5, 0.5});
    const std::string strFlat = SLevelViews{{GetView(1).GetNavigator().GetLook()}, {}}.MakeText("");
    Trigger("camera.look_up");
    EXPECT_EQ((SLevelViews{{GetView(1).GetNavigator().GetLook()}, {}}.MakeText("")), strFlat);
    Trigger("view.next");
    EXPECT_EQ(Area().GetActive(), &GetView(0));
    EXPECT_TRUE(GetView(0).hasFocus());
    const float fPitch = GetView(0).GetNavigator().GetLook().fPitch;
    Trigger("camera.look_up");
    EXPECT_NEAR(GetView(0).GetNavigator().GetLook().fPitch, fPitch + 10.0F, 1e-3F);
    Trigger("camera.look_down");
    EXPECT_NEAR(GetView(0).GetNavigator().GetLook().fPitch, fPitch, 1e-3F);
}

// The window is told of such a level before its files are known.
TEST_F(CViewLooks, ALevelThatNoMenuOpenedHasItsOwnMaterial)
{
    WriteBytes(m_Folder.Path("red.mat"),
               "!kind( s )\n!color( v4 )\nkind( \"plain\" )\ncolor( [1.0, 0.0, 0.0, 1.0] )\n");
    ASSERT_NO_FATAL_FAILURE(Start());
    CLevelDocument& document = m_Editor->GetDocument();
    document.SetMaterial(m_Folder.Path("red.mat"));
    ASSERT_TRUE(document.SaveAs(m_Folder.Path("red.level").c_str()));
    ASSERT_TRUE(document.New(32, {320.0F, 100.0F, 320.0F}, 20.0F));
    Settle();
    const auto getGround = [this]
    {
        const QImage picture = Grab(GetView());
        return picture.pixelColor(picture.width() / 2, picture.height() / 2);
    };
    EXPECT_LT(getGround().red(), getGround().green() + 50);
    ASSERT_TRUE(document.Open(m_Folder.Path("red.level").c_str()));
    EXPECT_TRUE(WaitFor([&] { return getGround().red() > getGround().green() + 100; },
                        "the level has its colour"));
}
