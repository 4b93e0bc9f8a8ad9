// What a person finds who opens the editor for the first time, and once more.

#include "editor/app/CMessagesDock.h"
#include "editor/app/CNewLevelDialog.h"
#include "host/IPluginTools.h"
#include "tests/editor/app/DocumentsFixture.h"

#include <QCommandLinkButton>
#include <QDockWidget>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>

namespace
{

class CStartPages : public CDocuments
{
protected:
    CStartPages()
    {
        m_bTools = true;
        m_bWelcome = true;
    }

    QWidget& Page() { return *m_Window->findChild<QWidget*>("start-page"); }

    QCommandLinkButton& Entry(const char* pszName)
    {
        return *Page().findChild<QCommandLinkButton*>(pszName);
    }

    // The buttons of recent levels.
    QList<QCommandLinkButton*> Recent()
    {
        QList<QCommandLinkButton*> recent = Page().findChildren<QCommandLinkButton*>();
        recent.removeIf([](const QCommandLinkButton* pButton)
                        { return !pButton->objectName().isEmpty() || pButton->isHidden(); });
        return recent;
    }

    // By the keyboard with what has it, and by the mouse.
    template <class TDialog> void ExpectDialog(const char* pszEntry)
    {
        SCOPED_TRACE(pszEntry);
        QWidget& entry = Entry(pszEntry);
        EXPECT_TRUE(entry.hasFocus());
        EXPECT_FALSE(entry.accessibleName().isEmpty());
        const auto leave = [this](TDialog&)
        {
            Key("Escape");
        };
        Answer<TDialog>([this] { Key("Return"); }, leave);
        Answer<TDialog>([&] { Click(entry); }, leave);
        EXPECT_TRUE(Page().isVisible());
    }

    void ExpectLevel(const char* pszWay)
    {
        EXPECT_NE(GetTerrain(), nullptr) << pszWay;
        EXPECT_TRUE(Page().isHidden()) << pszWay;
        EXPECT_NE(dynamic_cast<CViewWidget*>(QApplication::focusWidget()), nullptr) << pszWay;
    }

    QString GetWords()
    {
        const auto* pWords = m_Window->findChild<QLabel*>("status-words");
        return pWords->isVisible() ? pWords->text() : QString();
    }

    QDockWidget& Panel() { return *m_Window->findChild<QDockWidget*>("panel"); }

    IPluginTools& Tools() { return *m_Editor->FindInterface<IPluginTools>(); }

    int GetLines() { return m_Window->GetMessages().GetLineCount(); }
};

} // namespace

TEST_F(CStartPages, BeginsByKeyboardAndMouseAndListsWhatWasOpened)
{
    ASSERT_NO_FATAL_FAILURE(Start(false));
    EXPECT_TRUE(Recent().isEmpty());
    SavePicture("start-page");
    ExpectDialog<CNewLevelDialog>("start-new");
    Key("Down");
    ExpectDialog<QFileDialog>("start-open");
    Key("Tab");
    ExpectDialog<QFileDialog>("start-import");
    Key("Down");
    Key("Return");
    ExpectLevel("the sample by a key");
    const std::string strLevel = SaveLevel();
    Stop();

    ASSERT_NO_FATAL_FAILURE(Start(false));
    ASSERT_EQ(Recent().size(), 2);
    EXPECT_EQ(Recent()[0]->accessibleName(), "valley.level");
    EXPECT_EQ(Recent()[0]->icon().availableSizes().value(0), QSize(192, 192)) << "its picture";
    EXPECT_EQ(Recent()[1]->accessibleName(), "valley.height");
    SavePicture("start-page-recent");
    for (int i = 0; i < 4; ++i)
    {
        Key("Tab");
    }
    EXPECT_TRUE(Recent()[0]->hasFocus());
    Key("Return");
    ExpectLevel("a recent one by a key");
    EXPECT_EQ(m_Editor->GetDocument().GetPath(), strLevel);
    Stop();

    ASSERT_NO_FATAL_FAILURE(Start(false));
    MoveTo(*Recent()[0], {0.5, 0.5});
    Do({"click", "--repeat", "2", "--delay", "40", "1"});
    ExpectLevel("a recent one by a double click");
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 0U) << "the second click is no stroke";
    Stop();

    // A file that has gone is no recent one; its picture goes with it.
    std::filesystem::remove(strLevel);
    ASSERT_NO_FATAL_FAILURE(Start(false));
    Answer<QMessageBox>([this] { Click(*Recent()[0]); }, [](QMessageBox& box) { box.accept(); });
    Settle();
    EXPECT_EQ(Recent().size(), 1);
    EXPECT_TRUE(Page().isVisible());
    Click(Entry("start-sample"));
    ExpectLevel("the sample by the mouse");
    const std::filesystem::directory_iterator pictures(
        m_Folder.Path("config/tellur/recent-pictures"));
    EXPECT_EQ(std::distance(begin(pictures), end(pictures)), 1);
}

TEST_F(CStartPages, NothingIsDoneAndLoggedThatNeedsALevel)
{
    ASSERT_NO_FATAL_FAILURE(Start(false));
    for (const char* pszKeys : {"4", "bracketright", "x", "p", "u", "j", "k", "ctrl+6", "f", "z"})
    {
        Key(pszKeys);
    }
    Drag(GetView(), {0.05, 0.6}, {0.2, 0.9});
    EXPECT_EQ(GetLines(), 0) << m_Window->GetMessages().GetText().toStdString();
    EXPECT_TRUE(Tools().GetFunctionName().empty());
    for (const char* pszCommand : {"tool.blur",
                                   "brush.larger",
                                   "camera.frame",
                                   "level.bitmap",
                                   "file.export",
                                   "view.add_top"})
    {
        EXPECT_FALSE(m_Window->GetCommands().Find(pszCommand)->isEnabled()) << pszCommand;
    }
    // What the plug-in's menu has says so in the status line.
    const QList<QMenu*> menus = m_Window->menuBar()->findChildren<QMenu*>();
    for (const QMenu* pMenu : menus)
    {
        if (pMenu->title() == "Terrain")
        {
            for (QAction* pAction : pMenu->actions())
            {
                pAction->trigger();
                EXPECT_EQ(GetWords(), "There is no level") << pAction->text().toStdString();
            }
        }
    }
    EXPECT_EQ(GetLines(), 0);
    Key("F6"); // the panel, and back to the page
    Key("F6");
    EXPECT_TRUE(Page().isAncestorOf(QApplication::focusWidget()));
}

TEST_F(CStartPages, TheFirstDragRaisesAndTheHintTellsUntilThen)
{
    ASSERT_NO_FATAL_FAILURE(Start(false));
    EXPECT_EQ(GetWords(), "");
    EXPECT_FALSE(Panel().isVisible());
    Click(Entry("start-sample"));
    EXPECT_TRUE(Panel().isVisible());
    MoveTo(GetView(), {0.5, 0.5});
    EXPECT_EQ(GetWords(), "Left drag raises, right drag turns, wheel zooms, 1 to 6 tools, F1 help");
    SavePicture("first-level");
    Key("u");
    EXPECT_TRUE(GetWords().startsWith("Left drag protects the ground, "))
        << GetWords().toStdString();
    Key("u");
    Key("ctrl+t");
    m_Editor->GetKeys().Set("help.guide", {});
    MoveTo(GetView(1), {0.5, 0.5});
    Do({"mousemove_relative", "3", "3"});
    ASSERT_TRUE(WaitFor([this] { return GetWords().contains("Middle drag", Qt::CaseInsensitive); },
                        "no tool"));
    EXPECT_EQ(GetWords(), "No tool: press 1 to 6 or Ctrl+T, middle drag moves, wheel zooms");
    Key("ctrl+t");

    const std::vector<float> before = GetHeights();
    Drag(GetView(), {0.45, 0.5}, {0.55, 0.55});
    const std::vector<float> after = GetHeights();
    float fMost = 0.0F;
    for (size_t i = 0; i < before.size(); ++i)
    {
        EXPECT_GE(after[i], before[i]);
        fMost = std::max(fMost, after[i] - before[i]);
    }
    EXPECT_GT(fMost, 10.0F);
    EXPECT_EQ(GetWords(), "");
    Key("F6"); // and its own button closes it
    Panel().close();
    EXPECT_TRUE(CloseAnd(QMessageBox::Discard));
    Stop();

    ASSERT_NO_FATAL_FAILURE(Start(false));
    Click(Entry("start-sample"));
    EXPECT_FALSE(Panel().isVisible()) << "as it was left";
    EXPECT_EQ(Tools().GetFunctionName(), "RelativeHeightFunction") << "the tool, too";
    EXPECT_EQ(GetWords(), "");
}

TEST_F(CStartPages, TheToolAtHandComesBackWithItsBrushAndNoneSaysWhatTakesOne)
{
    ASSERT_NO_FATAL_FAILURE(Start(false));
    Click(Entry("start-sample"));
    Key("3");
    Key("bracketright");
    Drag(GetView(), {0.45, 0.5}, {0.55, 0.55});
    const float fExtent = Tools().GetBrushExtent();
    for (const bool bTool : {true, false})
    {
        EXPECT_TRUE(CloseAnd(QMessageBox::Discard));
        Stop();
        ASSERT_NO_FATAL_FAILURE(Start(false));
        EXPECT_FALSE(Tools().IsTerraforming());
        Click(Entry("start-sample"));
        EXPECT_EQ(Tools().IsTerraforming(), bTool);
        MoveTo(GetView(), {0.5, 0.5});
        if (bTool)
        {
            EXPECT_EQ(Tools().GetFunctionName(), "SetHeightFunction");
            EXPECT_EQ(Tools().GetBrushExtent(), fExtent);
            EXPECT_EQ(GetWords(), "");
            const std::vector<float> before = GetHeights();
            Drag(GetView(), {0.45, 0.5}, {0.6, 0.6});
            EXPECT_NE(GetHeights(), before) << "by the first drag";
            Key("ctrl+t");
        }
    }
    EXPECT_TRUE(WaitFor([this] { return !GetWords().isEmpty(); }, "a line"));
    EXPECT_EQ(GetWords(),
              "No tool: press 1 to 6 or Ctrl+T, right drag turns, wheel zooms, F1 help");
    Key("ctrl+t");
    EXPECT_EQ(GetWords(), "");
    EXPECT_TRUE(Tools().IsTerraforming());
}
