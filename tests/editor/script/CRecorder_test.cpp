// What is recorded while the real plug-in sculpts gives the same file when it is replayed.

#include "editor/script/CRecorder.h"
#include "tests/editor/script/WalkFixture.h"
#include "tests/support/CLogCatcher.h"
#include "tests/support/TestPaths.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace
{

class CRecorderTest : public CWalkFixture
{
protected:
    ~CRecorderTest() override { m_Recorder.reset(); }

    void Start()
    {
        ASSERT_NO_FATAL_FAILURE(CWalkFixture::Start());
        m_Recorder = std::make_unique<CRecorder>(m_Host, m_Loader.GetPlugin());
    }

    void ExpectReplay(const std::string& strScript, const std::string& strHeights)
    {
        const std::string strOut = m_Folder.Path("replayed.height");
        const std::string strCommand = std::string(TELLUR_BIN_DIR "/tellur-replay ") + strScript +
                                       " --root " TELLUR_SOURCE_DIR " --log " +
                                       m_Folder.Path("log.txt") + " --out " + strOut;
        ASSERT_EQ(std::system(strCommand.c_str()), 0);
        EXPECT_TRUE(ReadBytes(strOut) == strHeights) << ReadBytes(strScript);
    }

    std::unique_ptr<CRecorder> m_Recorder;
};

} // namespace

TEST_F(CRecorderTest, ARecordingReplaysToTheSameFileBitForBit)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    int nChanged = 0;
    for (uint32_t uSeed = 1; uSeed <= 12; ++uSeed)
    {
        SCOPED_TRACE(uSeed);
        m_Numbers = CNumbers(uSeed);
        const std::string strScript = m_Folder.Path("walk.tellur");
        const std::string strBefore = SaveHeights("before.height");
        ASSERT_TRUE(m_Recorder->Start(strScript));
        for (int i = 0; i < 40; ++i)
        {
            ASSERT_NO_FATAL_FAILURE(DoSomething());
        }
        ASSERT_TRUE(m_Recorder->Stop());
        const std::string strAfter = SaveHeights("after.height");
        nChanged += strAfter != strBefore ? 1 : 0; // a walk may end where it began
        ASSERT_NO_FATAL_FAILURE(ExpectReplay(strScript, strAfter));
    }
    EXPECT_GE(nChanged, 8);
}

TEST_F(CRecorderTest, AnotherLevelGoesOnInTheSameScript)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const std::string strScript = m_Folder.Path("levels.tellur");
    ASSERT_TRUE(m_Recorder->Start(strScript));
    Drag();
    ASSERT_TRUE(m_Host.NewLevel(24, {WIDTH, 90.0F, WIDTH}));
    m_Host.Undo(); // nothing
    Drag();
    const std::string strMiddle = SaveHeights("middle.height");
    ASSERT_TRUE(m_Host.OpenLevel(m_Folder.Path("middle.height").c_str()));
    ASSERT_TRUE(m_Recorder->Stop()); // nothing happened on it
    ExpectReplay(strScript, strMiddle);
}

TEST_F(CRecorderTest, WhatWasDoneUntilACrashIsInTheFile)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    const std::string strScript = m_Folder.Path("running.tellur");
    WriteBytes(strScript, "an older script");
    WriteBytes(m_Folder.Path("running.1.height"), "the user's");
    WriteBytes(strScript + ".part", "of an older crash");
    const pid_t child = ::fork();
    if (child == 0)
    {
        bool bDone = m_Recorder->Start(strScript);
        for (int i = 0; i < 3; ++i)
        {
            Drag();
            m_Host.GetInput().EndDrag();
        }
        bDone = bDone && !SaveHeights("now.height").empty();
        ::raise(bDone ? SIGKILL : SIGABRT); // nobody has stopped it
    }
    int iStatus = 0;
    ASSERT_EQ(::waitpid(child, &iStatus, 0), child);
    ASSERT_EQ(WTERMSIG(iStatus), SIGKILL);
    EXPECT_EQ(ReadBytes(strScript), "an older script");
    EXPECT_EQ(ReadBytes(m_Folder.Path("running.1.height")), "the user's");
    EXPECT_EQ(ReadBytes(strScript + ".part"), "of an older crash");
    const std::vector<std::string> parts = CRecorder::TakeInterrupted();
    ASSERT_EQ(parts, std::vector<std::string>{strScript + ".2.part"});
    EXPECT_TRUE(CRecorder::TakeInterrupted().empty()) << "it is told once";
    ExpectReplay(parts[0], ReadBytes(m_Folder.Path("now.height")));

    ASSERT_TRUE(m_Recorder->Start(strScript));
    EXPECT_TRUE(CRecorder::TakeInterrupted().empty()) << "this one goes on";
    Drag();
    ASSERT_TRUE(m_Recorder->Stop());
    EXPECT_TRUE(CRecorder::TakeInterrupted().empty());
    ExpectReplay(strScript, SaveHeights("now.height"));
    EXPECT_EQ(ReadBytes(m_Folder.Path("running.1.height")), "the user's");
    EXPECT_FALSE(std::filesystem::exists(m_Recorder->GetPartPath()));
}

TEST_F(CRecorderTest, AFullDiskEndsTheScriptWithOneLineAndNothingElse)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    CLogCatcher log;
    EXPECT_FALSE(m_Recorder->Start(m_Folder.Path("none/script.tellur")));
    ASSERT_EQ(log.TakeLines().size(), 1U);

    WriteBytes(m_Folder.Path("full.tellur"), "an older script");
    ASSERT_TRUE(m_Recorder->Start(m_Folder.Path("full.tellur")));
    const std::string strPart = m_Recorder->GetPartPath();
    rlimit before = {};
    ::getrlimit(RLIMIT_FSIZE, &before);
    rlimit tight = before;
    tight.rlim_cur = std::filesystem::file_size(strPart) + 100;
    ::signal(SIGXFSZ, SIG_IGN);
    ::setrlimit(RLIMIT_FSIZE, &tight);
    m_Face.cursor.PointAtPosition(100.0F, 100.0F);
    for (int i = 0; i < 20; ++i)
    {
        m_Host.GetInput().SendButtonDown(1, MOUSE_LEFT, {});
        m_Host.GetInput().SendMouseMove(1, MOUSE_LEFT, {}, {0, 1}, {0, 1});
        m_Host.GetInput().SendButtonUp(1, 0, {});
    }
    ::setrlimit(RLIMIT_FSIZE, &before);
    const std::vector<std::string> lines = log.TakeLines();
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines[0], "[CRecorder] " + strPart + ": File too large; the script ends here");
    EXPECT_FALSE(m_Recorder->IsRecording());
    EXPECT_FALSE(m_Recorder->Stop());
    EXPECT_GE(m_Host.GetUndoStack().GetCount(), 20U) << "the strokes went on";
    EXPECT_EQ(ReadBytes(m_Folder.Path("full.tellur")), "an older script");
    EXPECT_TRUE(std::filesystem::exists(strPart));

    // No room for the terrain it begins with: nothing is left, not even of the script.
    ASSERT_TRUE(m_Host.NewLevel(128, {WIDTH, 90.0F, WIDTH}));
    tight.rlim_cur = 20000;
    ::setrlimit(RLIMIT_FSIZE, &tight);
    EXPECT_FALSE(m_Recorder->Start(m_Folder.Path("none.tellur")));
    ::setrlimit(RLIMIT_FSIZE, &before);
    for (const auto& file : std::filesystem::directory_iterator(m_Folder.GetFolder()))
    {
        EXPECT_FALSE(file.path().filename().string().starts_with("none")) << file.path();
    }
}
