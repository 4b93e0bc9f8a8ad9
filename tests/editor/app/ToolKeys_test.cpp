// Tools taken and changed by the keys of an X server, without the panel.

#include "editor/app/CKeysDialog.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/IPluginStrokes.h"
#include "tests/editor/app/ToolKeysFixture.h"
#include "tests/support/TestPaths.h"

#include <QFileDialog>
#include <QLabel>
#include <QTreeWidget>

TEST_F(CToolKeys, DigitsTakeTheToolsOfThePanelsButtons)
{
    ASSERT_NO_FATAL_FAILURE(StartWatched());
    const int nLines = GetLines();
    for (const bool bPanel : {false, true})
    {
        if (bPanel)
        {
            OpenPanel();
            MoveTo(GetView(), {0.5, 0.5});
        }
        const std::vector<SToolOffer> tools = Tools().GetTools();
        for (size_t i = 0; i < tools.size(); ++i)
        {
            const std::string strKey = std::to_string(i + 1);
            for (int iTime = 0; iTime < 2; ++iTime) // one that is up stays up
            {
                Key(strKey.c_str());
                EXPECT_EQ(Tools().GetFunctionName(), tools[i].pszFunction);
                EXPECT_TRUE(Tools().IsTerraforming());
            }
        }
    }
    EXPECT_EQ(GetLines(), nLines) << "nothing was refused";

    // The stroke of the key's tool is that of the button's.
    Key("4");
    EXPECT_EQ(GetNote(), "Relative height");
    Tools().SetBrushValue(EBrushValue::Extent, 40.0F);
    const std::vector<float> byKey = GetStroke();
    Key("ctrl+t");
    Click(PanelItem<QWidget>(2132)); // relative height
    EXPECT_EQ(GetStroke(), byKey);

    // Digits that are typed into a field are its own.
    auto& edit = PanelItem<QLineEdit>(2128);
    Click(edit);
    Do({"key", "ctrl+a"});
    Do({"type", "16"});
    EXPECT_EQ(edit.text(), "16");
    EXPECT_EQ(Tools().GetFunctionName(), "RelativeHeightFunction");
    EXPECT_EQ(Get(EBrushValue::Extent), 16.0F);
}

TEST_F(CToolKeys, AKeyDuringAStrokeChangesNothing)
{
    ASSERT_NO_FATAL_FAILURE(StartWithTool());
    const std::vector<float> stroke = GetStroke();
    MoveTo(GetView(), {0.4, 0.5});
    Do({"mousedown", "1"});
    for (const char* pszKey : {"6", "bracketright", "x", "p", "m"})
    {
        Key(pszKey);
    }
    Hold("b");
    Key("9");
    const QPointF from(0.4, 0.5);
    const QPointF to(0.6, 0.55);
    for (int i = 1; i <= 12; ++i)
    {
        MoveTo(GetView(), from + (to - from) * (i / 12.0));
    }
    LetGo("b");
    Do({"mouseup", "1"});
    EXPECT_EQ(GetHeights(), stroke);
    EXPECT_EQ(Get(EBrushValue::Extent), 40.0F);
    EXPECT_EQ(Tools().GetFunctionName(), "RelativeHeightFunction");
    EXPECT_EQ(Tools().GetMaskPath(), "");
}

TEST_F(CToolKeys, CtrlTPutsTheToolAwayAndTakesTheLastOneUp)
{
    ASSERT_NO_FATAL_FAILURE(StartWatched());
    const int nLines = GetLines();
    Key("ctrl+t");
    EXPECT_EQ(Tools().GetFunctionName(), "RelativeHeightFunction") << "there was none yet";
    EXPECT_TRUE(m_Watcher.actions.empty());
    Key("3");
    for (int i = 0; i < 2; ++i)
    {
        Key("ctrl+t");
        EXPECT_FALSE(Tools().IsTerraforming());
        Key("ctrl+t");
        EXPECT_EQ(Tools().GetFunctionName(), "SetHeightFunction");
        EXPECT_TRUE(Tools().IsTerraforming());
    }
    EXPECT_EQ(m_Watcher.actions, (std::vector<int32_t>{0, 0}));
    EXPECT_EQ(GetLines(), nLines) << "nothing was refused";
}

TEST_F(CToolKeys, BracketsScaleTheBrushWithinTheTerrain)
{
    ASSERT_NO_FATAL_FAILURE(StartWithTool());
    Key("bracketright");
    EXPECT_EQ(Get(EBrushValue::Extent), 44.0F);
    EXPECT_EQ(GetNote(), "brush 44.0");
    Key("bracketleft");
    EXPECT_EQ(Get(EBrushValue::Extent), 40.0F);

    const struct
    {
        float fFrom;
        const char* pszKey;
        float fTo;
    } cases[] = {
        {310.0F, "bracketright", 320.0F},
        {320.0F, "bracketright", 320.0F},
        {5.2F, "bracketleft", 5.0F}, // half a cell
        {5.0F, "bracketleft", 5.0F},
    };

    for (const auto& test : cases)
    {
        Tools().SetBrushValue(EBrushValue::Extent, test.fFrom);
        Key(test.pszKey);
        EXPECT_EQ(Get(EBrushValue::Extent), test.fTo) << test.fFrom << test.pszKey;
    }
    Key("1"); // 3200 units, as it came
    Key("bracketright");
    EXPECT_EQ(Get(EBrushValue::Extent), 3200.0F) << "nobody asked for a smaller one";
    Key("bracketleft");
    EXPECT_EQ(Get(EBrushValue::Extent), 320.0F);
}

TEST_F(CToolKeys, InvertHeightAndMaskSayWhatTheyDid)
{
    ASSERT_NO_FATAL_FAILURE(StartWithTool());
    Key("x");
    EXPECT_EQ(GetNote(), "lowers 500");
    const std::vector<float> lowered = GetStroke();
    EXPECT_EQ(*std::min_element(lowered.begin(), lowered.end()), 0.0F);
    EXPECT_EQ(*std::max_element(lowered.begin(), lowered.end()), 20.0F);
    Key("x");
    EXPECT_EQ(GetNote(), "raises 500");
    Key("p");
    EXPECT_EQ(GetNote(), "Relative height sets no height");
    Key("3");
    Key("x");
    EXPECT_EQ(GetNote(), "Set height has no inverse");
    MoveTo(GetView(), {0.5, 0.02});
    Key("p");
    EXPECT_EQ(GetNote(), "no ground under the cursor");
    Tools().SetBrushValue(EBrushValue::Extent, 40.0F);
    MoveTo(GetView(), {0.3, 0.6});
    Key("p");
    EXPECT_EQ(GetNote(), "sets 20.00");
    const std::vector<float> flat = GetHeights();
    Drag(GetView(), {0.4, 0.5}, {0.6, 0.5});
    EXPECT_EQ(GetHeights(), flat) << "it is that high already";

    const std::string strMask = std::string(TELLUR_SOURCE_DIR) + "/data/samples/stripes.png";
    const auto choose = [&](const char* pszKey)
    {
        Answer<QFileDialog>([&] { Key(pszKey); },
                            [&](QFileDialog& dialog)
                            {
                                dialog.findChild<QLineEdit*>("fileNameEdit")
                                    ->setText(QString::fromStdString(strMask));
                                Do({"key", "Return"});
                            });
    };
    choose("m");
    EXPECT_EQ(Tools().GetMaskPath(), "data/samples/stripes.png");
    EXPECT_TRUE(Tools().IsMaskEnabled());
    MoveTo(GetView(), {0.3, 0.6});
    Key("m");
    EXPECT_FALSE(Tools().IsMaskEnabled());
    EXPECT_EQ(GetNote(), "mask off");
    choose("shift+m");
    EXPECT_TRUE(Tools().IsMaskEnabled());
    Key("ctrl+t");
    Key("m");
    EXPECT_EQ(GetNote(), "no tool");
}

TEST_F(CToolKeys, OnlyToolsThatHeedCtrlAndAltSaySo)
{
    ASSERT_NO_FATAL_FAILURE(StartWithTool());
    for (const bool bHeeds : {false, true})
    {
        Key(bHeeds ? "3" : "4");
        MoveTo(GetView(), {0.5, 0.5});
        Do({"mousedown", "1"});
        Hold("ctrl");
        MoveTo(GetView(), {0.52, 0.5});
        EXPECT_EQ(GetNote().starts_with("min"), bHeeds) << GetNote();
        LetGo("ctrl");
        Do({"mouseup", "1"});
    }
}

TEST_F(CToolKeys, ARecordingSmoothsAsTheHandDid)
{
    ASSERT_NO_FATAL_FAILURE(StartWithTool());
    // A blur that fades out, so that it counts where a stroke goes on from.
    Play("!brush_file( s )\n!use_brush( s )\nbrush_file( \"fading.ini\" )\nuse_brush( \"Fading\" "
         ")\n",
         "!brush()\n!brush_name( s )\n!bitmap()\n!path( s )\n!function( s )\n!fade_factor( f )\n"
         "brush()\n{\n brush_name( \"Fading\" )\n bitmap() { path( \"data/brushes/round.png\" ) }\n"
         " function( \"BlurFunction\" )\n fade_factor( 2000.0 )\n}\n");
    ASSERT_EQ(Tools().GetFunctionName(), "BlurFunction");
    Key("4");
    const std::string strScript = m_Folder.Path("smooth.tellur");
    ASSERT_TRUE(m_Editor->GetRecorder()->Start(strScript));
    const auto smooth = [&](const QPointF& from, const QPointF& to)
    {
        const std::vector<float> before = GetHeights();
        EXPECT_TRUE(m_Editor->FindInterface<IPluginStrokes>()->BeginSmoothing());
        EXPECT_EQ(Get(EBrushValue::Extent), 40.0F);
        Drag(GetView(), from, to);
        const CUndoStack& stack = GetHost().GetUndoStack();
        EXPECT_TRUE(stack.GetText(stack.GetCount() - 1).ends_with("Blur"));
        m_Editor->FindInterface<IPluginStrokes>()->EndSmoothing();
        EXPECT_EQ(Tools().GetFunctionName(), "RelativeHeightFunction");
        EXPECT_NE(GetHeights(), before);
    };
    Drag(GetView(), {0.4, 0.5}, {0.5, 0.5});
    smooth({0.38, 0.5}, {0.45, 0.5});
    // Over the sky first: they go on from where the smoothing before has ended.
    smooth({0.5, 0.02}, {0.4, 0.55});
    smooth({0.5, 0.02}, {0.42, 0.52});
    Drag(GetView(), {0.5, 0.6}, {0.45, 0.5});
    smooth({0.5, 0.02}, {0.5, 0.55});
    const std::string strAfter = m_Folder.Path("after.height");
    ASSERT_TRUE(GetHost().GetEngine().GetWorld()->GetTerrain()->SaveHeightMap(
        strAfter.c_str(), nullptr, 0, 0));
    ASSERT_TRUE(m_Editor->GetRecorder()->Stop());
    EXPECT_EQ(ReplayScript(strScript, m_Folder.Path("replayed.height")), ReadBytes(strAfter));
}

TEST_F(CToolKeys, KeysWorkWhereTheCursorIsWithoutAClick)
{
    ASSERT_NO_FATAL_FAILURE(StartWatched());
    OpenPanel();
    Click(PanelItem<QLineEdit>(2198));
    EXPECT_FALSE(GetView().hasFocus());
    MoveTo(GetView(), {0.5, 0.5});
    EXPECT_TRUE(GetView().hasFocus());
    Hold("w");
    EXPECT_TRUE(GetView().GetKeys().IsFlyKeyDown("forward"));
    MoveTo(GetView(1), {0.5, 0.5});
    EXPECT_TRUE(GetView(1).hasFocus());
    EXPECT_FALSE(GetView().GetKeys().IsFlyKeyDown("forward"));
    LetGo("w");
    EXPECT_FALSE(GetView(1).GetKeys().IsFlyKeyDown("forward"));
    GetView().setFocus(); // as when the window comes while the cursor lies in the other view
    QEvent activated(QEvent::WindowActivate);
    QApplication::sendEvent(&GetView(1), &activated);
    EXPECT_TRUE(GetView(1).hasFocus());
    // With a button down the view that it went down in keeps the keyboard, and so does a menu.
    Do({"mousedown", "2"});
    MoveTo(GetView(), {0.5, 0.5});
    EXPECT_TRUE(GetView(1).hasFocus());
    Do({"mouseup", "2"});
    Key("alt+f");
    ASSERT_TRUE(WaitFor([] { return QApplication::activePopupWidget() != nullptr; }, "the menu"));
    MoveTo(GetView(), {0.6, 0.5});
    EXPECT_NE(QApplication::activePopupWidget(), nullptr);
    Key("Escape");
}

TEST_F(CToolKeys, EveryKeyStandsInTheDialogWithoutAClashAndCanBeAnother)
{
    ASSERT_NO_FATAL_FAILURE(StartWatched());
    Answer<CKeysDialog>([this] { Trigger("edit.keys"); },
                        [&](CKeysDialog& dialog)
                        {
                            auto* pList = dialog.findChild<QTreeWidget*>("keys-list");
                            const auto find = [pList](const char* pszText)
                            {
                                return pList->findItems(pszText, Qt::MatchExactly).front();
                            };
                            const std::pair<const char*, const char*> keys[] = {
                                {"Blur", "1"},
                                {"Ramp", "6"},
                                {"Take the tool up or put it away", "Ctrl+T"},
                                {"Larger brush", "]"},
                                {"Size of the brush, with the mouse", "B"},
                                {"Power of the brush, with the mouse", "V"},
                                {"Hardness of the brush, with the mouse", "H"},
                                {"Invert the tool", "X"},
                                {"Pick the height to set", "P"},
                                {"Mask on and off", "M"},
                                {"Choose the mask", "Shift+M"},
                                {"Toggle terrain modification mode", ""},
                                {"Increase Tellur brush size", ""},
                            };
                            for (const auto& [pszText, pszKey] : keys)
                            {
                                EXPECT_EQ(find(pszText)->text(1).toStdString(), pszKey) << pszText;
                            }
                            EXPECT_EQ(dialog.findChild<QLabel*>("keys-clash")->text(), "");
                            const auto set = [&](const char* pszText, const char* pszKey)
                            {
                                pList->setCurrentItem(find(pszText));
                                dialog.findChild<QLineEdit*>("keys-edit")->setFocus();
                                Key(pszKey);
                            };
                            set("Size of the brush, with the mouse", "i");
                            set("Toggle terrain modification mode", "ctrl+y");
                            Do({"key", "Tab"});
                            dialog.accept();
                        });
    MoveTo(GetView(), {0.5, 0.5});
    Key("4");
    Tools().SetBrushValue(EBrushValue::Extent, 40.0F);
    Hold("b");
    Key("6");
    LetGo("b");
    EXPECT_EQ(Tools().GetFunctionName(), "RampFunction");
    Tools().SetBrushValue(EBrushValue::Extent, 40.0F);
    Hold("i");
    Key("6");
    LetGo("i");
    EXPECT_EQ(Get(EBrushValue::Extent), 6.0F);
    const int nLines = GetLines();
    for (int i = 0; i < 2; ++i) // the plug-in's own action, which has nothing to take up
    {
        Key("ctrl+y");
        EXPECT_FALSE(Tools().IsTerraforming());
    }
    EXPECT_GT(GetLines(), nLines) << "it is refused as ever";
    EXPECT_EQ(m_Watcher.actions, (std::vector<int32_t>{0, 0}));
}

TEST_F(CToolKeys, AHeldKeySwitchesOnce)
{
    ASSERT_NO_FATAL_FAILURE(StartWatched());
    for (const QAction* pAction : m_Window->actions())
    {
        EXPECT_FALSE(pAction->isCheckable() && pAction->autoRepeat())
            << pAction->objectName().toStdString();
    }
}
