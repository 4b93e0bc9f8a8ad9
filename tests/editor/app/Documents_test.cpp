// Levels as files: what the menus, keys and dialogs of the window do to them.

#include "editor/app/CMessagesDock.h"
#include "editor/app/CNewLevelDialog.h"
#include "editor/app/CSettingsDialog.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "host/IPluginTools.h"
#include "tests/editor/app/DocumentsFixture.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QDoubleSpinBox>
#include <QGroupBox>
#include <QLabel>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>
#include <QToolBar>
#include <QTreeWidget>

TEST_F(CDocuments, WhatIsGivenUpIsStillThereUntilAnotherLevelTakesItsPlace)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const std::string strLevel = SaveLevel();
    ASSERT_NO_FATAL_FAILURE(Sculpt());
    CAutosave& autosave = m_Editor->GetAutosave();
    autosave.SetInterval(std::chrono::seconds(1));
    const auto later = CAutosave::TimePoint::clock::now() + std::chrono::hours(1);
    ASSERT_TRUE(autosave.Tick(later));
    ASSERT_TRUE(autosave.Wait());
    const std::string strCopies = m_Folder.Path("levels/.tellur-autosave");
    ASSERT_FALSE(std::filesystem::is_empty(strCopies));
    // Changes are given up for a new level, which is not made after all.
    bool bAsked = false;
    QTimer timer;
    timer.callOnTimeout(
        [&bAsked]
        {
            if (auto* pDialog = dynamic_cast<CNewLevelDialog*>(QApplication::activeModalWidget()))
            {
                bAsked = true;
                pDialog->reject();
            }
        });
    timer.start(20);
    Answer<QMessageBox>([this] { Trigger("file.new"); },
                        [](QMessageBox& box) { box.button(QMessageBox::Discard)->click(); });
    EXPECT_TRUE(bAsked);
    EXPECT_TRUE(m_Editor->GetDocument().IsModified());
    EXPECT_FALSE(std::filesystem::is_empty(strCopies));
    Key("ctrl+s");
    EXPECT_FALSE(std::filesystem::exists(strCopies));
}

TEST_F(CDocuments, ANewLevelHasTheSizesOfTheDialog)
{
    ASSERT_NO_FATAL_FAILURE(Start(false));
    Answer<CNewLevelDialog>(
        [this] { Key("ctrl+n"); },
        [this](CNewLevelDialog& dialog)
        {
            auto* pCells = dialog.findChild<QComboBox*>();
            pCells->setCurrentIndex(pCells->findText("129 x 129 vertices"));
            const auto boxes = dialog.findChildren<QDoubleSpinBox*>();
            ASSERT_EQ(boxes.size(), 3);
            boxes[0]->setValue(5000.0);
            EXPECT_EQ(boxes[0]->text(), "5000.0 cm");
            Click(*boxes[1]);
            Key("ctrl+a");
            Do({"type", "800,5"}); // a comma is a point
            WaitFor([&] { return boxes[1]->value() == 800.5; }, "the number that was typed");
            const auto* pLimits = dialog.findChild<QLabel*>("new-level-limits");
            boxes[2]->setValue(900.0);
            EXPECT_EQ(pLimits->text(), "The height at start ends at the highest ground.");
            boxes[2]->setValue(160.0);
            EXPECT_EQ(pLimits->text(), "Lengths are up to 10000000 cm.");
            SavePicture("new-level");
            Click(*dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok));
        });
    ASSERT_NE(GetTerrain(), nullptr);
    EXPECT_EQ(GetTerrain()->GetVerticesX(), 129U);
    EXPECT_EQ(GetTerrain()->GetSizeVector().x, 5000.0F);
    EXPECT_EQ(GetTerrain()->GetSizeVector().y, 800.5F);
    EXPECT_NEAR(GetTerrain()->GetHeightData()[0], 160.0F, 0.01F);
}

TEST_F(CDocuments, FilesOpenFromTheDialogTheRecentListAndADrop)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const std::string strLevel = SaveLevel();
    ASSERT_TRUE(m_Editor->GetDocument().New(64, {64.0F, 10.0F, 64.0F}, 1.0F));
    ChooseFile([this] { Key("ctrl+o"); }, strLevel); // nothing to save: the new level is as made
    EXPECT_EQ(GetTerrain()->GetVerticesX(), 33U);
    EXPECT_EQ(m_Editor->GetRecentFiles().GetPaths(), std::vector<std::string>{strLevel});

    ASSERT_TRUE(m_Editor->GetDocument().New(64, {64.0F, 10.0F, 64.0F}, 1.0F));
    m_Window->ShowProgress("Writing heights", 0.5F); // which takes events
    ASSERT_NO_FATAL_FAILURE(Drop(strLevel));
    EXPECT_EQ(GetTerrain()->GetVerticesX(), 65U) << "not in the middle of work";
    m_Window->ShowProgress("Writing heights", 1.0F);
    WaitFor([this] { return GetTerrain()->GetVerticesX() == 33U; }, "the dropped file is open");

    // A file that is none: one line in a window, and the level stays.
    const std::string strBroken = m_Folder.Path("levels/broken.level");
    WriteBytes(strBroken, "!height_map( s )\nheight_map( \"nothing.height\" )\n");
    m_Editor->GetRecentFiles().Add(strBroken);
    Answer<QMessageBox>([&] { EXPECT_FALSE(m_Window->GetDocuments().OpenFile(strBroken)); },
                        [](QMessageBox& box)
                        {
                            EXPECT_TRUE(box.informativeText().contains("nothing.height"))
                                << box.informativeText().toStdString();
                            box.accept();
                        });
    EXPECT_EQ(GetTerrain()->GetVerticesX(), 33U);
    EXPECT_EQ(m_Editor->GetRecentFiles().GetPaths(), std::vector<std::string>{strLevel});
}

TEST_F(CDocuments, RecordingByTheMenuGivesAScriptThatEndsInTheSameFile)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const std::string strScript = m_Folder.Path("hand.tellur");
    ChooseFile([this] { Key("ctrl+shift+r"); }, strScript);
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    Drag(GetView(), {0.4, 0.5}, {0.6, 0.55});
    Drag(GetView(1), {0.4, 0.4}, {0.6, 0.45});
    Key("ctrl+shift+r"); // stops
    ASSERT_FALSE(m_Editor->GetRecorder()->IsRecording());
    const std::string strSaved = m_Folder.Path("hand.height");
    ASSERT_TRUE(GetHost().GetEngine().GetWorld()->GetTerrain()->SaveHeightMap(
        strSaved.c_str(), nullptr, 0, 0));
    EXPECT_TRUE(ReplayScript(strScript, m_Folder.Path("replayed.height")) == ReadBytes(strSaved));
}

TEST_F(CDocuments, TheProcessListRunsTheExport)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    auto* pDock = m_Window->findChild<QDockWidget*>("processes");
    pDock->raise();
    Settle();
    auto* pList = pDock->findChild<QTreeWidget*>("process-list");
    ASSERT_EQ(pList->topLevelItemCount(), 1);
    EXPECT_EQ(pList->topLevelItem(0)->text(1), "idle");
    const std::string strStl = m_Folder.Path("valley.stl");
    ChooseFile([&] { Click(*pDock->findChild<QPushButton*>("process-run")); }, strStl);
    WaitFor([&] { return pList->topLevelItem(0)->text(1) == "done"; }, "the export ends");
    // 80 bytes of text, a count, then 50 bytes a triangle; 32 x 32 cells have 2048 on the ground.
    const size_t nSize = std::filesystem::file_size(strStl);
    EXPECT_EQ((nSize - 84) % 50, 0U);
    EXPECT_GE(nSize, size_t{84} + size_t{2048} * 50);
}

TEST_F(CDocuments, ALevelThatAScriptMakesIsShownWhole)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const std::string strScript = m_Folder.Path("large.tellur");
    WriteBytes(strScript, "!level( i, v3 )\nlevel( 64, [6400, 100, 6400] )\n");
    std::string strFault;
    ASSERT_EQ(m_Window->GetScripts().Play(strScript, strFault), EScriptEnd::Played) << strFault;
    for (size_t iView = 0; iView < 2; ++iView)
    {
        const SViewProjection view = GetView(iView).GetNavigator().GetProjection(GetTerrain());
        for (int iCorner = 0; iCorner < 4; ++iCorner)
        {
            float fX = 0.0F;
            float fY = 0.0F;
            const SVec3 corner = {
                iCorner % 2 == 0 ? 0.0F : 6400.0F, 0.0F, iCorner < 2 ? 0.0F : 6400.0F};
            EXPECT_TRUE(view.Project(corner, fX, fY) && fX >= 0.0F && fY >= 0.0F &&
                        fX <= static_cast<float>(view.iWidth) &&
                        fY <= static_cast<float>(view.iHeight))
                << "view " << iView << ", corner " << iCorner;
        }
    }
}

namespace
{

// A hand that does not wait until a script is over.
class CImpatient : public IHostObserver
{
public:
    explicit CImpatient(std::function<void()> press)
        : m_Press(std::move(press))
    {
    }

    void OnEvent(const SHostEvent& event) override
    {
        if (event.eKind == EHostEvent::ButtonUp)
        {
            m_Press();
        }
    }

private:
    std::function<void()> m_Press;
};

} // namespace

TEST_F(CDocuments, WhatIsPressedWhileAScriptIsPlayedIsNotDoneAfterIt)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(TakeBrush());
    MoveTo(GetView(1), {0.5, 0.5});
    const std::string strScript = m_Folder.Path("one.tellur");
    WriteBytes(strScript,
               "!press( f, f )\n!move( f, f, i )\n!release( f, f )\n"
               "press( 100, 100 )\nmove( 110, 100, 0 )\nrelease( 110, 100 )\n");
    CImpatient hand(
        [] {
            QProcess::execute("xdotool", {"click", "1", "key", "bracketright", "key", "3"});
        });
    GetHost().GetObservers().Add(&hand);
    std::string strFault;
    EXPECT_EQ(m_Window->GetScripts().Play(strScript, strFault), EScriptEnd::Played) << strFault;
    GetHost().GetObservers().Remove(&hand);
    Settle();
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 1U);
    EXPECT_EQ(m_Editor->FindInterface<IPluginTools>()->GetFunctionName(), "RelativeHeightFunction");
    EXPECT_EQ(m_Window->findChild<QLabel*>("status-words")->text(),
              "What was pressed while the script was played is left out");
    Click(GetView(1)); // from now on it counts
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 2U);
}

TEST_F(CDocuments, ThePanelIsOpenAgainWhereItWasLeftOpen)
{
    for (const bool bOpen : {false, true, false})
    {
        SCOPED_TRACE(bOpen);
        ASSERT_NO_FATAL_FAILURE(Start());
        auto* pToolBar = m_Window->findChild<QToolBar*>("plugin-toolbar");
        EXPECT_EQ(m_Window->findChild<QDockWidget*>("panel")->isVisible(), bOpen);
        EXPECT_EQ(pToolBar->actions().front()->isChecked(), bOpen);
        Click(*pToolBar->widgetForAction(pToolBar->actions().front()));
        EXPECT_EQ(m_Window->findChild<QDockWidget*>("panel")->isVisible(), !bOpen);
        m_Window->close();
        Stop();
    }
}

TEST_F(CDocuments, SettingsOfTheEditorAndThePluginAreKept)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    Answer<CSettingsDialog>([this] { Trigger("edit.settings"); },
                            [this](CSettingsDialog& dialog)
                            {
                                const auto boxes = dialog.findChildren<QSpinBox*>();
                                ASSERT_EQ(boxes.size(), 5); // the editor's, then the plug-in's
                                boxes[0]->setValue(20);
                                boxes[1]->setValue(7);
                                EXPECT_EQ(boxes[2]->value(), 180);
                                boxes[2]->setValue(240);
                                boxes[3]->setValue(1);
                                boxes[4]->setValue(77);
                                dialog.findChildren<QCheckBox*>().front()->setChecked(false);
                                QStringList texts;
                                for (const auto* pLabel : dialog.findChildren<QLabel*>())
                                {
                                    texts << pLabel->text();
                                }
                                EXPECT_TRUE(texts.contains("2D draw undo manager stack size"));
                                EXPECT_TRUE(texts.contains("0 to 7200")) << "seconds";
                                EXPECT_EQ(dialog.findChildren<QGroupBox*>().back()->title(),
                                          "Tellur");
                                SavePicture("settings");
                                Key("Return");
                            });
    m_Window->close();
    Stop();
    ASSERT_NO_FATAL_FAILURE(Start());
    EXPECT_EQ(m_Window->GetSettings().iAutosaveSeconds, 240);
    EXPECT_FALSE(m_Window->GetSettings().input.bSampleStrokes);
    EXPECT_EQ(m_Window->GetSettings().input.iSpacingPercent, 20);
    EXPECT_EQ(m_Window->GetSettings().input.iBuildsASecond, 7);
    EXPECT_EQ(GetHost().GetUndoStack().GetLimit(), size_t{1} << 20) << "a megabyte";
    Answer<CSettingsDialog>([this] { Trigger("edit.settings"); },
                            [](CSettingsDialog& dialog)
                            {
                                EXPECT_EQ(dialog.findChildren<QSpinBox*>()[4]->value(), 77);
                                dialog.reject();
                            });
    const auto* pDepth =
        static_cast<const int32_t*>(GetHost().GetSettings().GetRegistered().front().pValue);
    for (const bool bOk : {false, true})
    {
        Answer<CSettingsDialog>([this] { Trigger("edit.settings"); },
                                [&](CSettingsDialog& dialog)
                                {
                                    for (auto* pButton : dialog.findChildren<QPushButton*>())
                                    {
                                        pButton->text() == "Restore defaults" ? Click(*pButton)
                                                                              : void();
                                    }
                                    EXPECT_EQ(dialog.findChildren<QSpinBox*>()[2]->value(), 180);
                                    EXPECT_EQ(dialog.findChildren<QSpinBox*>()[4]->value(), 10);
                                    EXPECT_EQ(*pDepth, 77) << "not before OK";
                                    bOk ? dialog.accept() : dialog.reject();
                                });
        EXPECT_EQ(*pDepth, bOk ? 10 : 77);
        EXPECT_EQ(m_Window->GetSettings().iAutosaveSeconds, bOk ? 180 : 240);
        EXPECT_EQ(m_Window->GetSettings().input.bSampleStrokes, bOk);
    }
}

TEST_F(CDocuments, ASettingsFileWithAFaultIsOneLineAndIsKept)
{
    const std::string strFile = m_Folder.Path("config/tellur/editor.ini");
    const std::string strBinary("\x01\x00\xff=\x02[\n\x00\x07=\xfe", 11);
    const std::pair<std::string, const char*> cases[] = {
        {"the window is large\n", "is no settings file"},
        {strBinary, "is no settings file"},
        {"[view]\ngrid=often\nambient=nan\n[window]\nstate=3\n[document]\nautosave_seconds=77\n"
         "[other]\nkey=1\n",
         "wrong values of view/grid, view/ambient, window/state"},
    };
    int iCase = 0;
    for (const auto& [strBytes, pszFault] : cases)
    {
        SCOPED_TRACE(++iCase);
        WriteBytes(strFile, strBytes);
        ASSERT_NO_FATAL_FAILURE(Start(false));
        const QString strLine = QString::fromStdString(strFile) + ": ";
        const QString strMessages = m_Window->GetMessages().GetText();
        EXPECT_EQ(strMessages.count(strLine), 1);
        EXPECT_TRUE(strMessages.contains(strLine + pszFault)) << strMessages.toStdString();
        EXPECT_EQ(ReadBytes(strFile + (iCase > 1 ? ".bak" + std::to_string(iCase) : ".bak")),
                  strBytes);
        EXPECT_FALSE(m_Window->GetSettings().render.bGrid);
        EXPECT_EQ(m_Window->GetSettings().iAutosaveSeconds, iCase == 3 ? 77 : 180);
        m_Window->close();
        Stop();
        ASSERT_NO_FATAL_FAILURE(Start(false));
        EXPECT_FALSE(m_Window->GetMessages().GetText().contains("editor.ini"));
        EXPECT_EQ(ReadBytes(strFile).find("the window"), std::string::npos);
        EXPECT_TRUE(ReadBytes(strFile).find("\nbuilds_up=\n") != std::string::npos);
        Stop();
    }
    EXPECT_TRUE(ReadBytes(strFile).find("[other]\nkey=1\n") != std::string::npos);
    // As an empty list was written before.
    WriteBytes(strFile, "[input]\nbuilds_up=@Invalid()\n");
    ASSERT_NO_FATAL_FAILURE(Start(false));
    EXPECT_TRUE(m_Window->GetSettings().input.builds.empty());
    EXPECT_FALSE(m_Window->GetMessages().GetText().contains("editor.ini"));
}
