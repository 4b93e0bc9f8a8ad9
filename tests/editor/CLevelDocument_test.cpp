// Levels as documents: what is in their files, what counts as a change, and that nothing is lost
// whatever stops the program.

#include "editor/autosave/CAutosave.h"
#include "editor/core/LevelExchange.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CEngineHost.h"
#include "tests/editor/CLevelDocumentTest.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/DieAfter.h"

#include <sys/resource.h>
#include <sys/wait.h>

#include <algorithm>
#include <csignal>
#include <ctime>
#include <thread>

namespace
{

using CNothingLost = CLevelDocumentTest;

} // namespace

TEST_F(CLevelDocumentTest, SavesAndOpensAllThatALevelIs)
{
    const std::string strLevel = m_Folder.Path("a/first \"level\".level");
    std::filesystem::create_directories(m_Folder.Path("a"));
    EXPECT_EQ(m_Document.GetTitle(), "Untitled");
    EXPECT_FALSE(m_Document.SaveAs(strLevel.c_str())) << "there is no level";
    ASSERT_TRUE(m_Document.New(16, SIZE, 12.5F));
    EXPECT_FALSE(m_Document.IsModified());
    EXPECT_FLOAT_EQ(GetHeight(), 12.5F);
    m_Document.SetBitmap("data\\types.png");
    m_Document.SetMaterial("data/materials/grey.mat");
    EXPECT_TRUE(m_Document.IsModified());
    ASSERT_TRUE(m_Document.SaveAs(m_Folder.Path("a/first \"level\"").c_str()));
    EXPECT_EQ(m_Document.GetPath(), strLevel);
    EXPECT_EQ(m_Document.GetTitle(), "first \"level\".level");
    EXPECT_FALSE(m_Document.IsModified());
    EXPECT_NE(ReadBytes(strLevel).find("height_map( \"first \\\"level\\\".height\" )"),
              std::string::npos)
        << "a folder of levels can be moved";
    EXPECT_NE(ReadBytes(strLevel).find("terrain_size( [160.0, 50.0, 160.0] )"), std::string::npos);

    std::filesystem::rename(m_Folder.Path("a"), m_Folder.Path("b"));
    ASSERT_TRUE(m_Document.New(32, SIZE));
    EXPECT_EQ(m_Document.GetPath(), "");
    EXPECT_EQ(m_Document.GetMaterial(), "");
    ASSERT_TRUE(m_Document.Open("b/first \"level\".level"));
    EXPECT_FLOAT_EQ(GetHeight(), 12.5F);
    EXPECT_EQ(GetTerrain()->GetCellsPerSide(), 16U);
    EXPECT_EQ(m_Document.GetBitmap(), "data\\types.png");
    EXPECT_EQ(m_Document.GetMaterial(), "data/materials/grey.mat");
    EXPECT_EQ(m_Document.GetHeightPath(), m_Folder.Path("b/first \"level\".height"));

    // The heights alone are a level without a file of its own.
    ASSERT_TRUE(m_Document.Open(m_Folder.Path("b/first \"level\".height").c_str()));
    EXPECT_EQ(m_Document.GetPath(), "");
    EXPECT_EQ(m_Document.GetTitle(), "first \"level\".height");
}

TEST_F(CLevelDocumentTest, KnowsWhatIsNotSaved)
{
    ASSERT_TRUE(m_Document.New(16, SIZE));
    Change(1.0F);
    EXPECT_TRUE(m_Document.IsModified());
    m_Host.Undo();
    EXPECT_FALSE(m_Document.IsModified()) << "back where it was";
    m_Host.Redo();
    ASSERT_TRUE(m_Document.SaveAs(m_Folder.Path("l.level").c_str()));
    EXPECT_FALSE(m_Document.IsModified());
    m_Host.Undo();
    EXPECT_TRUE(m_Document.IsModified()) << "another state than the saved one";
    Change(2.0F); // as many steps as were saved, but not those
    EXPECT_TRUE(m_Document.IsModified());
    ASSERT_TRUE(m_Document.Save());

    // A press drops a drag that no release came for; its heights stay, without a step.
    m_Host.GetInput().SendButtonDown(1, MOUSE_LEFT, {});
    SetAll(3.0F);
    m_Host.GetInput().SendButtonDown(1, MOUSE_LEFT, {});
    m_Host.GetInput().SendButtonUp(1, 0, {});
    EXPECT_TRUE(m_Document.IsModified());
    ASSERT_TRUE(m_Document.Save());

    // So do heights that a whole drag leaves without a step, whatever steps follow them.
    m_Host.GetInput().SendButtonDown(1, MOUSE_LEFT, {});
    SetAll(4.0F);
    EXPECT_TRUE(m_Document.IsModified());
    m_Host.GetInput().SendButtonUp(1, 0, {});
    Change(5.0F);
    m_Host.Undo();
    EXPECT_TRUE(m_Document.IsModified());
    ASSERT_TRUE(m_Document.Save());

    // Another hand has made a level: saving must not write it over ours.
    ASSERT_TRUE(m_Host.NewLevel(16, SIZE));
    EXPECT_EQ(m_Document.GetPath(), "");
    EXPECT_FALSE(m_Document.Save());
}

TEST_F(CLevelDocumentTest, BadFilesAreOneLineAndTheLevelStays)
{
    ASSERT_TRUE(m_Document.New(16, SIZE, 7.0F));
    ASSERT_TRUE(m_Document.SaveAs(m_Folder.Path("good.level").c_str()));
    Change(8.0F);

    struct SCase
    {
        const char* pszName;
        const char* pszText;
        const char* pszLine; // the last one
    };

    const SCase cases[] = {
        {"none.level", nullptr, "[CLevelDocument::Open] none.level cannot be read"},
        {"empty.level",
         "",
         "[CLevelDocument::Open] empty.level is no level: it names no height map"},
        {"other.level",
         "!a( i )\na( 1 )\n",
         "[CLevelDocument::Open] other.level is no level: it names no height map"},
        {"broken.level",
         "!height_map( s )\nheight_map( \"",
         "[CLevelDocument::Open] broken.level is no level: it names no height map"},
    };
    for (const SCase& file : cases)
    {
        SCOPED_TRACE(file.pszName);
        if (file.pszText != nullptr)
        {
            WriteBytes(m_Folder.Path(file.pszName), file.pszText);
        }
        CLogCatcher log;
        EXPECT_FALSE(m_Document.Open(file.pszName));
        const std::vector<std::string> lines = log.TakeLines();
        ASSERT_FALSE(lines.empty());
        EXPECT_EQ(lines.back(), file.pszLine);
    }
    WriteBytes(m_Folder.Path("lost.level"), "!height_map( s )\nheight_map( \"gone.height\" )\n");
    CLogCatcher log;
    EXPECT_FALSE(m_Document.Open("lost.level"));
    EXPECT_EQ(log.TakeLines().size(), 1U);
    EXPECT_FLOAT_EQ(GetHeight(), 8.0F);
    EXPECT_EQ(m_Document.GetPath(), m_Folder.Path("good.level"));
    EXPECT_TRUE(m_Document.IsModified());
    EXPECT_EQ(m_Host.GetUndoStack().GetCount(), 1U);
}

TEST_F(CLevelDocumentTest, ImportsAndExportsHeightMaps)
{
    ASSERT_TRUE(m_Document.New(32, SIZE, 25.0F));
    ASSERT_TRUE(m_Document.SaveAs(m_Folder.Path("l.level").c_str()));
    SExportPlan plan;
    ASSERT_TRUE(PlanLevelExport(m_Host, m_Folder.Path("out.png").c_str(), {}, plan));
    EXPECT_FALSE(plan.lines.empty());
    ASSERT_TRUE(ExportLevel(m_Host, m_Folder.Path("out.png").c_str(), plan));
    Change(3.0F);
    std::vector<std::string> lines;
    SImportOptions options;
    options.fMaxHeight = 50.0F;
    options.dWhite = 50.0; // as it was exported
    options.fWidth = 160.0F;
    options.fDepth = 160.0F;
    const std::string strPng = m_Folder.Path("out.png");
    ASSERT_TRUE(
        ImportLevel(m_Host, m_Document, strPng.c_str(), options, EImportAs::NewLevel, lines));
    EXPECT_NEAR(GetHeight(), 25.0F, 0.01F) << testing::PrintToString(lines);
    EXPECT_FALSE(lines.empty());
    EXPECT_TRUE(m_Document.IsModified());
    EXPECT_EQ(m_Host.GetUndoStack().GetCount(), 0U);
    EXPECT_EQ(m_Document.GetPath() + m_Document.GetHeightPath(), "") << "not the level before";
    CLogCatcher log;
    const std::string strBad = m_Folder.Path("bad.png");
    WriteBytes(strBad, "\x89PNG");
    EXPECT_FALSE(
        ImportLevel(m_Host, m_Document, strBad.c_str(), options, EImportAs::NewLevel, lines));
    EXPECT_EQ(log.TakeLines().size(), 1U);
    EXPECT_NEAR(GetHeight(), 25.0F, 0.01F);
}

TEST_F(CNothingLost, AFullDiskOrAReadOnlyFolderLeavesTheOldFiles)
{
    ASSERT_TRUE(m_Document.New(32, SIZE, 5.0F));
    ASSERT_TRUE(m_Document.SaveAs(m_Folder.Path("l.level").c_str()));
    const std::string strHeights = ReadBytes(m_Folder.Path("l.height"));
    Change(6.0F);
    rlimit before = {};
    ::getrlimit(RLIMIT_FSIZE, &before);
    rlimit tight = before;
    tight.rlim_cur = 1000;
    ::signal(SIGXFSZ, SIG_IGN);
    ::setrlimit(RLIMIT_FSIZE, &tight);
    CLogCatcher log;
    EXPECT_FALSE(m_Document.Save());
    EXPECT_EQ(log.TakeLines().size(), 1U);
    CAutosave autosave(m_Host, m_Document);
    autosave.SetInterval(std::chrono::seconds(1));
    const auto start = CAutosave::TimePoint::clock::now();
    autosave.Tick(start);
    EXPECT_TRUE(autosave.Tick(start + std::chrono::seconds(2)));
    EXPECT_FALSE(autosave.Wait());
    EXPECT_EQ(log.TakeLines().size(), 1U);
    ::setrlimit(RLIMIT_FSIZE, &before);
    EXPECT_TRUE(ReadBytes(m_Folder.Path("l.height")) == strHeights);
    EXPECT_TRUE(m_Document.IsModified());
    EXPECT_TRUE(FindRecoverable({m_Document.GetPath()}).empty());
    // Once there is room, the next copy is made.
    EXPECT_TRUE(autosave.Tick(start + std::chrono::seconds(4)));
    EXPECT_TRUE(autosave.Wait());
}

TEST_F(CNothingLost, CopiesAreMadeWhenTheyAreDueAndGoWithTheCleanEnd)
{
    using std::chrono::seconds;
    const auto start = CAutosave::TimePoint::clock::now();
    const std::string strFolder = m_Folder.Path(".tellur-autosave");
    {
        CAutosave autosave(m_Host, m_Document);
        autosave.SetInterval(seconds(60));
        EXPECT_FALSE(autosave.Tick(start));
        ASSERT_TRUE(m_Document.New(32, SIZE));
        ASSERT_TRUE(m_Document.SaveAs(m_Folder.Path("l.level").c_str()));
        EXPECT_FALSE(autosave.Tick(start + seconds(100)));
        Change(4.0F);
        EXPECT_FALSE(autosave.Tick(start + seconds(101)));
        EXPECT_FALSE(autosave.Tick(start + seconds(160)));
        m_Host.GetInput().SendButtonDown(1, MOUSE_LEFT, {});
        EXPECT_FALSE(autosave.Tick(start + seconds(162))) << "not under the hand";
        m_Host.GetInput().SendButtonUp(1, 0, {});
        EXPECT_TRUE(autosave.Tick(start + seconds(163)));
        EXPECT_TRUE(autosave.Wait());
        EXPECT_TRUE(std::filesystem::exists(strFolder));
        EXPECT_TRUE(FindRecoverable({m_Document.GetPath()}).empty())
            << "the program that made it still runs";
        EXPECT_FALSE(autosave.Tick(start + seconds(300))) << "nothing new to copy";
        ASSERT_TRUE(m_Document.Save());
        autosave.Tick(start + seconds(301));
        EXPECT_FALSE(std::filesystem::exists(strFolder));
        Change(5.0F);
        autosave.Tick(start + seconds(302));
        EXPECT_TRUE(autosave.Tick(start + seconds(400)));
        autosave.SetInterval(seconds(0));
        EXPECT_FALSE(autosave.Tick(start + seconds(900)));
    }
    EXPECT_FALSE(std::filesystem::exists(strFolder));
}

namespace
{

// Saves and copies a level again and again with ever other heights, until it is killed.
[[noreturn]] void WorkUntilKilled(CEditorHost& host, CLevelDocument& document, const char* pszLevel)
{
    CAutosave autosave(host, document);
    autosave.SetInterval(std::chrono::seconds(1));
    auto now = CAutosave::TimePoint::clock::now();
    CTerrain* pTerrain = host.GetEngine().GetCWorld().GetCTerrain();
    const size_t nCount = size_t{pTerrain->GetVerticesX()} * pTerrain->GetVerticesZ();
    for (int i = 1;; ++i)
    {
        const std::vector<float> heights(nCount, static_cast<float>(i % 49 + 1));
        pTerrain->SetHeights(heights.data(), nCount, {{}, pTerrain->GetSize()});
        host.AddUndo(new CStep);
        autosave.Tick(now);
        now += std::chrono::seconds(2);
        autosave.Tick(now);
        autosave.Wait();
        if (i % 3 == 0)
        {
            document.SaveAs(pszLevel);
        }
    }
}

} // namespace

TEST_F(CNothingLost, KilledAtAnyMomentTheLevelOpensAndTheCopyIsWhole)
{
    const std::string strLevel = m_Folder.Path("l.level");
    ASSERT_TRUE(m_Document.New(64, SIZE, 49.5F));
    ASSERT_TRUE(m_Document.SaveAs(strLevel.c_str()));
    int nRecovered = 0;
    // Goes on with longer ones where a busy machine gives the child no time.
    for (long iKill = 0; iKill < 40 || (nRecovered == 0 && iKill < 400); ++iKill)
    {
        const pid_t child = ::fork();
        if (child == 0)
        {
            DieAfter(1000 + iKill * 431); // at ever other moments of its work
            WorkUntilKilled(m_Host, m_Document, strLevel.c_str());
        }
        ::waitpid(child, nullptr, 0);
        const std::vector<SRecoverable> entries = FindRecoverable({strLevel});
        CAutosave autosave(m_Host, m_Document);
        for (const SRecoverable& entry : entries)
        {
            EXPECT_EQ(entry.text.level.strPath, strLevel);
            size_t nSteps = 0;
            std::string strFault;
            ASSERT_TRUE(autosave.Recover(entry, {}, nSteps, strFault)) << iKill;
            EXPECT_TRUE(m_Document.IsModified());
            EXPECT_EQ(m_Document.GetPath(), strLevel);
            const float* pHeights = GetTerrain()->GetHeightData();
            EXPECT_EQ(std::count(pHeights, pHeights + 65 * 65, pHeights[0]), 65 * 65);
            ++nRecovered;
        }
        ASSERT_TRUE(m_Document.Open(strLevel.c_str())) << iKill;
        const float* pHeights = GetTerrain()->GetHeightData();
        EXPECT_EQ(std::count(pHeights, pHeights + 65 * 65, pHeights[0]), 65 * 65) << iKill;
    }
    EXPECT_GT(nRecovered, 0);
}
