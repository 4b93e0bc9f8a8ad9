// Strokes by the mouse of an X server: what the hand does reaches the terrain, can be taken back,
// and can be recorded and replayed to the same file.

#include "editor/app/CCursorNote.h"
#include "editor/app/CHistoryDock.h"
#include "editor/app/CStatusLine.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/IPlugin.h"
#include "host/IPluginStrokes.h"
#include "host/IPluginTools.h"
#include "tests/editor/app/EditorFixture.h"

#include <QApplication>
#include <QLabel>
#include <QListWidget>

#include <algorithm>
#include <cmath>

namespace
{

class CSculpting : public CEditorFixture
{
protected:
    std::string SaveHeights(const char* pszName)
    {
        const std::string strPath = m_Folder.Path(pszName);
        EXPECT_TRUE(GetHost().GetEngine().GetWorld()->GetTerrain()->SaveHeightMap(
            strPath.c_str(), nullptr, 0, 0));
        return ReadBytes(strPath);
    }

    // With the button held. before: the heights at the press.
    void BeginStroke(std::vector<float>& before)
    {
        ASSERT_NO_FATAL_FAILURE(Start());
        ASSERT_NO_FATAL_FAILURE(TakeBrush());
        before = GetHeights();
        MoveTo(GetView(), {0.4, 0.5});
        Do({"mousedown", "1"});
        MoveTo(GetView(), {0.6, 0.5});
        ASSERT_NE(GetHeights(), before);
    }

    QString GetStatus(const char* pszName) { return m_Window->findChild<QLabel*>(pszName)->text(); }
};

} // namespace

TEST_F(CSculpting, ARecordedDragReplaysToTheSameFileAndUndoGivesTheFirstOneBack)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    const std::string strBefore = SaveHeights("before.height");
    const std::string strScript = m_Folder.Path("recorded.tellur");
    ASSERT_TRUE(m_Editor->GetRecorder()->Start(strScript));

    Drag(GetView(), {0.35, 0.5}, {0.65, 0.6});
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 1U);
    const std::string strStroke = SaveHeights("stroke.height");
    EXPECT_NE(strStroke, strBefore);
    Drag(GetView(1), {0.3, 0.3}, {0.6, 0.7}); // the top view
    Key("ctrl+z");
    EXPECT_EQ(SaveHeights("undone.height"), strStroke);
    Key("ctrl+z");
    EXPECT_EQ(SaveHeights("undone.height"), strBefore);
    Key("ctrl+shift+z");
    EXPECT_EQ(SaveHeights("redone.height"), strStroke);
    Key("bracketright"); // a larger brush
    Drag(GetView(), {0.6, 0.45}, {0.4, 0.55});

    const std::string strAfter = SaveHeights("after.height");
    ASSERT_TRUE(m_Editor->GetRecorder()->Stop());
    EXPECT_EQ(ReplayScript(strScript, m_Folder.Path("replayed.height")), strAfter);
    SavePicture("sculpting");
}

TEST_F(CSculpting, EscapeTakesTheRunningStrokeBackWhole)
{
    std::vector<float> before;
    ASSERT_NO_FATAL_FAILURE(BeginStroke(before));
    Key("Escape");
    EXPECT_EQ(GetHeights(), before);
    MoveTo(GetView(), {0.5, 0.7}); // the button is still down, but the stroke is over
    Do({"mouseup", "1"});
    EXPECT_EQ(GetHeights(), before);
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 0U);
    EXPECT_EQ(GetHost().GetUndoStack().GetRedoCount(), 0U);
    Drag(GetView(), {0.4, 0.5}, {0.6, 0.5});
    EXPECT_NE(GetHeights(), before) << "the next stroke works";
}

TEST_F(CSculpting, AMenuThatTakesTheMouseEndsTheStroke)
{
    std::vector<float> before;
    ASSERT_NO_FATAL_FAILURE(BeginStroke(before));
    Key("alt+f");
    ASSERT_TRUE(WaitFor([] { return QApplication::activePopupWidget() != nullptr; }, "the menu"));
    Do({"mouseup", "1"});
    Key("Escape");
    Key("Escape");
    ASSERT_TRUE(WaitFor([] { return QApplication::activePopupWidget() == nullptr; }, "no menu"));
    const std::vector<float> stroke = GetHeights();
    EXPECT_NE(stroke, before);
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 1U);
    MoveTo(GetView(), {0.3, 0.8});
    MoveTo(GetView(), {0.7, 0.2});
    EXPECT_EQ(GetHeights(), stroke) << "no button is held";
}

TEST_F(CSculpting, LeavingTheModeInMidStrokeEndsItAndSetsTheMouseFree)
{
    std::vector<float> before;
    ASSERT_NO_FATAL_FAILURE(BeginStroke(before));
    Key("ctrl+t");
    const std::vector<float> stroke = GetHeights();
    EXPECT_NE(stroke, before);
    EXPECT_EQ(GetStatus("status-mode"), "No mode");
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 1U);
    EXPECT_TRUE(m_Editor->GetDocument().IsModified());
    EXPECT_EQ(QWidget::mouseGrabber(), nullptr);
    Key("Escape"); // the button is still down, but there is no stroke to take back
    EXPECT_EQ(GetHeights(), stroke);
    Do({"mouseup", "1"});
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    MoveTo(GetView(), {0.3, 0.6});
    MoveTo(GetView(), {0.5, 0.7});
    EXPECT_EQ(GetHeights(), stroke) << "no button is down";
    Key("ctrl+z");
    EXPECT_EQ(GetHeights(), before);
    EXPECT_FALSE(m_Editor->GetDocument().IsModified());
}

TEST_F(CSculpting, EscapeLeavesTheToolThatIsUsedOnceAndNoOther)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    Key("Escape");
    EXPECT_EQ(GetStatus("status-mode"), "Terraforming");
    for (const bool bStroke : {false, true}) // which would ask for a file at its release
    {
        uint32_t uHandle = 0;
        m_Editor->GetPlugin()->GetActionHandle(&uHandle);
        GetHost().GetInput().SendCommand(uHandle + 5);
        Settle();
        MoveTo(GetView(), {0.4, 0.5});
        EXPECT_EQ(GetStatus("status-mode"), "Export terrain extent");
        if (bStroke)
        {
            Do({"mousedown", "1"});
            MoveTo(GetView(), {0.7, 0.6});
        }
        Key("Escape");
        EXPECT_EQ(GetStatus("status-mode"), "No mode");
    }
    Do({"mouseup", "1"});
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(CSculpting, TheSamePathGivesTheSameHeightsHoweverOftenTheMouseReports)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(TakeBrush("SetHeightFunction", "m_Height", "60"));
    // All of these reports lie on one line of whole pixels.
    CViewWidget& view = GetView(1);
    const QPoint start = view.mapToGlobal(QPoint(view.width() / 2 - 60, view.height() / 2 - 60));
    std::vector<std::vector<float>> results;
    for (const int iStep : {60, 30, 12, 5, 1})
    {
        QStringList arguments;
        arguments << "mousemove" << QString::number(start.x()) << QString::number(start.y())
                  << "mousedown"
                  << "1";
        for (int i = iStep; i <= 120; i += iStep)
        {
            arguments << "mousemove" << QString::number(start.x() + i)
                      << QString::number(start.y() + i);
        }
        arguments << "mouseup"
                  << "1";
        Do(arguments);
        results.push_back(GetHeights());
        Key("ctrl+z");
    }
    const std::vector<float> flat = GetHeights();
    EXPECT_NE(results[0], flat);
    for (size_t i = 1; i < results.size(); ++i)
    {
        EXPECT_TRUE(results[i] == results[0]) << "case " << i;
    }
}

TEST_F(CSculpting, KeysNotesAndStatusSayWhatIsUnderTheHand)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    auto* pTools = m_Editor->FindInterface<IPluginTools>();
    CCursorNote& note = GetView().GetNote();
    MoveTo(GetView(), {0.5, 0.5});
    EXPECT_EQ(GetStatus("status-mode"), "Terraforming");
    EXPECT_EQ(GetStatus("status-brush"), "Relative height, brush 40.0");
    EXPECT_TRUE(GetStatus("status-position").contains("height 20.00"))
        << GetStatus("status-position").toStdString();
    EXPECT_TRUE(GetStatus("status-slope").startsWith("slope 0.0"));

    Key("bracketright");
    EXPECT_EQ(pTools->GetBrushExtent(), 44.0F);
    EXPECT_TRUE(note.isVisible());
    EXPECT_EQ(note.text(), "brush 44.0");
    EXPECT_EQ(GetStatus("status-brush"), "Relative height, brush 44.0");

    ASSERT_NO_FATAL_FAILURE(TakeBrush("SetHeightFunction", "m_Height", "60"));
    Do({"mousedown", "1"});
    Do({"keydown", "ctrl"});
    MoveTo(GetView(), {0.52, 0.5});
    EXPECT_TRUE(note.text().startsWith("min")) << note.text().toStdString();
    Do({"keyup", "ctrl"});
    Do({"keydown", "alt"});
    MoveTo(GetView(), {0.54, 0.5});
    EXPECT_TRUE(note.text().startsWith("max")) << note.text().toStdString();
    Do({"keyup", "alt"});
    Do({"mouseup", "1"});
    MoveTo(GetView(), {0.5, 0.5});
    EXPECT_FALSE(note.text().contains("max") && note.isVisible());

    Key("ctrl+t"); // leaves the mode, and its brush with it
    EXPECT_EQ(GetStatus("status-mode"), "No mode");
    EXPECT_EQ(GetStatus("status-brush"), "no brush");
}

TEST_F(CSculpting, AClickInTheHistoryGoesToThatStep)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    std::vector<std::vector<float>> states = {GetHeights()};
    for (int i = 0; i < 3; ++i)
    {
        Drag(GetView(), {0.35 + 0.05 * i, 0.5}, {0.55, 0.6}, 5);
        states.push_back(GetHeights());
    }
    auto* pList = m_Window->findChild<QListWidget*>("history-list");
    ASSERT_EQ(pList->count(), 4);
    EXPECT_TRUE(pList->item(1)->text().startsWith("1 Relative height: raises, "));
    for (const int iRow : {1, 3, 0, 2})
    {
        const QRect row = pList->visualItemRect(pList->item(iRow));
        MoveTo(*pList->viewport(),
               {static_cast<double>(row.center().x()) / pList->viewport()->width(),
                static_cast<double>(row.center().y()) / pList->viewport()->height()});
        Do({"click", "1"});
        EXPECT_EQ(GetHeights(), states[static_cast<size_t>(iRow)]) << iRow;
        EXPECT_EQ(pList->currentRow(), iRow);
    }

    // A limit that holds one stroke; what was given up says so in the place of the start.
    GetHost().GetUndoStack().SetLimit(1);
    Drag(GetView(), {0.5, 0.5}, {0.55, 0.6}, 5);
    ASSERT_EQ(pList->count(), 2);
    EXPECT_EQ(pList->item(0)->text(), "Older steps were given up: 2");
    EXPECT_TRUE(pList->item(1)->text().startsWith("3 Relative height: "));
    Key("ctrl+z");
    Key("ctrl+z");
    EXPECT_EQ(GetHeights(), states[2]) << "no further back";
    EXPECT_TRUE(m_Editor->GetDocument().IsModified()) << "the level was new before them";
}

TEST_F(CSculpting, EveryMoveOfABurstReachesThePluginBeforeTheNextFrame)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    m_Window->GetSettings().input.bSampleStrokes = false;
    constexpr int MOVES = 1000;
    QStringList arguments;
    const QPoint corner =
        GetView().mapToGlobal(QPoint(GetView().width() / 2 - 150, GetView().height() / 2));
    const uint64_t uBefore = GetView().GetMoveCount();
    m_Editor->FindInterface<IPluginStrokes>()->TakeDragStatistics();
    arguments << "mousemove" << QString::number(corner.x()) << QString::number(corner.y())
              << "mousedown"
              << "1";
    for (int i = 0; i < MOVES; ++i)
    {
        // Each one another pixel than the one before.
        arguments << "mousemove" << QString::number(corner.x() + 1 + i % 300)
                  << QString::number(corner.y() + i % 2);
    }
    arguments << "mouseup"
              << "1";
    Do(arguments);
    EXPECT_GE(GetView().GetMoveCount() - uBefore, static_cast<uint64_t>(MOVES));
    EXPECT_GE(m_Editor->FindInterface<IPluginStrokes>()->TakeDragStatistics().nPoints,
              static_cast<uint64_t>(MOVES));
}
