// What the panel does for the brush.

#include "editor/app/CMessagesDock.h"
#include "editor/app/CStatusLine.h"
#include "engine/terrain/CTerrain.h"
#include "host/FileSystem.h"
#include "tests/editor/app/PanelFixture.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace
{

class CBrushDay : public CPanel
{
protected:
    void Work();
    void Return();
};

} // namespace

void CBrushDay::Work()
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const std::string strScript = m_Folder.Path("first.tellur");
    ASSERT_TRUE(m_Editor->GetRecorder()->Start(strScript));
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    EXPECT_FALSE(Item(2200).isEnabled()) << "there is no brush yet";

    Click(Item(2133)); // set height
    EXPECT_TRUE(Item(2200).isEnabled());
    EXPECT_EQ(GetHost().GetCaption(), "Terraforming");
    EXPECT_EQ(GetProperty("m_PickHeight"), "false");

    // The height of the ground under the cursor goes into the property.
    Answer<QMenu>([this] { Click(GetView(), "3"); },
                  [this](QMenu& menu)
                  {
                      ASSERT_EQ(menu.actions().front()->text(), "Set m_Height to 20.00");
                      MoveTo(
                          menu.mapToGlobal(menu.actionGeometry(menu.actions().front()).center()) *
                          menu.devicePixelRatioF());
                      Do({"click", "1"});
                  });
    EXPECT_EQ(GetProperty("m_Height"), "20");

    ASSERT_NO_FATAL_FAILURE(ClickProperty("m_Height"));
    Type("55");
    Key("Return");
    EXPECT_EQ(GetProperty("m_Height"), "55");
    QWidget& extent = Item(2128);
    Click(extent);
    Key("ctrl+a");
    Type("60");
    SavePicture("panel-set-height");

    Drag(GetView(), {0.4, 0.5}, {0.6, 0.55});
    EXPECT_NEAR(GetHighest(), 55.0F, 0.5F);
    Key("ctrl+z");
    EXPECT_EQ(GetHighest(), 20.0F);
    Key("ctrl+shift+z");
    EXPECT_NEAR(GetHighest(), 55.0F, 0.5F);

    AddBrush("Plateau");
    ASSERT_EQ(Item<QListWidget>(2113).count(), 1);
    EXPECT_EQ(Item<QListWidget>(2113).item(0)->text(), "Plateau");
    Click(Item(2120)); // save
    EXPECT_NE(ReadBytes(m_Folder.Path("root/PredefinedBrushes.ini")).find("\"Plateau\""),
              std::string::npos);
    EXPECT_FALSE(fs::exists(".\\PredefinedBrushes__Copy.ini"));
    const std::string strAfter = SaveHeights("after.height");
    ASSERT_TRUE(m_Editor->GetRecorder()->Stop());
    EXPECT_EQ(ReplayScript(strScript, m_Folder.Path("replayed.height")), strAfter);
    GetHost().SaveSettings();
    Stop();
}

// The panel is open again and the brush is in the list.
void CBrushDay::Return()
{
    ASSERT_NO_FATAL_FAILURE(Start());
    if (!GetPanel()->isVisible())
    {
        ASSERT_NO_FATAL_FAILURE(OpenPanel());
    }
    const std::string strSecond = m_Folder.Path("second.tellur");
    ASSERT_TRUE(m_Editor->GetRecorder()->Start(strSecond));
    auto& list = Item<QListWidget>(2113);
    ASSERT_EQ(list.count(), 1);
    const auto choose = [&]
    {
        const QPoint at = Item<QListWidget>(2113).visualItemRect(list.item(0)).center();
        MoveTo(list.viewport()->mapToGlobal(at) * list.devicePixelRatioF());
        Do({"click", "1"});
    };
    choose();
    EXPECT_EQ(GetProperty("m_Height"), "55");
    Click(Item(2130)); // another tool, and back to the item that is still selected
    EXPECT_EQ(GetProperty("m_Height"), "no such property");
    choose();
    EXPECT_EQ(GetProperty("m_Height"), "55");
    EXPECT_EQ(GetHost().GetCaption(), "Terraforming");
    EXPECT_EQ(Item<QLineEdit>(2128).text(), "60");
    Drag(GetView(), {0.45, 0.45}, {0.55, 0.6});
    EXPECT_NEAR(GetHighest(), 55.0F, 0.5F);
    const std::string strLast = SaveHeights("last.height");
    ASSERT_TRUE(m_Editor->GetRecorder()->Stop());
    EXPECT_EQ(ReplayScript(strSecond, m_Folder.Path("replayed2.height")), strLast);
    SavePicture("panel-next-day");
}

TEST_F(CBrushDay, WithASetHeightBrushFromThePickToTheSavedLibraryAndBack)
{
    ASSERT_NO_FATAL_FAILURE(Work());
    ASSERT_NO_FATAL_FAILURE(Return());
}

TEST_F(CPanel, NothingOfTheDefinedBrushesIsLostUnasked)
{
    const std::string strLibrary = m_Folder.Path("root/PredefinedBrushes.ini");
    const std::string strFaulty =
        "!brush()\n!brush_name( s )\n!bitmap()\n!path( s )\n!function( s )\n!mask( s )\n"
        "brush() { brush_name( \"Hill\" )\n  bitmap() { path( \"data/brushes/round.png\" ) }\n"
        "  function( \"SetHeightFunction\" ) mask( \"gone.png\" ) }\n"
        "brush() { brush_name( \"Bare\" ) function( \"SetHeightFunction\" ) }\n";
    WriteBytes(strLibrary, strFaulty);
    ASSERT_NO_FATAL_FAILURE(Start());
    EXPECT_EQ(ReadBytes(strLibrary + ".bak"), strFaulty);
    EXPECT_TRUE(m_Window->GetMessages().GetText().contains(
        "PredefinedBrushes.ini, line 9, brush \"Hill\": mask( \"gone.png\" ) cannot be loaded"));
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    Click(Item(2133));
    const auto close = [this](QMessageBox::StandardButton eButton)
    {
        Answer<QMessageBox>([this] { m_Window->close(); },
                            [&](QMessageBox& box)
                            {
                                EXPECT_EQ(box.text(), "Save the changes of the defined brushes?");
                                Click(*box.button(eButton));
                            });
        return !m_Window->isVisible();
    };
    AddBrush("Plateau");
    Answer<QMessageBox>([this] { Click(Item(2120)); },
                        [this](QMessageBox& box)
                        {
                            EXPECT_EQ(box.text(), "Failed to save brushes");
                            EXPECT_TRUE(box.informativeText().endsWith("save brush Bare"))
                                << box.informativeText().toStdString();
                            Key("Return");
                        });
    EXPECT_EQ(ReadBytes(strLibrary), strFaulty);
    EXPECT_FALSE(close(QMessageBox::Cancel));
    EXPECT_TRUE(close(QMessageBox::Discard));
    EXPECT_EQ(ReadBytes(strLibrary), strFaulty);
    Stop();

    // The brush that cannot be saved is mended by hand; the copy that was kept stays the only one.
    const std::string strMended =
        strFaulty.substr(0, strFaulty.find("brush() { brush_name( \"Bare"));
    WriteBytes(strLibrary, strMended);
    ASSERT_NO_FATAL_FAILURE(Start());
    EXPECT_EQ(ReadBytes(strLibrary + ".bak"), strFaulty);
    EXPECT_EQ(ReadBytes(strLibrary + ".bak2"), strMended);
    ASSERT_TRUE(GetPanel()->isVisible()) << "as it was left";
    Click(Item(2133));
    AddBrush("Plateau");
    EXPECT_TRUE(close(QMessageBox::Save));
    EXPECT_NE(ReadBytes(strLibrary).find("\"Plateau\""), std::string::npos);
    Stop();
    ASSERT_NO_FATAL_FAILURE(Start());
    EXPECT_FALSE(std::filesystem::exists(strLibrary + ".bak3"));
    m_Window->close(); // nothing to ask about
    EXPECT_FALSE(m_Window->isVisible());
}

TEST_F(CPanel, TheWheelScrollsThePanelAndLeavesTheBrush)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    Click(Item(2133));
    QWidget& power = Item(2200);
    auto* pBar = GetPanel()->findChild<QScrollArea*>()->verticalScrollBar();
    pBar->setValue(0);
    MoveTo(power, {0.5, 0.5});
    Do({"click", "5"});
    EXPECT_GT(pBar->value(), 0);
    EXPECT_EQ(Item<QLineEdit>(2201).text(), "1");
    power.setFocus();
    MoveTo(Item(2200), {0.5, 0.5});
    Do({"click", "5"}); // under the focus it turns by a page
    EXPECT_EQ(Item<QLineEdit>(2201).text(), "0.8");
    EXPECT_EQ(GetPanel()->findChild<QScrollArea*>()->horizontalScrollBar()->maximum(), 0)
        << "the form is never cut off at the side";
}

TEST_F(CPanel, AHeightPickedByTheStrokeIsShownWhileItRuns)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    Click(Item(2133));
    ASSERT_NO_FATAL_FAILURE(ClickProperty("m_PickHeight"));
    Key("space"); // checks the box that has the focus now
    EXPECT_EQ(GetProperty("m_PickHeight"), "true");
    EXPECT_EQ(GetProperty("m_Height"), "500");
    GetView().setFocus();
    MoveTo(GetView(), {0.45, 0.5});
    Do({"mousedown", "1"});
    EXPECT_EQ(GetProperty("m_Height"), "20");
    EXPECT_TRUE(GetView().hasFocus());
    GetHost().GetInput().SendAction(GetView().GetViewId(), 1, 1); // a larger brush
    MoveTo(GetView(), {0.55, 0.5});
    EXPECT_TRUE(GetHost().GetInput().IsDragging());
    Do({"mouseup", "1"});
    EXPECT_TRUE(GetView().hasFocus());
    EXPECT_EQ(Item<QLineEdit>(2128).text(), "3200.25");
}

TEST_F(CPanel, ABrushIsMadeByTheKeyboardAlone)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    Key("F6");
    ASSERT_TRUE(GetPanel()->isVisible());
    // Without a brush the path of the mask can only be looked at. What can be chosen are the tools:
    // blur, point height, set height.
    Do({"key", "Tab", "key", "Tab", "key", "space"});
    EXPECT_EQ(GetHost().GetCaption(), "Terraforming");
    for (int i = 0; i < 20 && !Item(2123).hasFocus(); ++i)
    {
        Key("Tab"); // over the functions that are left, to the grid
    }
    ASSERT_TRUE(Item(2123).hasFocus());
    Do({"key", "Tab", "key", "Down"}); // its first editor, the mode
    EXPECT_EQ(GetProperty("m_Mode"), "mode_min");
    Key("Tab");
    Type("44");
    Key("Tab"); // hands the number over
    EXPECT_EQ(GetProperty("m_Height"), "44");
    Key("space");
    EXPECT_EQ(GetProperty("m_PickHeight"), "true");
    Do({"key", "Tab", "key", "Tab"}); // over the title of the next group
    EXPECT_EQ(QApplication::focusWidget(), &Item(2113)) << "the list of brushes";
    Key("F6");
    EXPECT_EQ(QApplication::focusWidget(), m_Window->GetViews().GetActive());
    Key("F6");
    EXPECT_EQ(QApplication::focusWidget(), &Item(2106)) << "with a brush, its shape";
}

TEST_F(CPanel, KeysForTheViewStayOutOfItsNumbersAndEnterAndEscapeGiveTheKeyboardBack)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    Click(Item(2133));
    Click(Item(2128));
    Key("ctrl+a");
    Type("32");
    auto& power = Item<QLineEdit>(2201);
    for (const char* pszKey : {"Return", "KP_Enter", "Escape"})
    {
        SCOPED_TRACE(pszKey);
        Click(power);
        Key("ctrl+a");
        Do({"type", "0.f3]g"});
        EXPECT_EQ(power.text(), "0.3");
        EXPECT_TRUE(power.font().italic());
        EXPECT_TRUE(power.hasFocus());
        Key(pszKey);
        EXPECT_EQ(QApplication::focusWidget(), m_Window->GetViews().GetActive());
        EXPECT_EQ(power.text(), "0.3") << "it waits for the arrows";
    }
    EXPECT_EQ(Item<QLineEdit>(2128).text(), "42.59") << "it grew three times by a tenth";
    SavePicture("panel-waits");

    // In the grid they do first what they do there.
    ASSERT_NO_FATAL_FAILURE(ClickProperty("m_Height"));
    Type("55");
    Key("Return");
    EXPECT_EQ(GetProperty("m_Height"), "55");
    EXPECT_EQ(QApplication::focusWidget(), m_Window->GetViews().GetActive());
    Click(power); // or else the next press makes a double click of the last one
    ASSERT_NO_FATAL_FAILURE(ClickProperty("m_Height"));
    Type("66");
    Key("Escape");
    EXPECT_EQ(GetProperty("m_Height"), "55");
    EXPECT_EQ(QApplication::focusWidget(), m_Window->GetViews().GetActive());
    const QTreeView& grid = Grid();
    EXPECT_GE(grid.columnWidth(0),
              grid.fontMetrics().horizontalAdvance("m_FrontBackInterpolation"));
    for (const int iId : {2198, 2128, 2121})
    {
        auto& edit = Item<QLineEdit>(iId);
        EXPECT_GT(edit.width(), edit.fontMetrics().horizontalAdvance("29748.43") + 6) << iId;
    }

    // Escape in a field ends no other work.
    GetHost().GetInput().SendCommand(0x4005);
    const int32_t iExport = GetHost().GetModes().GetCurrentModeId();
    Click(Item(2192));
    Key("Escape");
    EXPECT_EQ(GetHost().GetModes().GetCurrentModeId(), iExport);
    EXPECT_EQ(QApplication::focusWidget(), m_Window->GetViews().GetActive());
    Key("Escape");
    EXPECT_NE(GetHost().GetModes().GetCurrentModeId(), iExport);
}

TEST_F(CPanel, ARangeThatEndsBelowItsBeginningIsSaidAsLongAsItDoes)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    Click(Item(2133));
    auto* pWords = m_Window->findChild<QLabel*>("status-words");
    auto* pStatus = dynamic_cast<CStatusLine*>(m_Window->statusBar());
    const QString strLine = "The panel's range begins above its end: 20000 to 10000";
    const auto type = [this](int iId, const char* pszText)
    {
        Click(Item(iId));
        Key("ctrl+a");
        Type(pszText);
    };
    type(2199, "10000");
    EXPECT_FALSE(pWords->isVisible());
    type(2198, "20000");
    EXPECT_TRUE(pWords->isVisible());
    EXPECT_EQ(pWords->text(), strLine);
    pStatus->Say("Something else"); // and back
    pStatus->Withdraw("Something else");
    EXPECT_EQ(pWords->text(), strLine);
    auto* pCross = GetPanel()->findChild<QWidget*>("qt_dockwidget_closebutton");
    Click(*pCross);
    EXPECT_FALSE(pWords->isVisible());
    ASSERT_NO_FATAL_FAILURE(OpenPanel());
    EXPECT_EQ(pWords->text(), strLine);
    EXPECT_TRUE(pWords->isVisible());
    type(2198, "200");
    EXPECT_FALSE(pWords->isVisible());
}
