// Levels as files: what the menus, keys and dialogs of the window do to them.

#include "editor/app/CImportDialog.h"
#include "editor/app/CNewLevelDialog.h"
#include "editor/app/CSettingsDialog.h"
#include "engine/terrain/CTerrain.h"
#include "host/FileSystem.h"
#include "tests/editor/app/EditorFixture.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDockWidget>
#include <QDoubleSpinBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QSpinBox>
#include <QTimer>
#include <QToolBar>
#include <QTreeWidget>
#include <QUrl>

#include <map>
#include <regex>

namespace
{

class CDocuments : public CEditorFixture
{
protected:
    // Works the file dialog that the work opens as a hand does: a name and Return.
    void ChooseFile(const std::function<void()>& work, const std::string& strPath)
    {
        Answer<QFileDialog>(work,
                            [&](QFileDialog& dialog)
                            {
                                auto* pName = dialog.findChild<QLineEdit*>("fileNameEdit");
                                pName->setText(QString::fromStdString(strPath));
                                pName->setFocus();
                                Key("Return");
                            });
    }

    // The same; the question that follows is answered with that button. Returns its text.
    std::string ChooseFileAnd(const std::function<void()>& work,
                              const std::string& strPath,
                              const char* pszButton)
    {
        std::string strText;
        QTimer timer;
        timer.callOnTimeout(
            [&]
            {
                auto* pBox = dynamic_cast<QMessageBox*>(QApplication::activeModalWidget());
                if (pBox != nullptr && strText.empty())
                {
                    strText = pBox->text().toStdString();
                    Press(*pBox, pszButton);
                }
            });
        timer.start(20);
        ChooseFile(work, strPath);
        return strText;
    }

    static void Press(QMessageBox& box, const char* pszButton)
    {
        for (QAbstractButton* pButton : box.buttons())
        {
            if (pButton->text().remove('&') == pszButton)
            {
                pButton->click();
                return;
            }
        }
        ADD_FAILURE() << "no such button: " << pszButton;
        box.reject();
    }

    // What the dialog of a plug-in that saves returns. strStart: the folder it starts in.
    std::string Browse(const std::string& strPath, std::string& strStart)
    {
        std::string strResult;
        Answer<QFileDialog>(
            [&] { strResult = GetHost().BrowseForFile(0, "stl", nullptr, "data", nullptr); },
            [&](QFileDialog& dialog)
            {
                strStart = dialog.directory().absolutePath().toStdString();
                dialog.findChild<QLineEdit*>("fileNameEdit")
                    ->setText(QString::fromStdString(strPath));
                dialog.findChild<QLineEdit*>("fileNameEdit")->setFocus();
                Key("Return");
            });
        return strResult;
    }

    // Asks the window to close; answers with that button. True when it closed.
    bool CloseAnd(QMessageBox::StandardButton eButton)
    {
        Answer<QMessageBox>([this] { m_Window->close(); },
                            [&](QMessageBox& box)
                            {
                                EXPECT_TRUE(box.text().startsWith("Save the changes of"));
                                SavePicture("unsaved-changes");
                                Click(*box.button(eButton));
                            });
        return !m_Window->isVisible();
    }

    void Sculpt()
    {
        ASSERT_NO_FATAL_FAILURE(TakeBrush());
        Drag(GetView(), {0.4, 0.5}, {0.6, 0.5}, 4);
        ASSERT_TRUE(m_Editor->GetDocument().IsModified());
    }

    std::string SaveLevel()
    {
        const std::string strPath = m_Folder.Path("levels/valley.level");
        std::filesystem::create_directories(m_Folder.Path("levels"));
        ChooseFile([this] { Key("ctrl+shift+s"); }, strPath);
        EXPECT_TRUE(std::filesystem::exists(strPath));
        return strPath;
    }

    // Opens a file and answers what comes: the import dialog with that target, questions with that
    // button, anything else with its own. Gives the texts of the boxes.
    QStringList OpenAnd(const std::string& strPath,
                        QMessageBox::StandardButton eButton,
                        EImportAs eAs = EImportAs::NewLevel)
    {
        QStringList texts;
        QTimer timer;
        timer.callOnTimeout(
            [&]
            {
                if (auto* pImport = dynamic_cast<CImportDialog*>(QApplication::activeModalWidget()))
                {
                    auto* pTarget = pImport->findChild<QComboBox*>("import-target");
                    pTarget->setCurrentIndex(pTarget->findData(static_cast<int>(eAs)));
                    pImport->accept();
                }
                if (auto* pBox = dynamic_cast<QMessageBox*>(QApplication::activeModalWidget()))
                {
                    texts << pBox->text();
                    QAbstractButton* pButton = pBox->button(eButton);
                    (pButton != nullptr ? pButton : pBox->buttons().front())->click();
                }
            });
        timer.start(20);
        m_Window->OpenFile(strPath);
        Settle();
        return texts;
    }

    void Drop(const std::string& strPath)
    {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(QString::fromStdString(strPath))});
        QDragEnterEvent enter({50, 50}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_Window.get(), &enter);
        ASSERT_TRUE(enter.isAccepted());
        QDropEvent drop({50.0, 50.0}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(m_Window.get(), &drop);
        Settle();
    }
};

} // namespace

TEST_F(CDocuments, ClosingWithUnsavedChangesAsks)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const std::string strLevel = SaveLevel();
    const std::string strHeights = m_Folder.Path("levels/valley.height");
    const std::string strFlat = ReadBytes(strHeights);
    ASSERT_NO_FATAL_FAILURE(Sculpt());
    Settle();
    EXPECT_TRUE(m_Window->isWindowModified());
    EXPECT_FALSE(CloseAnd(QMessageBox::Cancel));
    EXPECT_TRUE(ReadBytes(strHeights) == strFlat);
    const std::vector<float> sculpted = GetHeights();
    EXPECT_TRUE(CloseAnd(QMessageBox::Save));
    EXPECT_FALSE(ReadBytes(strHeights) == strFlat);
    Stop();

    ASSERT_NO_FATAL_FAILURE(Start(false));
    ASSERT_TRUE(m_Window->OpenFile(strLevel));
    EXPECT_TRUE(GetHeights() == sculpted);
    MoveTo(GetView(), {0.5, 0.5});
    SVec3 middle; // the views show the level that was opened
    EXPECT_TRUE(GetView().GetInput().PickCursor(middle));
    const std::string strSaved = ReadBytes(strHeights);
    ASSERT_NO_FATAL_FAILURE(Sculpt());
    EXPECT_TRUE(CloseAnd(QMessageBox::Discard));
    EXPECT_TRUE(ReadBytes(strHeights) == strSaved);
    Stop();

    ASSERT_NO_FATAL_FAILURE(Start(false));
    ASSERT_TRUE(m_Window->OpenFile(strLevel));
    m_Window->close(); // nothing to ask about
    EXPECT_FALSE(m_Window->isVisible());
}

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
            boxes[2]->setValue(160.0);
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
    ASSERT_NO_FATAL_FAILURE(Drop(strLevel));
    WaitFor([this] { return GetTerrain()->GetVerticesX() == 33U; }, "the dropped file is open");

    // A file that is none: one line in a window, and the level stays.
    const std::string strBroken = m_Folder.Path("levels/broken.level");
    WriteBytes(strBroken, "!height_map( s )\nheight_map( \"nothing.height\" )\n");
    m_Editor->GetRecentFiles().Add(strBroken);
    Answer<QMessageBox>([&] { EXPECT_FALSE(m_Window->OpenFile(strBroken)); },
                        [](QMessageBox& box)
                        {
                            EXPECT_TRUE(box.informativeText().contains("nothing.height"))
                                << box.informativeText().toStdString();
                            box.accept();
                        });
    EXPECT_EQ(GetTerrain()->GetVerticesX(), 33U);
    EXPECT_EQ(m_Editor->GetRecentFiles().GetPaths(), std::vector<std::string>{strLevel});
}

TEST_F(CDocuments, ASaveAsksBeforeItReplacesWhatNobodyAgreedTo)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const std::string strLevel = SaveLevel();
    const std::string strOther = m_Folder.Path("levels/other");
    WriteBytes(strOther + ".height", "mine");
    const auto saveAs = [this]
    {
        Key("ctrl+shift+s");
    };
    EXPECT_EQ(ChooseFileAnd(saveAs, strOther, "Cancel"),
              "Saving would replace\n\n" + strOther +
                  ".height\nanother file, which is there already");
    EXPECT_EQ(ReadBytes(strOther + ".height"), "mine");
    EXPECT_FALSE(std::filesystem::exists(strOther + ".level"));
    EXPECT_NE(ChooseFileAnd(saveAs, strOther, "Overwrite"), "");
    EXPECT_NE(ReadBytes(strOther + ".height"), "mine");
    EXPECT_EQ(m_Editor->GetDocument().GetPath(), strOther + ".level");

    const std::string strForeign = ReadBytes(strOther + ".level") + "// another hand\n";
    WriteBytes(strOther + ".level", strForeign);
    for (const char* pszButton : {"Cancel", "Save as...", "Overwrite"})
    {
        SCOPED_TRACE(pszButton);
        EXPECT_EQ(ReadBytes(strOther + ".level"), strForeign);
        QTimer::singleShot(0, [this] { Key("ctrl+s"); });
        QTimer timer; // the file dialog that "Save as..." leads to
        timer.callOnTimeout(
            []
            {
                auto* pDialog = dynamic_cast<QFileDialog*>(QApplication::activeModalWidget());
                if (pDialog != nullptr)
                {
                    pDialog->reject();
                }
            });
        timer.start(20);
        Answer<QMessageBox>(
            [] {},
            [&](QMessageBox& box)
            {
                EXPECT_TRUE(box.text().contains("other.level\nchanged by another program"))
                    << box.text().toStdString();
                SavePicture("changed-on-disk");
                Press(box, pszButton);
            });
    }
    EXPECT_NE(ReadBytes(strOther + ".level"), strForeign);

    std::filesystem::permissions(strOther + ".level", std::filesystem::perms::owner_read);
    Answer<QMessageBox>([this] { Key("ctrl+s"); },
                        [](QMessageBox& box)
                        {
                            EXPECT_EQ(box.text(),
                                      "The level cannot be saved. Nothing was written.");
                            EXPECT_TRUE(box.informativeText().endsWith("other.level: is read-only"))
                                << box.informativeText().toStdString();
                            box.accept();
                        });
}

TEST_F(CDocuments, SaveDialogsOfThePluginStartAtTheLevelAndWriteWhereTheyWereTold)
{
    const QByteArray home = qgetenv("HOME");
    qputenv("HOME", QByteArray::fromStdString(m_Folder.GetFolder()));
    ASSERT_NO_FATAL_FAILURE(Start());
    std::string strStart;
    const std::string strRoot = m_Folder.Path("root");
    EXPECT_EQ(Browse(strRoot + "/a.stl", strStart), "a.stl") << "below the user root";
    EXPECT_EQ(strStart, m_Folder.GetFolder()) << "nothing is saved: the user's home";
    SaveLevel();
    EXPECT_EQ(Browse(m_Folder.Path("b"), strStart), m_Folder.Path("b.stl"));
    EXPECT_EQ(strStart, m_Folder.Path("levels"));

    WriteBytes(strRoot + "/Hill.stl", "mine");
    std::string strResult;
    const auto browse = [&]
    {
        strResult = GetHost().BrowseForFile(0, "stl", nullptr, "data", nullptr);
    };
    EXPECT_EQ(ChooseFileAnd(browse, strRoot + "/hill.stl", "Yes"),
              strRoot + "/Hill.stl\nis there already. Replace it?");

    const std::string strInstalled = m_Folder.Path("installed/data/a.stl");
    WriteBytes(strInstalled, "theirs");
    fs::set_data_root(m_Folder.Path("installed").c_str());
    EXPECT_NE(ChooseFileAnd(browse, strInstalled, "Yes"), "");
    EXPECT_EQ(strResult, strInstalled) << "a relative path would be written below the user root";
    qputenv("HOME", home);
}

TEST_F(CDocuments, AnImportAsksFirstAndNeverTakesTheNameOfTheLevelBefore)
{
    const QString strQuestion = "Save the changes of valley.level?";
    ASSERT_NO_FATAL_FAILURE(Start());
    const std::string strLevel = SaveLevel();
    const std::string strHeights = ReadBytes(m_Folder.Path("levels/valley.height"));
    CLevelDocument& document = m_Editor->GetDocument();
    const std::string strPng = m_Folder.Path("hill.png");
    SExportPlan plan;
    ASSERT_TRUE(document.PlanExport(strPng.c_str(), {}, plan));
    ASSERT_TRUE(document.Export(strPng.c_str(), plan));
    ASSERT_NO_FATAL_FAILURE(Sculpt());
    const std::vector<float> sculpted = GetHeights();
    EXPECT_EQ(OpenAnd(strPng, QMessageBox::Cancel), QStringList{strQuestion});
    EXPECT_TRUE(GetHeights() == sculpted);
    EXPECT_EQ(document.GetPath(), strLevel);

    // A step of this level takes nothing away.
    EXPECT_FALSE(OpenAnd(strPng, QMessageBox::Cancel, EImportAs::ThisLevel).contains(strQuestion));
    EXPECT_FALSE(GetHeights() == sculpted);
    EXPECT_EQ(document.GetPath(), strLevel);
    Key("ctrl+z");
    EXPECT_TRUE(GetHeights() == sculpted);

    EXPECT_TRUE(OpenAnd(strPng, QMessageBox::Discard).contains(strQuestion));
    EXPECT_FALSE(GetHeights() == sculpted);
    EXPECT_TRUE(m_Window->windowTitle().startsWith("Untitled"));
    EXPECT_TRUE(m_Window->isWindowModified());
    Answer<QFileDialog>([this] { Key("ctrl+s"); }, [](QFileDialog& dialog) { dialog.reject(); });
    EXPECT_TRUE(ReadBytes(m_Folder.Path("levels/valley.height")) == strHeights);
}

TEST_F(CDocuments, ALevelWhoseHeightsAreMissingOffersTheirBackup)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const std::string strLevel = SaveLevel();
    const std::string strHeights = m_Folder.Path("levels/valley.height");
    const std::vector<float> saved = GetHeights();
    const std::string strBytes = ReadBytes(strHeights);
    std::filesystem::rename(strHeights, strHeights + ".bak");
    ASSERT_TRUE(m_Editor->GetDocument().New(64, {64.0F, 10.0F, 64.0F}, 1.0F));
    QStringList texts = OpenAnd(strLevel, QMessageBox::No);
    ASSERT_EQ(texts.size(), 2);
    EXPECT_TRUE(texts[0].contains("valley.height.bak")) << texts[0].toStdString();
    EXPECT_EQ(texts[1], "The level cannot be opened.");
    EXPECT_EQ(GetTerrain()->GetVerticesX(), 65U);
    EXPECT_FALSE(std::filesystem::exists(strHeights));

    EXPECT_EQ(OpenAnd(strLevel, QMessageBox::Yes).size(), 1);
    EXPECT_TRUE(GetHeights() == saved);
    EXPECT_TRUE(ReadBytes(strHeights) == strBytes);
    EXPECT_TRUE(ReadBytes(strHeights + ".bak") == strBytes);
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
    ASSERT_EQ(m_Window->PlayScript(strScript, strFault), EScriptEnd::Played) << strFault;
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
                                ASSERT_EQ(boxes.size(), 3); // the editor's, then the plug-in's
                                EXPECT_EQ(boxes[0]->value(), 180);
                                boxes[0]->setValue(240);
                                EXPECT_EQ(boxes[1]->value(), 1024);
                                boxes[1]->setValue(1);
                                boxes[2]->setValue(77);
                                dialog.findChildren<QCheckBox*>().front()->setChecked(false);
                                SavePicture("settings");
                                Key("Return");
                            });
    m_Window->close();
    Stop();
    ASSERT_NO_FATAL_FAILURE(Start());
    EXPECT_EQ(m_Window->GetSettings().iAutosaveSeconds, 240);
    EXPECT_FALSE(m_Window->GetSettings().input.bSampleStrokes);
    EXPECT_EQ(GetHost().GetUndoStack().GetLimit(), size_t{1} << 20) << "a megabyte";
    Answer<CSettingsDialog>([this] { Trigger("edit.settings"); },
                            [](CSettingsDialog& dialog)
                            {
                                EXPECT_EQ(dialog.findChildren<QSpinBox*>()[2]->value(), 77);
                                dialog.reject();
                            });
}

TEST_F(CDocuments, WhatACrashLeftIsOfferedWhenTheLevelIsOpened)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const std::string strLevel = SaveLevel();
    const std::vector<float> saved = GetHeights();
    const std::string strCopies = m_Folder.Path("levels/.tellur-autosave");
    ASSERT_NO_FATAL_FAILURE(Sculpt());
    Drag(GetView(), {0.5, 0.4}, {0.5, 0.6}, 4);
    const std::vector<float> sculpted = GetHeights();
    const auto read = [&]
    {
        std::map<std::string, std::string> files;
        std::error_code error;
        for (const auto& file : std::filesystem::directory_iterator(strCopies, error))
        {
            files[file.path().string()] = ReadBytes(file.path().string());
        }
        return files;
    };
    std::map<std::string, std::string> left = read();
    EXPECT_EQ(left.size(), 2U) << "a journal and what it belongs to";
    EXPECT_TRUE(CloseAnd(QMessageBox::Discard));
    Stop();
    // The same as a process has left it that is gone.
    std::filesystem::create_directories(strCopies);
    const std::regex owner("autosave_process\\( [0-9]+");
    for (auto& [strName, strText] : left)
    {
        strText = std::regex_replace(strText, owner, "autosave_process( 0");
        WriteBytes(strName, strText);
    }
    ASSERT_NO_FATAL_FAILURE(Start(false));
    const auto open = [&](const char* pszAnswer)
    {
        const std::string strText = ChooseFileAnd([this] { Key("ctrl+o"); }, strLevel, pszAnswer);
        EXPECT_NE(strText.find("It kept 2 steps of\n" + strLevel), std::string::npos) << strText;
    };
    open("Later");
    EXPECT_TRUE(GetHeights() == saved);
    EXPECT_FALSE(m_Window->isWindowModified());
    EXPECT_TRUE(read() == left) << "nothing is lost";
    open("Recover");
    EXPECT_TRUE(GetHeights() == sculpted);
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 2U);
    Key("ctrl+s");
    EXPECT_FALSE(std::filesystem::exists(strCopies));
}
