// What the autosave has kept when the editor is killed, while the real plug-in sculpts.

#include "editor/autosave/AutosaveFiles.h"
#include "editor/autosave/CAutosave.h"
#include "editor/core/CLevelDocument.h"
#include "editor/script/CScriptPlayer.h"
#include "engine/terrain/CTerrain.h"
#include "host/Image.h"
#include "tests/editor/script/WalkFixture.h"
#include "tests/support/CLogCatcher.h"

#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <csignal>
#include <ctime>
#include <fstream>
#include <functional>

namespace
{

constexpr int STEPS = 200;

class CAutosaveTest : public CWalkFixture
{
protected:
    CAutosaveTest()
        : m_Level(m_Folder.Path("l.level"))
    {
    }

    ~CAutosaveTest() override { End(); }

    void End() // as the editor ends
    {
        if (m_Autosave != nullptr)
        {
            m_Autosave->SetPluginScript(nullptr);
            m_Autosave.reset();
        }
    }

    // A level with a file, opened, and nothing to undo.
    void Start()
    {
        ASSERT_NO_FATAL_FAILURE(CWalkFixture::Start());
        m_Host.EndDrag();
        ASSERT_TRUE(m_Document.SaveAs(m_Level.c_str()));
        Open();
    }

    void Open()
    {
        End();
        m_Autosave = std::make_unique<CAutosave>(m_Host, m_Document);
        m_Autosave->SetPluginScript(m_Script);
        m_Now = CAutosave::TimePoint::clock::now();
        ASSERT_TRUE(m_Document.Open(m_Level.c_str()));
        m_Autosave->Tick(m_Now);
    }

    uint32_t GetSum()
    {
        const CTerrain* pTerrain = m_Host.GetEngine().GetCWorld().GetCTerrain();
        const size_t nCount = size_t{pTerrain->GetVerticesX()} * pTerrain->GetVerticesZ();
        return static_cast<uint32_t>(
            crc32_z(0,
                    reinterpret_cast<const unsigned char*>(pTerrain->GetHeightData()),
                    nCount * sizeof(float)));
    }

    void Stroke()
    {
        Drag();
        m_Host.EndDrag();
    }

    // One step of a user, then a turn of the event loop; a copy is due every 20 seconds.
    void Step()
    {
        switch (m_Numbers.Int(0, 9))
        {
        case 0:
            m_Host.Undo(); // may be one from before the last copy
            break;
        case 1:
            m_Host.Redo();
            break;
        case 2:
            m_Host.SendAction(1, m_Numbers.Int(1, 2), 2);
            break;
        case 3:
            TakeBrush(m_Numbers.Int(0, 5), m_Numbers.Float(0.05F, 0.4F));
            break;
        default:
            Stroke();
        }
        m_Now += std::chrono::seconds(1);
        m_Autosave->Tick(m_Now);
    }

    void BeginWalk(uint32_t uSeed)
    {
        Open();
        TakeBrush(0, 0.1F);
        m_Numbers = CNumbers(uSeed);
    }

    // In a child process: works until it is killed, and says how many steps it has done.
    pid_t Work(uint32_t uSeed, volatile int* pnDone)
    {
        End(); // its thread would not be in the child
        const pid_t child = ::fork();
        if (child == 0)
        {
            BeginWalk(uSeed);
            m_Autosave->SetInterval(std::chrono::seconds(20));
            for (int i = 0; i < STEPS; ++i)
            {
                Step();
                *pnDone = i + 1;
            }
            ::pause();
            ::_exit(0);
        }
        return child;
    }

    // The heights after each step of that walk, without any autosave.
    std::vector<uint32_t> GetSums(uint32_t uSeed)
    {
        BeginWalk(uSeed);
        m_Autosave->SetInterval(std::chrono::seconds(0));
        std::vector<uint32_t> sums = {GetSum()};
        for (int i = 0; i < STEPS; ++i)
        {
            Step();
            sums.push_back(GetSum());
        }
        return sums;
    }

    bool Recover(const SRecoverable& entry, size_t& nSteps)
    {
        CScriptPlayer player(m_Host, m_Face.cursor, 1, m_Script, entry.strStem);
        const auto play = [&player](CTCPARSE_KEYWORD* pFirst, std::string& strFault)
        {
            return player.Play(pFirst, strFault);
        };
        std::string strFault;
        return m_Autosave->Recover(entry, play, nSteps, strFault) && strFault.empty();
    }

    // Killed a number of times in that walk: the heights are those after the last step that was
    // done, or after the one that was being done.
    void KillAndRecover(uint32_t uSeed, int nKills)
    {
        const std::vector<uint32_t> sums = GetSums(uSeed);
        void* pShared =
            ::mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        auto* pnDone = static_cast<volatile int*>(pShared);
        CNumbers pauses(uSeed + 77);
        for (int i = 0; i < nKills; ++i)
        {
            *pnDone = 0;
            const pid_t child = Work(uSeed, pnDone);
            const int nUntil = pauses.Int(0, STEPS - 1);
            while (*pnDone < nUntil)
            {
                ::sched_yield();
            }
            const timespec pause = {0, pauses.Int(0, 3000000)}; // into the next step
            ::nanosleep(&pause, nullptr);
            ::kill(child, SIGKILL);
            if (i % 2 == 0) // else it is a zombie while it is looked for
            {
                ::waitpid(child, nullptr, 0);
            }
            else
            {
                siginfo_t info = {};
                ::waitid(P_PID, static_cast<id_t>(child), &info, WEXITED | WNOWAIT);
            }
            CheckRecovery(sums, *pnDone);
            ::waitpid(child, nullptr, 0);
            ASSERT_FALSE(HasFailure()) << "seed " << uSeed << ", kill " << i;
        }
        ::munmap(pShared, sizeof(int));
    }

    void CheckRecovery(const std::vector<uint32_t>& sums, int nDone)
    {
        Open();
        const std::vector<SRecoverable> entries = FindRecoverable({m_Level});
        const auto nAt = static_cast<size_t>(nDone);
        const uint32_t uNext = sums[std::min(nAt + 1, sums.size() - 1)];
        if (entries.empty())
        {
            EXPECT_TRUE(sums[nAt] == GetSum() || uNext == GetSum()) << nDone << " steps are lost";
            return;
        }
        ASSERT_EQ(entries.size(), 1U);
        EXPECT_EQ(entries[0].strFault, "");
        size_t nSteps = 0;
        ASSERT_TRUE(Recover(entries[0], nSteps));
        EXPECT_EQ(nSteps, entries[0].steps.size());
        EXPECT_TRUE(sums[nAt] == GetSum() || uNext == GetSum())
            << nDone << " steps were done, " << nSteps << " are back on copy "
            << entries[0].text.uNumber << ", as after step "
            << std::find(sums.begin(), sums.end(), GetSum()) - sums.begin();
        EXPECT_TRUE(m_Document.IsModified());
        End();
        EXPECT_FALSE(std::filesystem::exists(m_Folder.Path(".tellur-autosave")));
    }

    // Does that work in a child process, which is killed then.
    void Crash(const std::function<void()>& work)
    {
        End();
        const pid_t child = ::fork();
        if (child == 0)
        {
            BeginWalk(5);
            work();
            SaveHeights("crashed.height");
            ::raise(HasFailure() ? SIGABRT : SIGKILL);
        }
        int iStatus = 0;
        ASSERT_EQ(::waitpid(child, &iStatus, 0), child);
        ASSERT_TRUE(WIFSIGNALED(iStatus) && WTERMSIG(iStatus) == SIGKILL);
    }

    void ExpectBack()
    {
        Open();
        const std::vector<SRecoverable> entries = FindRecoverable({m_Level});
        ASSERT_EQ(entries.size(), 1U);
        size_t nSteps = 0;
        ASSERT_TRUE(Recover(entries[0], nSteps));
        EXPECT_GT(nSteps, 0U);
        EXPECT_TRUE(SaveHeights("back.height") == ReadBytes(m_Folder.Path("crashed.height")));
        End();
    }

    // No file grows beyond that.
    static void LimitFiles(rlim_t nBytes)
    {
        rlimit limit = {};
        ::getrlimit(RLIMIT_FSIZE, &limit);
        limit.rlim_cur = nBytes;
        ::signal(SIGXFSZ, SIG_IGN);
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }

    void PlayScript(const std::string& strText)
    {
        WriteBytes(m_Folder.Path("script.tellur"), CScriptPlayer::GetDeclarations() + strText);
        const std::unique_ptr<CTCPARSE_KEYWORD> pFirst(TCParseFile("script.tellur"));
        CScriptPlayer player(m_Host, m_Face.cursor, 1, m_Script, m_Folder.Path("script.tellur"));
        std::string strFault;
        EXPECT_TRUE(player.Play(pFirst.get(), strFault)) << strFault;
    }

    void PaintStroke(const char* pszColor, const char* pszAt)
    {
        PlayScript("mode( \"edit_terrain_type\" )\npaint_color( [" + std::string(pszColor) +
                   "] )\npress( " + pszAt + " )\nmove( 150, 200, 0 )\nrelease( 150, 200 )\n");
        m_Autosave->Tick(m_Now);
        EXPECT_TRUE(m_Autosave->Wait());
    }

    // A stroke that changes heights for certain.
    void Raise(const char* pszAt)
    {
        TakeBrush(1, 0.3F);
        PlayScript("keys( \"\" )\npress( " + std::string(pszAt) + " )\nmove( 150, 150, 0 )\n" +
                   "release( 150, 150 )\n");
        m_Autosave->Tick(m_Now);
    }

    std::string GetTexels()
    {
        const IImage* pImage = m_Script->GetBitmap();
        return pImage == nullptr
                   ? ""
                   : std::string(reinterpret_cast<const char*>(pImage->GetRawData()),
                                 size_t{4} * pImage->GetWidth() * pImage->GetHeight());
    }

    // Names in the folder of the level's autosaves that end so.
    std::vector<std::string> FindFiles(const char* pszEnd)
    {
        std::vector<std::string> files;
        std::error_code error;
        for (const auto& file :
             std::filesystem::directory_iterator(m_Folder.Path(".tellur-autosave"), error))
        {
            if (file.path().string().ends_with(pszEnd))
            {
                files.push_back(file.path().string());
            }
        }
        std::sort(files.begin(), files.end());
        return files;
    }

    std::string m_Level;
    CLevelDocument m_Document{m_Host};
    std::unique_ptr<CAutosave> m_Autosave;
    CAutosave::TimePoint m_Now;
};

} // namespace

TEST_F(CAutosaveTest, AKillCostsTheStepUnderTheHandAndNoMore)
{
    const char* pszKills = std::getenv("TELLUR_KILLS");
    const int nKills = pszKills != nullptr ? std::atoi(pszKills) : 10;
    ASSERT_NO_FATAL_FAILURE(Start());
    for (uint32_t uSeed = 1; uSeed <= 3; ++uSeed)
    {
        ASSERT_NO_FATAL_FAILURE(KillAndRecover(uSeed, nKills));
    }
}

TEST_F(CAutosaveTest, WhatIsKeptLiesUnderAnyNameAndFollowsNoLink)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const std::string strVictim = m_Folder.Path("victim");
    const std::string strFolder = m_Folder.Path(".tellur-autosave");
    const auto strokes = [this]
    {
        Stroke();
        Stroke();
    };
    WriteBytes(strVictim, "mine");
    ASSERT_NO_FATAL_FAILURE(Crash(
        [&]
        {
            std::filesystem::create_directory(strFolder);
            for (const char* pszEnd :
                 {".level", ".1.tellur", ".2.tellur", ".3.tellur", ".2.height"})
            {
                std::filesystem::create_symlink(
                    strVictim, strFolder + "/l-" + std::to_string(::getpid()) + pszEnd);
            }
            strokes();
        }));
    ASSERT_NO_FATAL_FAILURE(ExpectBack());
    EXPECT_EQ(ReadBytes(strVictim), "mine");

    std::filesystem::remove_all(strFolder);
    std::filesystem::create_directory(m_Folder.Path("elsewhere"));
    std::filesystem::create_directory_symlink(m_Folder.Path("elsewhere"), strFolder);
    ASSERT_NO_FATAL_FAILURE(Crash(strokes));
    EXPECT_TRUE(std::filesystem::is_empty(m_Folder.Path("elsewhere")));
    ASSERT_NO_FATAL_FAILURE(ExpectBack());

    std::filesystem::remove(strFolder);
    std::string strName;
    for (int i = 0; i < 123; ++i)
    {
        strName += "\xC3\xA4"; // 246 bytes
    }
    m_Level = m_Folder.Path((strName + ".level").c_str());
    ASSERT_TRUE(m_Document.SaveAs(m_Level.c_str()));
    ASSERT_NO_FATAL_FAILURE(Crash(strokes));
    EXPECT_EQ(FindFiles(".tellur").size(), 1U);
    ASSERT_NO_FATAL_FAILURE(ExpectBack());
}

TEST_F(CAutosaveTest, ACrashAfterACrashLosesNothingAndAChangedFileIsNoBase)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(Crash(
        [this]
        {
            Stroke();
            Stroke();
        }));
    ASSERT_NO_FATAL_FAILURE(Crash(
        [this]
        {
            size_t nSteps = 0;
            Recover(FindRecoverable({m_Level}).at(0), nSteps);
            Stroke();
            m_Host.Undo();
            m_Host.Undo(); // a step of the run before
            Stroke();
        }));
    ExpectBack();

    // Heights that come otherwise than by steps.
    ASSERT_NO_FATAL_FAILURE(Crash(
        [this]
        {
            Stroke();
            ASSERT_TRUE(m_Document.Save());
            m_Autosave->Tick(m_Now);
            m_Host.Undo(); // to before the file
            CTerrain* pTerrain = m_Host.GetEngine().GetCWorld().GetCTerrain();
            const float row[] = {1.5F, 2.5F, 3.5F};
            pTerrain->SetRowHeights(7, 9, row, 3); // by nobody's event
            m_Autosave->Tick(m_Now);
        }));
    ExpectBack();

    ASSERT_NO_FATAL_FAILURE(Crash(
        [this]
        {
            ASSERT_TRUE(m_Document.New(48, {WIDTH, 200.0F, WIDTH}, 20.0F));
            Raise("100, 100");
            EXPECT_TRUE(m_Autosave->Tick(m_Now + std::chrono::hours(1)) && m_Autosave->Wait());
            Raise("200, 100");
        }));
    ExpectBack();
    EXPECT_EQ(m_Document.GetTitle(), "Untitled") << "it was never saved";

    ASSERT_NO_FATAL_FAILURE(Crash([this] { Stroke(); }));
    Open();
    TakeBrush(1, 0.3F);
    m_Face.cursor.PointAtPosition(100.0F, 100.0F);
    m_Host.SendButtonDown(1, MOUSE_LEFT, {});
    m_Host.SendMouseMove(1, MOUSE_LEFT, {}, {0, 1}, {0, 1});
    m_Host.EndDrag();
    ASSERT_TRUE(m_Document.Save());
    const uint32_t uSum = GetSum();
    const std::vector<SRecoverable> entries = FindRecoverable({m_Level});
    ASSERT_EQ(entries.size(), 1U);
    EXPECT_EQ(entries[0].strFault,
              m_Folder.Path("l.height") + " is not what it was when they were made");
    CLogCatcher log;
    size_t nSteps = 0;
    EXPECT_FALSE(Recover(entries[0], nSteps));
    EXPECT_EQ(log.TakeLines().size(), 1U);
    EXPECT_EQ(GetSum(), uSum);
}

TEST_F(CAutosaveTest, PaintingComesBackTexelByTexel)
{
    const std::function<void()> nothing = [] {
    };
    const auto copy = [this]
    {
        EXPECT_TRUE(m_Autosave->Tick(m_Now + std::chrono::hours(1)) && m_Autosave->Wait());
    };

    struct SCase
    {
        const char* pszName;
        EImageFormat eFormat;
        std::function<void()> between; // two strokes
        std::function<void()> after;
    };

    const SCase cases[] = {
        {"steps alone", EImageFormat::Rgba32, nothing, nothing},
        {"a palette", EImageFormat::Indexed8, nothing, nothing},
        {"a copy and a step", EImageFormat::Rgba32, copy, nothing},
        {"a copy with a palette", EImageFormat::Indexed8, copy, nothing},
        {"a copy alone", EImageFormat::Rgb24, nothing, copy},
        {"heights, saved",
         EImageFormat::Rgba32,
         [this]
         {
             Raise("100, 100");
             EXPECT_TRUE(m_Document.Save());
         },
         [this]
         {
             Raise("200, 100");
         }},
        {"taken back", EImageFormat::Rgba32, [this] { PlayScript("paint_undo()\n"); }, nothing},
        {"a key, twice",
         EImageFormat::Rgba32,
         [this] { m_Host.StepPaint(false); },
         [this]
         {
             m_Host.StepPaint(false);
             m_Host.StepPaint(false); // nothing is left
             m_Host.StepPaint(true);
         }},
    };
    ASSERT_NO_FATAL_FAILURE(Start());
    std::vector<uint8_t> texels(size_t{32} * 32 * 4);
    for (uint8_t& uTexel : texels)
    {
        uTexel = static_cast<uint8_t>(m_Numbers.Int(0, 255));
    }
    for (const SCase& painted : cases)
    {
        SCOPED_TRACE(painted.pszName);
        const std::string strName = std::string(painted.pszName) + ".png";
        const std::unique_ptr<IImage> pImage(
            IL_CreateImageFromBufferFormat(32, 32, painted.eFormat, texels.data()));
        ASSERT_TRUE(IL_SaveImage(m_Folder.Path(strName.c_str()).c_str(), pImage.get(), nullptr));
        const std::string strFile = ReadBytes(m_Folder.Path(strName.c_str()));
        ASSERT_NO_FATAL_FAILURE(Crash(
            [&]
            {
                PlayScript("paint_bitmap( \"" + strName + "\" )\npaint_brush( \"data/brushes/" +
                           "cone.png\", 40 )\n");
                PaintStroke("1, 0.5, 0.25, 1", "100, 100");
                painted.between();
                PaintStroke("0, 1, 0.5, 0.5", "200, 200");
                painted.after();
                WriteBytes(m_Folder.Path("crashed.texels"), GetTexels());
            }));
        Open();
        const std::vector<SRecoverable> entries = FindRecoverable({m_Level});
        ASSERT_EQ(entries.size(), 1U);
        size_t nSteps = 0;
        ASSERT_TRUE(Recover(entries[0], nSteps));
        EXPECT_TRUE(SaveHeights("back.height") == ReadBytes(m_Folder.Path("crashed.height")));
        EXPECT_TRUE(GetTexels() == ReadBytes(m_Folder.Path("crashed.texels")));
        EXPECT_EQ(m_Script->GetUnsavedBitmap(), m_Folder.Path(strName.c_str()));
        EXPECT_TRUE(ReadBytes(m_Folder.Path(strName.c_str())) == strFile) << "not saved by itself";
        ASSERT_TRUE(m_Script->SaveBitmap(m_Folder.Path(strName.c_str()).c_str()));
        PlayScript("mode( \"none\" )\n");
        m_Autosave->Remove();
        End();
    }
}

TEST_F(CAutosaveTest, AFullDiskLosesNoStepOnceThereIsRoom)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(Crash(
        [&]
        {
            CLogCatcher log;
            Raise("100, 100");
            const std::vector<std::string> files = FindFiles("");
            EXPECT_EQ(files.size(), 2U) << "a text and a journal";
            LimitFiles(9000); // less than the heights take
            EXPECT_TRUE(m_Autosave->Tick(m_Now + std::chrono::hours(1)));
            EXPECT_FALSE(m_Autosave->Wait());
            EXPECT_EQ(log.TakeLines().size(), 1U);
            EXPECT_EQ(FindFiles(""), files) << "nothing is left of the copy";
            Raise("200, 100");
            const std::vector<std::string> journals = FindFiles(".tellur");
            EXPECT_EQ(journals.size(), 2U); // the second goes on from the first
            LimitFiles(std::filesystem::file_size(journals.back()) + 20);
            Raise("100, 200");
            Raise("200, 200");
            m_Autosave->Tick(m_Now + std::chrono::hours(3)); // no copy has room either
            Raise("150, 200");
            EXPECT_EQ(log.TakeLines().size(), 1U);
            EXPECT_EQ(FindFiles("").size(), 3U);
            LimitFiles(RLIM_INFINITY);
            Raise("150, 100");
        }));
    ExpectBack();
}

// The time that a copy takes to begin grows with the pages that it shares.
TEST_F(CAutosaveTest, ACopySharesTheHeightsInHugePagesAndNoOtherLargeArray)
{
    constexpr uint32_t CELLS = 4096;
    constexpr size_t KILOBYTES = size_t{CELLS} * CELLS * sizeof(float) / 1024;
    ASSERT_NO_FATAL_FAILURE(CWalkFixture::Start());
    ASSERT_TRUE(m_Host.NewLevel(CELLS, {WIDTH, 90.0F, WIDTH}));
    TakeBrush(0, 0.01F);
    m_Host.SendButtonDown(1, MOUSE_LEFT, {});
    m_Host.EndDrag();
    m_Host.GetEngine().GetCWorld().GetCTerrain()->GetNormals({0, 0, 1, 1});
    std::ifstream maps("/proc/self/smaps");
    int nShared = 0;
    int nKept = 0;
    size_t nSize = 0;
    for (std::string strLine; std::getline(maps, strLine);)
    {
        if (strLine.starts_with("Size:"))
        {
            nSize = std::stoul(strLine.substr(sizeof("Size:")));
        }
        if (strLine.starts_with("VmFlags:") && nSize >= KILOBYTES && nSize < 2 * KILOBYTES)
        {
            const bool bKept = strLine.find(" dc") != std::string::npos;
            const bool bHuge = strLine.find(" hg") != std::string::npos;
            EXPECT_NE(bKept, bHuge) << strLine;
            nKept += bKept ? 1 : 0;
            nShared += bHuge ? 1 : 0;
        }
    }
    EXPECT_EQ(nShared, 1) << "the heights";
    EXPECT_EQ(nKept, 3) << "two of the drag, and the normals";
}
