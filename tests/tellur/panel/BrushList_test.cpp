// The defined brushes: adding, selecting, and saving them so that they are never lost.

#include "tellur/brushes/BrushFileCopy.h"
#include "tellur/brushes/CBrushContainer.h"
#include "tellur/panel/SaveBrushes.h"
#include "tests/support/DieAfter.h"
#include "tests/tellur/panel/PanelFixture.h"

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QListWidget>

#include <csignal>

namespace
{

constexpr const char* FILE_NAME = "PredefinedBrushes.ini";

class CBrushList : public CPanelFixture
{
protected:
    QListWidget* List() { return Find<QListWidget>(PANEL_BRUSH_LIST); }

    void AddBrush(const char* pszName)
    {
        m_Face.promptAnswer = pszName;
        Click(PANEL_ADD_BRUSH);
    }

    void Select(int iRow, Qt::KeyboardModifier modifier = Qt::NoModifier)
    {
        QTest::mouseClick(List()->viewport(),
                          Qt::LeftButton,
                          modifier,
                          List()->visualItemRect(List()->item(iRow)).center());
    }

    std::string Saved(const char* pszName = FILE_NAME)
    {
        return std::filesystem::exists(m_Folder.Path(pszName)) ? ReadBytes(m_Folder.Path(pszName))
                                                               : "none";
    }
};

} // namespace

TEST_F(CBrushList, BrushesAreAddedAndTakenFromTheListAsCopies)
{
    ASSERT_NO_FATAL_FAILURE(OpenView());
    Take(PANEL_SET_HEIGHT);
    Click(PANEL_ADD_BRUSH);
    EXPECT_EQ(TakeCalls(), Lines{"Host.PromptText(Set brush name, Name :, )"});
    EXPECT_EQ(List()->count(), 0) << "cancelled";
    Type(PANEL_EXTENT_EDIT, "40");
    AddBrush("Wide");
    Type(PANEL_EXTENT_EDIT, "15");
    AddBrush("");
    ASSERT_EQ(List()->count(), 2);
    EXPECT_EQ(List()->item(0)->text(), "Wide");
    EXPECT_EQ(List()->item(1)->text(), "Wide000") << "a fresh name after the brush's own";

    Take(PANEL_BLUR);
    Click(PANEL_BLUR); // no brush, no mode
    EXPECT_EQ(Brush(), nullptr);
    Select(0);
    ASSERT_NE(Brush(), nullptr);
    EXPECT_TRUE(IsTerraforming());
    EXPECT_EQ(Brush()->GetExtent(), 40.0F);
    EXPECT_EQ(Text(PANEL_EXTENT_EDIT), "40");
    EXPECT_EQ(Brush(), m_Plugin->GetBrushContainer()->FindBrush("SetHeightFunction"));
    EXPECT_NE(Brush(), m_Plugin->GetBrushContainer()->GetPredefined()[0].get());
    Type(PANEL_EXTENT_EDIT, "99");
    QTest::keyClick(List(), Qt::Key_Down);
    EXPECT_EQ(Brush()->GetExtent(), 15.0F);
    Select(0);
    EXPECT_EQ(Brush()->GetExtent(), 40.0F) << "the defined one is as it was";
    EXPECT_EQ(m_Log.GetText(), "");

    Select(0, Qt::ControlModifier); // nothing is selected any more
    EXPECT_EQ(Brush(), nullptr);
    EXPECT_FALSE(IsTerraforming());
}

TEST_F(CBrushList, SavingPutsTheBrushesBesideACopyThatGoes)
{
    ASSERT_NO_FATAL_FAILURE(OpenView());
    Take(PANEL_SET_HEIGHT);
    AddBrush("One");
    Click(PANEL_SAVE_BRUSHES);
    const std::string strOne = Saved();
    EXPECT_NE(strOne.find("\"One\""), std::string::npos);
    WriteBytes(m_Folder.Path("PredefinedBrushes__Copy.ini"), "left over");
    AddBrush("Two");
    Click(PANEL_SAVE_BRUSHES);
    EXPECT_NE(Saved().find("\"Two\""), std::string::npos);
    EXPECT_EQ(Saved("PredefinedBrushes__Copy.ini"), "none");
    EXPECT_EQ(m_FrontEnd.calls, Calls{});
    EXPECT_EQ(GetBrushFileCopy(".\\PredefinedBrushes.ini"), ".\\PredefinedBrushes__Copy.ini");
    EXPECT_EQ(GetBrushFileCopy("a.b/name"), "a.b/name__Copy");
}

TEST_F(CBrushList, WhatCannotBeSavedLeavesTheOldBrushesAndSaysSo)
{
    const Calls told = {"FrontEnd.MessageBox(Failed to save brushes, 0x30)"};
    ASSERT_NO_FATAL_FAILURE(OpenView());
    Take(PANEL_SET_HEIGHT);
    AddBrush("One");
    Click(PANEL_SAVE_BRUSHES);
    const std::string strOne = Saved();
    AddBrush("Two");

    rlimit before = {};
    ::getrlimit(RLIMIT_FSIZE, &before);
    rlimit full = before;
    full.rlim_cur = 100;
    ::signal(SIGXFSZ, SIG_IGN);
    ::setrlimit(RLIMIT_FSIZE, &full);
    Click(PANEL_SAVE_BRUSHES);
    ::setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_EQ(std::exchange(m_FrontEnd.calls, {}), told) << "the disk is full";
    EXPECT_EQ(Saved(), strOne);
    EXPECT_EQ(m_Log.TakeLines().size(), 1U);

    // No folder is shut for the super-user, who steps down for the click.
    constexpr uid_t NOBODY = 65534;
    const bool bRoot = ::geteuid() == 0;
    ASSERT_EQ(::chmod(m_Folder.GetFolder().c_str(), 0555), 0);
    ASSERT_TRUE(!bRoot || ::seteuid(NOBODY) == 0);
    Click(PANEL_SAVE_BRUSHES);
    ASSERT_TRUE(!bRoot || ::seteuid(0) == 0);
    ASSERT_EQ(::chmod(m_Folder.GetFolder().c_str(), 0755), 0);
    EXPECT_EQ(std::exchange(m_FrontEnd.calls, {}), told) << "the folder is read-only";
    EXPECT_EQ(Saved(), strOne);
    EXPECT_EQ(Saved("PredefinedBrushes__Copy.ini"), "none");
    Click(PANEL_SAVE_BRUSHES);
    EXPECT_NE(Saved().find("\"Two\""), std::string::npos) << "and then it works again";
}

TEST_F(CBrushList, AProcessKilledWhileSavingLeavesTheOldOrTheNewBrushes)
{
    CBrushContainer brushes;
    brushes.AddBrush(m_Plugin->GetBrushContainer()->FindBrush("SetHeightFunction"), false);
    ASSERT_TRUE(SaveBrushesWithCopy(brushes, FILE_NAME));
    int nCopies = 0;
    for (int iRound = 0; iRound < 150; ++iRound)
    {
        const pid_t child = ::fork();
        if (child == 0)
        {
            DieAfter(1500 + iRound * 37);
            while (true)
            {
                SaveBrushesWithCopy(brushes, FILE_NAME);
            }
        }
        ::waitpid(child, nullptr, 0);
        nCopies += std::filesystem::exists(m_Folder.Path(FILE_NAME)) ? 0 : 1;
        RecoverBrushFile(FILE_NAME);
        CBrushContainer found;
        ASSERT_TRUE(found.LoadPredefinedBrushes(FILE_NAME)) << iRound;
        ASSERT_EQ(found.GetPredefined().size(), 1U) << iRound;
    }
    RecordProperty("rounds that left the copy alone", nCopies);

    // The plug-in does the same when it starts, and saving spares a copy that is all there is.
    fs::remove("PredefinedBrushes__Copy.ini"); // the last one may have left both
    ASSERT_EQ(fs::rename(FILE_NAME, "PredefinedBrushes__Copy.ini"), 0);
    m_Host.DestroyPluginObjects();
    Initialize();
    EXPECT_EQ(m_Plugin->GetBrushContainer()->GetPredefined().size(), 1U);
    EXPECT_NE(Saved(), "none");
}

TEST_F(CBrushList, BrushesOfAScriptComeIntoTheList)
{
    ASSERT_NO_FATAL_FAILURE(OpenView());
    WriteBytes(m_Folder.Path("more.ini"),
               "!brush()\n!brush_name( s )\n!function( s )\n"
               "brush() { brush_name( \"Hill\" ) function( \"RelativeHeightFunction\" ) }\n");
    const auto play = [&](const char* pszScript)
    {
        WriteBytes(m_Folder.Path("script.txt"), pszScript);
        const std::unique_ptr<CTCPARSE_KEYWORD> pTree(TCParseFile("script.txt"));
        std::string strWhy;
        ASSERT_EQ(m_Plugin->Play(pTree.get(), strWhy), EScriptResult::Done) << strWhy;
    };
    play("!brush_file( s )\nbrush_file( \"more.ini\" )\n");
    ASSERT_EQ(List()->count(), 1);
    EXPECT_EQ(List()->item(0)->text(), "Hill");

    // A list that is filled anew has nothing selected, and the brush at hand stays.
    play("!brush_file( s )\nbrush_file( \"more.ini\" )\n");
    Select(0);
    const CTellurBrush* pBrush = Brush();
    play("!move_brush( i, i )\nmove_brush( 0, 1 )\n");
    EXPECT_EQ(List()->selectedItems().size(), 0);
    play("!remove_brush( i )\nremove_brush( 0 )\n");
    play("!remove_brush( i )\nremove_brush( 0 )\n");
    EXPECT_EQ(List()->count(), 0);
    EXPECT_EQ(Brush(), pBrush);
}
