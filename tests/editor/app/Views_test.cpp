// The views beside each other: how many, of which kinds, and which one has the room.

#include "engine/terrain/CTerrain.h"
#include "tests/editor/app/EditorFixture.h"

#include <QAction>
#include <QLabel>
#include <QPushButton>

#include <cmath>

namespace
{

class CViews : public CEditorFixture
{
protected:
    CViewArea& Area() { return m_Window->GetViews(); }

    size_t GetSteps() { return GetHost().GetUndoStack().GetCount(); }

    bool IsMarked(const char* pszCommand)
    {
        return m_Window->GetCommands().Find(pszCommand)->isChecked();
    }

    QRect GetPlace(size_t i) // in the area of the views
    {
        return QRect(GetView(i).mapTo(&Area(), QPoint()), GetView(i).size());
    }

    std::string GetKinds()
    {
        std::string strKinds;
        for (const CViewWidget* pView : Area().GetViews())
        {
            strKinds += std::string(GetViewName(pView->GetKind())) + " ";
            EXPECT_EQ(pView->findChild<QLabel*>("view-name")->text(),
                      GetViewName(pView->GetKind()));
        }
        return strKinds;
    }

    // The one that has all the room; -1 when all are shown.
    int FindAlone()
    {
        int iAlone = -1;
        size_t nShown = 0;
        for (size_t i = 0; i < Area().GetViews().size(); ++i)
        {
            nShown += GetView(i).isVisible() ? 1 : 0;
            iAlone = GetView(i).isVisible() ? static_cast<int>(i) : iAlone;
        }
        EXPECT_TRUE(nShown == 1 || nShown == Area().GetViews().size());
        EXPECT_EQ(IsMarked("view.alone"), nShown == 1 && Area().GetViews().size() > 1);
        return nShown == 1 ? iAlone : -1;
    }

    static int CountBlack(const QImage& picture)
    {
        int nBlack = 0;
        for (int y = 0; y < picture.height(); ++y)
        {
            for (int x = 0; x < picture.width(); ++x)
            {
                nBlack += qGray(picture.pixel(x, y)) < 8 ? 1 : 0;
            }
        }
        return nBlack;
    }

    // Where the picture of that colour begins on the row through the middle of a view.
    bool IsFramed(size_t i)
    {
        const QWidget* pFrame = GetView(i).parentWidget();
        const QColor edge = Grab(*pFrame).pixelColor(0, pFrame->height() / 2);
        return edge == pFrame->palette().color(QPalette::Highlight);
    }
};

} // namespace

TEST_F(CViews, StandInOneOrTwoRowsAndEachIsSculptedIn)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    EXPECT_EQ(GetKinds(), "Perspective Top ");
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    const std::pair<const char*, size_t> choices[] = {
        {"view.four", 4}, {"view.one", 1}, {"view.two", 2}, {"view.add_perspective", 3}};
    for (const auto& [pszCommand, nViews] : choices)
    {
        SCOPED_TRACE(pszCommand);
        MoveTo(GetView(), {0.5, 0.5}); // the active one stays
        Trigger(pszCommand);
        Settle();
        ASSERT_EQ(Area().GetViews().size(), nViews);
        for (const auto& [pszMarked, nMarked] : choices)
        {
            EXPECT_TRUE(nMarked == 3 || IsMarked(pszMarked) == (nMarked == nViews)) << pszMarked;
        }
        const size_t nUpper = nViews > 2 ? (nViews + 1) / 2 : nViews;
        for (size_t i = 0; i < nViews; ++i)
        {
            const QRect place = GetPlace(i);
            EXPECT_EQ(place.top() > Area().height() / 3, i >= nUpper) << i;
            EXPECT_EQ(place.left() > Area().width() / 3, i == 1 || i == 3) << i;
            const size_t nInRow = i < nUpper ? nUpper : nViews - nUpper;
            EXPECT_NEAR(place.width() * nInRow, Area().width(), 30) << i;
            EXPECT_NEAR(place.height() * (nViews > 2 ? 2 : 1), Area().height(), 30) << i;
            EXPECT_EQ(IsFramed(i), i == 0 && nViews > 1) << i;
            ASSERT_TRUE(
                WaitFor([&] { return GetView(i).GetFrameMilliseconds() > 0.0; }, "a frame"));
        }
        EXPECT_EQ(CountBlack(Grab(Area())), 0);
        SavePicture(("views-" + std::to_string(nViews)).c_str());
        for (size_t i = 0; i < std::min(nViews, size_t{2});
             ++i) // a flat level is no line to aim at
        {
            const size_t nSteps = GetSteps();
            Drag(GetView(i), {0.45, 0.5}, {0.55, 0.55}, 4);
            EXPECT_EQ(GetSteps(), nSteps + 1) << i;
        }
    }
    EXPECT_EQ(GetKinds(), "Perspective Top Perspective ");
    Trigger("view.close");
    Trigger("view.close");
    Settle();
    EXPECT_FALSE(m_Window->GetCommands().Find("view.close")->isEnabled());
    Trigger("view.close");
    EXPECT_EQ(Area().GetViews().size(), 1U) << "the last one stays";
}

TEST_F(CViews, ATapOfTheSpaceBarGivesTheViewUnderTheCursorTheWholeRoomAndBack)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    Trigger("view.four");
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    for (const char* pszKey : {"space", "F11"})
    {
        SCOPED_TRACE(pszKey);
        const QRect before = GetPlace(1);
        MoveTo(GetView(1), {0.1, 0.9}); // that is the middle then
        Key(pszKey);
        EXPECT_EQ(FindAlone(), 1);
        EXPECT_NEAR(GetView(1).width(), Area().width(), 10);
        EXPECT_TRUE(GetView(1).hasFocus());
        SVec3 hit;
        EXPECT_TRUE(WaitFor([&] { return GetView(1).GetInput().PickCursor(hit); }, "the cursor"));
        Key(pszKey);
        EXPECT_EQ(FindAlone(), -1);
        EXPECT_EQ(GetPlace(1), before);
    }
    // Held for a stroke, or with something else in between, it is no tap.
    Drag(GetView(1), {0.4, 0.5}, {0.5, 0.5}, 4);
    const size_t nSteps = GetSteps();
    const QStringList between[] = {
        {"click", "1"}, {"click", "4"}, {"key", "g"}, {"mousedown", "3", "mouseup", "3"}};
    for (const QStringList& others : between)
    {
        SCOPED_TRACE(others.join(' ').toStdString());
        MoveTo(GetView(1), {0.6, 0.5});
        if (others.front() == "mousedown") // begins before and ends after it
        {
            Do({"mousedown", "1"});
            Key("space");
            Do({"mouseup", "1"});
        }
        else
        {
            Do(QStringList{"keydown", "space"} + others + QStringList{"keyup", "space"});
        }
        EXPECT_EQ(FindAlone(), -1);
    }
    EXPECT_EQ(GetSteps(), nSteps + 2) << "the click joined the stroke before";
}

TEST_F(CViews, AStrokeInAFrontOrASideViewLandsOnTheSlopeThatItShows)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(TakeBrush("SetHeightFunction", "m_Height", "90", " extent( 160.0 )\n"));
    Click(GetView(1)); // a hill in the middle
    Trigger("view.four");
    ASSERT_EQ(GetKinds(), "Perspective Top Front Side ");
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    for (size_t i = 2; i < 4; ++i)
    {
        CViewWidget& view = GetView(i);
        SCOPED_TRACE(GetViewName(view.GetKind()));
        ASSERT_TRUE(WaitFor([&] { return view.GetFrameMilliseconds() > 0.0; }, "a frame"));
        const std::vector<float> before = GetHeights();
        const size_t nSteps = GetSteps();
        Drag(view, {0.5, 0.5}, {0.53, 0.5}, 4);
        EXPECT_EQ(GetSteps(), nSteps + 1);
        const std::vector<float> after = GetHeights();
        size_t nChanged = 0;
        for (size_t iVertex = 0; iVertex < after.size(); ++iVertex)
        {
            if (after[iVertex] == before[iVertex])
            {
                continue;
            }
            ++nChanged;
            // The front view shows the slope to the south, the side view that to the east.
            const auto fX = static_cast<float>(iVertex % 33) * 10.0F;
            const auto fZ = static_cast<float>(iVertex / 33) * 10.0F; // NOLINT: the row
            EXPECT_GT(i == 2 ? fZ : fX, 160.0F);
            EXPECT_NEAR(i == 2 ? fX : fZ, 160.0F, 45.0F);
        }
        EXPECT_GT(nChanged, 4U);
    }
    SavePicture("views-front");
}

TEST_F(CViews, AStrokeEndsWhereTheArrangementChangesUnderIt)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    size_t nSteps = 0;
    for (const char* pszCommand :
         {"view.alone", "view.alone", "view.four", "view.add_side", "view.two", "view.reset"})
    {
        SCOPED_TRACE(pszCommand);
        MoveTo(GetView(), {0.45, 0.5});
        Do({"mousedown", "1"});
        MoveTo(GetView(), {0.5, 0.52});
        MoveTo(GetView(), {0.55, 0.52});
        ASSERT_TRUE(GetHost().GetInput().IsDragging());
        Trigger(pszCommand);
        EXPECT_FALSE(GetHost().GetInput().IsDragging());
        EXPECT_EQ(GetSteps(), ++nSteps) << "what was drawn is one step";
        const std::vector<float> drawn = GetHeights();
        MoveTo(GetView(), {0.6, 0.6});
        Do({"mouseup", "1"});
        EXPECT_EQ(GetHeights(), drawn);
        EXPECT_EQ(GetSteps(), nSteps);
    }
}

TEST_F(CViews, ComeBackAsTheyWereLeft)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    Trigger("view.four");
    Trigger("view.add_front");
    MoveTo(GetView(3), {0.5, 0.5});
    Trigger("view.close");
    ASSERT_EQ(GetKinds(), "Perspective Top Front Front ");
    // The border in the middle goes to the left; that of the other row goes along.
    const QRect first = GetPlace(0);
    const double fScale = GetView().devicePixelRatioF();
    const QPoint border = Area().mapToGlobal(QPoint(first.right() + 5, first.center().y()));
    MoveTo(border * fScale);
    Do({"mousedown", "1"});
    MoveTo((border - QPoint(60, 0)) * fScale);
    Do({"mouseup", "1"});
    EXPECT_NEAR(GetPlace(0).width(), first.width() - 60, 8);
    EXPECT_EQ(GetPlace(2).width(), GetPlace(0).width());
    const QRect placed = GetPlace(0);
    for (const int iAlone : {2, -1})
    {
        SCOPED_TRACE(iAlone);
        if (iAlone >= 0)
        {
            MoveTo(GetView(2), {0.5, 0.5});
        }
        Key("space");
        m_Window->close();
        Stop();
        ASSERT_NO_FATAL_FAILURE(Start());
        EXPECT_EQ(GetKinds(), "Perspective Top Front Front ");
        EXPECT_EQ(FindAlone(), iAlone);
        if (iAlone < 0)
        {
            EXPECT_NEAR(GetPlace(0).width(), placed.width(), 4);
            EXPECT_NEAR(GetPlace(0).height(), placed.height(), 4);
        }
    }
}
