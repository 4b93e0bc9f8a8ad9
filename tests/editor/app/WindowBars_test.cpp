#include "editor/app/CMessagesDock.h"
#include "editor/app/CScriptBar.h"
#include "host/Log.h"
#include "tests/editor/app/EditorFixture.h"

#include <QClipboard>
#include <QComboBox>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QProcess>
#include <QProgressBar>
#include <QToolBar>
#include <QToolButton>
#include <QTreeWidget>

namespace
{

constexpr int MOVES = 300;

// What the log says, and how far a script is: the bars at the edges of the views, and the list.
class CWindowBars : public CEditorFixture, public IHostObserver
{
protected:
    // Plays a stroke of many moves slowly; onMove is called at each of them.
    EScriptEnd PlayLongStroke(std::function<void(int)> onMove)
    {
        std::string strText =
            "!press( f, f )\n!move( f, f, i )\n!release( f, f )\npress( 40, 60 )\n";
        for (int i = 0; i < MOVES; ++i)
        {
            strText += "move( " + std::to_string(40 + i / 2) + ", 60, 0 )\n";
        }
        const std::string strScript = m_Folder.Path("long.tellur");
        WriteBytes(strScript, strText + "release( 190, 60 )\n");
        m_OnMove = std::move(onMove);
        m_nMoves = 0;
        GetHost().GetObservers().Add(this);
        std::string strFault;
        const EScriptEnd eEnd = m_Window->GetScripts().Play(strScript, strFault);
        GetHost().GetObservers().Remove(this);
        EXPECT_EQ(strFault.ends_with(" of 302 calls"), eEnd == EScriptEnd::Stopped) << strFault;
        Settle();
        return eEnd;
    }

    void OnEvent(const SHostEvent& event) override
    {
        if (event.eKind == EHostEvent::MouseMove && GetHost().GetInput().IsDragging())
        {
            m_OnMove(++m_nMoves);
        }
    }

    // Whatever does not answer while a script is played.
    void ExpectGrey(bool bGrey)
    {
        EXPECT_EQ(m_Window->menuBar()->isEnabled(), !bGrey);
        for (const QToolBar* pBar : m_Window->findChildren<QToolBar*>())
        {
            EXPECT_EQ(pBar->isEnabled(), !bGrey) << pBar->objectName().toStdString();
        }
        for (const char* pszDock : {"panel", "history", "messages"})
        {
            EXPECT_EQ(Find<QDockWidget>(pszDock).isEnabled(), !bGrey) << pszDock;
        }
        EXPECT_TRUE(GetView().isEnabled());
        EXPECT_TRUE(Find<QToolButton>("script-stop").isEnabled());
    }

    template <typename TWidget> TWidget& Find(const char* pszName)
    {
        return *m_Window->findChild<TWidget*>(pszName);
    }

    QStringList GetShownMessages()
    {
        QStringList shown;
        auto& list = Find<QTreeWidget>("message-list");
        for (int i = 0; i < list.topLevelItemCount(); ++i)
        {
            if (!list.topLevelItem(i)->isHidden())
            {
                shown << list.topLevelItem(i)->text(0) + ": " + list.topLevelItem(i)->text(1);
            }
        }
        return shown;
    }

    std::function<void(int)> m_OnMove;
    int m_nMoves = 0;
};

} // namespace

TEST_F(CWindowBars, AScriptSaysHowFarItIsAndEndsWithItsStrokeWhenItIsStopped)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    auto& bar = Find<CScriptBar>("script-bar");
    EXPECT_FALSE(bar.isVisible());
    // By Escape, by the button, and by the cross of the window, which asks once the script is over.
    const std::function<void()> stops[] = {[] {
                                               QProcess::execute("xdotool", {"key", "Escape"});
                                           },
                                           [this] { Find<QToolButton>("script-stop").click(); },
                                           [this]
                                           {
                                               EXPECT_FALSE(m_Window->close());
                                           }};
    for (const auto& stop : stops)
    {
        Find<QComboBox>("script-speed").setCurrentIndex(static_cast<int>(EScriptSpeed::Slow));
        const std::vector<float> before = GetHeights();
        int iShown = 0;
        const auto play = [&]
        {
            EXPECT_EQ(PlayLongStroke(
                          [&](int i)
                          {
                              if (i == 20)
                              {
                                  EXPECT_TRUE(bar.isVisible());
                                  ExpectGrey(true);
                                  iShown = Find<QProgressBar>("script-progress").value();
                                  SavePicture("script-bar");
                                  stop();
                              }
                          }),
                      EScriptEnd::Stopped);
        };
        if (&stop == &stops[2])
        {
            Answer<QMessageBox>(play, [](QMessageBox& box) { box.reject(); });
        }
        else
        {
            play();
        }
        ExpectGrey(false);
        EXPECT_EQ(iShown, 20) << "the press and 19 moves were played";
        EXPECT_LT(m_nMoves, MOVES);
        EXPECT_FALSE(bar.isVisible());
        EXPECT_TRUE(m_Window->isVisible());
        EXPECT_TRUE(
            Find<QLabel>("status-words").text().startsWith("The script was stopped after "));
        EXPECT_FALSE(GetHost().GetInput().IsDragging());
        EXPECT_NE(GetHeights(), before);
        Key("ctrl+z");
        EXPECT_EQ(GetHeights(), before) << "its stroke is a step like any other";
    }
}

TEST_F(CWindowBars, AStepOfTheHistorySaysWhatAndWhere)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    Find<QComboBox>("script-speed").setCurrentIndex(static_cast<int>(EScriptSpeed::Fast));
    PlayLongStroke([](int) {});
    EXPECT_EQ(m_nMoves, MOVES);
    CUndoStack& stack = GetHost().GetUndoStack();
    EXPECT_EQ(stack.GetDetail(0), "raises, 300 points at 40, 60");
    Key("x");
    Drag(GetView(), {0.5, 0.5}, {0.5, 0.5}, 1);
    EXPECT_TRUE(stack.GetDetail(1).starts_with("lowers, ")) << stack.GetDetail(1);
    ASSERT_NO_FATAL_FAILURE(TakeBrush("RampFunction", "m_SideInterpolation", "0.5"));
    Drag(GetView(1), {0.3, 0.5}, {0.6, 0.5}, 4);
    EXPECT_TRUE(stack.GetDetail(2).starts_with("from ")) << stack.GetDetail(2);
    Key("u"); // protects: no stroke of the tool
    Click(GetView());
    EXPECT_EQ(stack.GetDetail(3), "");
    EXPECT_GE(stack.GetTime(3), stack.GetTime(0));
}

TEST_F(CWindowBars, AFaultIsShownOverTheViewsUntilItIsClosedOrTheLevelGoes)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    auto& bar = Find<QFrame>("fault-bar");
    WarnLog("[CSomething::DoIt] left out\n");
    LogR("[CSomething::DoIt] refused\n");
    Settle();
    EXPECT_FALSE(bar.isVisible());
    CrashLog("[CSomething::DoIt] heights.png: %s\n", "broken");
    EXPECT_FALSE(bar.isVisible()) << "a box may still show it";
    Settle();
    EXPECT_TRUE(bar.isVisible());
    EXPECT_EQ(Find<QLabel>("fault-text").text(), "heights.png: broken");
    Drag(GetView(), {0.4, 0.5}, {0.5, 0.5}, 3);
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 1U) << "the views are there as ever";
    m_Window->GetMessages().hide();
    Settle(); // the bar goes along
    Click(Find<QToolButton>("fault-messages"));
    EXPECT_FALSE(bar.isVisible());
    EXPECT_TRUE(m_Window->GetMessages().isVisible());

    // A box that says it is enough.
    AnswerAny(
        [this]
        {
            CrashLog("[CSomething::DoIt] nothing can be read\n");
            m_Face->GetEditorFrontEnd().MessageBox("Load failed", MB_ICONEXCLAMATION);
        },
        [](QWidget* pBox)
        {
            pBox->close();
            return true;
        });
    Settle();
    EXPECT_FALSE(bar.isVisible());

    // It goes with the level that it may speak of.
    CrashLog("[CSomething::DoIt] nothing can be read\n");
    Settle();
    EXPECT_TRUE(bar.isVisible());
    ASSERT_TRUE(m_Editor->GetDocument().New(32, {320.0F, 100.0F, 320.0F}));
    Settle();
    EXPECT_FALSE(bar.isVisible());
}

TEST_F(CWindowBars, MessagesAreChosenByKindAndTextAndCopied)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    CrashLog("[CSomething::DoIt] a fault\n");
    WarnLog("[CSomething::DoIt] a mask is missing\n");
    LogR("[CSomething::DoIt] a refusal\n");
    Settle();
    auto& kinds = Find<QComboBox>("message-kinds");
    kinds.setFocus();
    Key("Down");
    EXPECT_EQ(GetShownMessages(), QStringList({"Fault: A fault", "Warning: A mask is missing"}));
    Find<QLineEdit>("message-filter").setFocus();
    Do({"type", "MASK"});
    EXPECT_EQ(GetShownMessages(), QStringList("Warning: A mask is missing"));
    LogR("[CSomething::DoIt] the mask stays\n"); // what comes is chosen, too
    Click(Find<QToolButton>("message-copy"));
    EXPECT_EQ(QApplication::clipboard()->text(), "Warning: A mask is missing\n");
    Find<QLineEdit>("message-filter").setFocus();
    Key("ctrl+a");
    Key("BackSpace");
    kinds.setFocus();
    Key("Up");
    EXPECT_EQ(GetShownMessages().size(), 4);
    EXPECT_TRUE(m_Window->GetMessages().GetText().endsWith("A refusal\nThe mask stays"));
}
