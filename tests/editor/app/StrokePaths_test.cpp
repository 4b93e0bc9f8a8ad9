// Paths of clicked points, each one stroke, one step of the history and of a recording.

#include "editor/app/CCursorNote.h"
#include "tests/editor/app/StrokeImagesFixture.h"

#include <QAction>

using CStrokePaths = CStrokeImages;

TEST_F(CStrokePaths, APathOfClickedPointsIsOneStroke)
{
    ASSERT_NO_FATAL_FAILURE(StartOblong());
    TakeBrush("SetHeightFunction", "m_Height", "60", "extent( 20.0 )", "disc");
    Key("k");
    ClickAt(60.0F, 60.0F);
    ClickAt(200.0F, 60.0F);
    Key("Escape");
    Key("Return"); // there is no path to draw
    EXPECT_TRUE(GetHeights() == m_Flat);
    EXPECT_EQ(GetWords(), "");

    Key("k");
    ClickAt(60.0F, 60.0F);
    ClickAt(300.0F, 160.0F);
    Key("BackSpace");
    ClickAt(200.0F, 60.0F);
    ClickAt(200.0F, 140.0F);
    SavePicture("path");
    ClickAt(60.0F, 60.0F); // the first one closes it
    EXPECT_EQ(GetWords(), "path of 3, closed");
    Key("BackSpace");
    Key("c");
    EXPECT_EQ(GetWords(), "path of 3, closed");
    EXPECT_TRUE(GetHeights() == m_Flat) << "clicks draw nothing";
    Key("Return");
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 1U);
    EXPECT_FLOAT_EQ(GetHeight(130.0F, 60.0F), 60.0F);
    EXPECT_FLOAT_EQ(GetHeight(200.0F, 100.0F), 60.0F);
    EXPECT_FLOAT_EQ(GetHeight(130.0F, 100.0F), 60.0F) << "the way back";
    EXPECT_FLOAT_EQ(GetHeight(80.0F, 120.0F), 20.0F);
    ExpectReplay(1);
}

TEST_F(CStrokePaths, AToolThatDrawsAlongNoPathRefusesOneAndEndsOneThatHasBegun)
{
    ASSERT_NO_FATAL_FAILURE(StartOblong());
    const auto getWords = [this]
    {
        return m_Window->findChild<QLabel*>("status-words")->text().toStdString();
    };
    const std::string strWhy = "Point height works where it is pressed and draws along no path";
    GoTo(60.0F, 60.0F);
    Key("k");
    EXPECT_EQ(GetView(1).GetNote().text(), "no tool");
    TakeBrush("PointHeightFunction", "none", "0");
    Key("k");
    EXPECT_EQ(GetView(1).GetNote().text().toStdString(), strWhy);
    EXPECT_EQ(GetWords(), "");
    EXPECT_FALSE(m_Window->findChild<QAction*>("path.set")->isChecked());
    TakeBrush();
    Key("k");
    ClickAt(60.0F, 60.0F);
    ClickAt(200.0F, 60.0F);
    EXPECT_EQ(GetWords(), "path of 2");
    Key("u");
    EXPECT_EQ(getWords(), "The path is dropped: the button paints the protection now");
    Key("u");
    Key("k");
    ClickAt(60.0F, 60.0F);
    EXPECT_EQ(GetWords(), "path of 1");
    TakeBrush("PointHeightFunction", "none", "0");
    m_Window->ShowState();
    Settle();
    EXPECT_EQ(GetWords(), "");
    EXPECT_EQ(getWords(), "The path is dropped: " + strWhy);
    TakeBrush();
    Key("Return");
    EXPECT_TRUE(GetHeights() == m_Flat);
}

TEST_F(CStrokePaths, ARampLeadsFromPointToPointAtTheHeightsOfBefore)
{
    ASSERT_NO_FATAL_FAILURE(StartOblong());
    TakeBrush("SetHeightFunction", "m_Height", "60", "extent( 20.0 )", "disc");
    DragTo(70.0F, 60.0F, 200.0F, 60.0F);
    TakeBrush("RampFunction", "m_SideInterpolation", "1", "extent( 8.0 )");
    Key("k");
    ClickAt(130.0F, 60.0F);
    ClickAt(130.0F, 20.0F);
    ClickAt(90.0F, 20.0F);
    ClickAt(90.0F, 60.0F);
    Key("Return");
    EXPECT_NEAR(GetHeight(130.0F, 40.0F), 40.0F, 2.0F);
    EXPECT_NEAR(GetHeight(110.0F, 20.0F), 20.0F, 0.01F);
    EXPECT_NEAR(GetHeight(90.0F, 40.0F), 40.0F, 2.0F);
    DragTo(190.0F, 60.0F, 250.0F, 150.0F); // the button draws again
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 3U);
    Key("ctrl+z");
    ExpectReplay(2);
}
