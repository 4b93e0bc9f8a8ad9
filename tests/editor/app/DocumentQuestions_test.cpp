// What the window asks before work or a file is given up.

#include "editor/core/LevelExchange.h"
#include "engine/terrain/CTerrain.h"
#include "host/FileSystem.h"
#include "tests/editor/app/DocumentsFixture.h"

#include <QApplication>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QTimer>

#include <map>
#include <regex>

namespace
{

class CQuestions : public CDocuments
{
protected:
    // What changes nothing, or is taken back, is no step that is kept.
    void DoNothingThatStays()
    {
        Drag(GetView(), {0.002, 0.002}, {0.004, 0.004}, 2);
        GetHost().GetInput().SendAction(GetView().GetViewId(), 1, 1); // a larger brush
        Drag(GetView(), {0.3, 0.5}, {0.6, 0.5}, 4);
        Key("ctrl+z");
    }

    // "Recover" is the answer to every question from here on, as long as the timer lives.
    static void AlwaysRecover(QTimer& timer)
    {
        timer.callOnTimeout(
            []
            {
                if (auto* pBox = dynamic_cast<QMessageBox*>(QApplication::activeModalWidget()))
                {
                    Press(*pBox, "Recover");
                }
            });
        timer.start(20);
    }
};

// Its files by path.
std::map<std::string, std::string> ReadFolder(const std::string& strFolder)
{
    std::map<std::string, std::string> files;
    std::error_code error;
    for (const auto& file : std::filesystem::directory_iterator(strFolder, error))
    {
        files[file.path().string()] = ReadBytes(file.path().string());
    }
    return files;
}

} // namespace

TEST_F(CQuestions, ClosingWithUnsavedChangesAsks)
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
    ASSERT_TRUE(m_Window->GetDocuments().OpenFile(strLevel));
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
    ASSERT_TRUE(m_Window->GetDocuments().OpenFile(strLevel));
    m_Window->close(); // nothing to ask about
    EXPECT_FALSE(m_Window->isVisible());
}

TEST_F(CQuestions, ASaveAsksBeforeItReplacesWhatNobodyAgreedTo)
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

TEST_F(CQuestions, SaveDialogsOfThePluginStartAtTheLevelAndWriteWhereTheyWereTold)
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
        strResult = GetHost().BrowseForFile(FILE_DIALOG_SAVE, "stl", nullptr, "data", nullptr);
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

TEST_F(CQuestions, AnImportAsksFirstAndNeverTakesTheNameOfTheLevelBefore)
{
    const QString strQuestion = "Save the changes of valley.level?";
    ASSERT_NO_FATAL_FAILURE(Start());
    const std::string strLevel = SaveLevel();
    const std::string strHeights = ReadBytes(m_Folder.Path("levels/valley.height"));
    CLevelDocument& document = m_Editor->GetDocument();
    const std::string strPng = m_Folder.Path("hill.png");
    SExportPlan plan;
    ASSERT_TRUE(PlanLevelExport(GetHost(), strPng.c_str(), {}, plan));
    ASSERT_TRUE(ExportLevel(GetHost(), strPng.c_str(), plan));
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

TEST_F(CQuestions, ALevelWhoseHeightsAreMissingOffersTheirBackup)
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

TEST_F(CQuestions, ALevelThatWasNeverSavedComesBackWithItsBookmarks)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(Sculpt());
    SViewLook look = GetView().GetNavigator().GetLook();
    look.at.x += 77.0F;
    look.bFramed = false;
    GetView().LookFrom(look);
    GetView().setFocus();
    Trigger("bookmark.set_3");
    m_Window->LeaveChanges(); // the process is told to end
    Stop();
    ASSERT_NO_FATAL_FAILURE(Start(false));
    QTimer timer;
    AlwaysRecover(timer);
    // What this very process has kept is no one's who runs.
    const std::string strCopies = m_Folder.Path("state/tellur/autosave");
    for (const auto& [strName, strText] : ReadFolder(strCopies))
    {
        const std::regex owner("autosave_process\\( [0-9]+");
        WriteBytes(strName, std::regex_replace(strText, owner, "autosave_process( 0"));
    }
    ASSERT_TRUE(m_Window->GetDocuments().GetRecovery().OfferAll());
    const auto getPlace = [this]
    {
        return GetView().GetNavigator().GetLook().at.x;
    };
    const float fWhole = getPlace();
    Settle(); // the menu knows of it
    Trigger("bookmark.go_3");
    EXPECT_EQ(getPlace(), look.at.x);
    const std::string strViews = m_Folder.Path("state/tellur/views");
    EXPECT_FALSE(std::filesystem::is_empty(strViews));
    ASSERT_TRUE(GetHost().NewLevel(32, {320.0F, 100.0F, 320.0F}));
    Settle();
    Trigger("bookmark.go_3");
    EXPECT_EQ(getPlace(), fWhole) << "it was one of another level";
    EXPECT_TRUE(std::filesystem::is_empty(strViews));
}

TEST_F(CQuestions, WhatACrashLeftIsOfferedWhenTheLevelIsOpened)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const std::string strLevel = SaveLevel();
    const std::vector<float> saved = GetHeights();
    const std::string strCopies = m_Folder.Path("levels/.tellur-autosave");
    ASSERT_NO_FATAL_FAILURE(Sculpt());
    Drag(GetView(), {0.5, 0.4}, {0.5, 0.6}, 4);
    const std::vector<float> sculpted = GetHeights();
    DoNothingThatStays();
    ASSERT_TRUE(GetHeights() == sculpted);
    const auto read = [&]
    {
        return ReadFolder(strCopies);
    };
    std::map<std::string, std::string> left = read();
    EXPECT_EQ(left.size(), 3U) << "a journal and what it belongs to";
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
    EXPECT_EQ(m_Window->findChild<QLabel*>("status-words")->text(),
              "2 of 2 steps were given back.");
    EXPECT_TRUE(GetHeights() == sculpted);
    EXPECT_EQ(GetHost().GetUndoStack().GetCount(), 2U);
    // What another run has left waits: it would take the place of this.
    const std::regex stem("valley-");
    for (auto& [strName, strText] : left)
    {
        const bool bText = strName.ends_with(".level");
        WriteBytes(std::regex_replace(strName, stem, "wood-"),
                   bText ? std::regex_replace(strText, stem, "wood-") : strText);
    }
    const std::map<std::string, std::string> kept = read();
    ASSERT_GT(kept.size(), left.size());
    QTimer timer;
    AlwaysRecover(timer);
    EXPECT_FALSE(m_Window->GetDocuments().GetRecovery().OfferAll());
    EXPECT_TRUE(read() == kept);
    Key("ctrl+s");
    EXPECT_FALSE(m_Window->isWindowModified());
    EXPECT_EQ(read().size(), left.size()) << "the other's alone";
    EXPECT_TRUE(m_Window->GetDocuments().GetRecovery().OfferAll());
    EXPECT_TRUE(GetHeights() == sculpted) << "on the heights of before the save";
}
