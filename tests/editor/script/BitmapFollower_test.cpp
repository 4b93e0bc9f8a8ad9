// The bitmap that goes along with the ground where something is in its way: nothing is left behind,
// and a kill costs no name.

#include "editor/core/CBitmapFollower.h"
#include "editor/core/LevelBitmap.h"
#include "host/Notice.h"
#include "host/Progress.h"
#include "tests/editor/script/AutosaveFixture.h"
#include "tests/support/AllocationCount.h"
#include "tests/support/CLogCatcher.h"

namespace
{

// Stops the work that has this name, and hears what is said of work that was done.
class CListener : public IProgressSink, public INoticeSink
{
public:
    explicit CListener(const CLevelDocument& document)
        : m_Document(document)
        , m_pProgress(SetProgressSink(this))
        , m_pNotice(SetNoticeSink(this))
    {
    }

    ~CListener() override
    {
        SetProgressSink(m_pProgress);
        SetNoticeSink(m_pNotice);
    }

    CListener(const CListener&) = delete;
    CListener& operator=(const CListener&) = delete;

    bool OnProgress(const char* pszWhat, float fDone) override
    {
        return strStopped != pszWhat || fDone == 0.0F;
    }

    void OnNotice(const char* pszText) override
    {
        strHeard = pszText + (" | " + m_Document.GetBitmap());
    }

    std::string strStopped;
    std::string strHeard; // with what the level names then

private:
    const CLevelDocument& m_Document;
    IProgressSink* m_pProgress;
    INoticeSink* m_pNotice;
};

class CBitmapFollowerTest : public CAutosaveTest
{
protected:
    // A level that names a bitmap of two texels a cell, and has a file.
    void StartPainted()
    {
        ASSERT_NO_FATAL_FAILURE(Start());
        m_Bitmap = MakeBitmap("types.png", 96);
        m_Document.SetBitmap(m_Bitmap);
        ASSERT_TRUE(m_Document.Save());
    }

    std::string MakeBitmap(const char* pszName, uint32_t uSide)
    {
        std::string strPath = m_Folder.Path(pszName);
        EXPECT_TRUE(MakeLevelBitmap(strPath, uSide, 4, {1, 2, 3, 4}));
        return strPath;
    }

    // Pictures in the folder.
    std::string ListPictures()
    {
        std::string strNames;
        for (const auto& file : std::filesystem::directory_iterator(m_Folder.GetFolder()))
        {
            const std::string strName = file.path().filename().string();
            strNames += strName.starts_with("types") ? strName + " " : "";
        }
        return strNames;
    }

    uint32_t GetColumns() { return m_Host.GetEngine().GetCWorld().GetCTerrain()->GetVerticesX(); }

    std::string m_Bitmap;
};

} // namespace

TEST_F(CBitmapFollowerTest, WhatCannotBeDoneLeavesNoFileAndSaysWhyInOneLine)
{
    ASSERT_NO_FATAL_FAILURE(StartPainted());
    const CBitmapFollower follower(m_Host, m_Document);
    CListener listener(m_Document);
    CLogCatcher log;
    const SGroundAct grow = {.eKind = EGround::Extend, .iEast = 16};
    listener.strStopped = "Moving the bitmap";
    EXPECT_FALSE(m_Host.GetGround().Do(grow));
    EXPECT_EQ(log.TakeLines(), std::vector<std::string>{"[CBitmapFollower::Follow] cancelled"});
    listener.strStopped.clear();
    // Each allocation of the act finds no memory, those after the file was made among them.
    bool bFailed = true;
    size_t nRefused = 0;
    for (size_t i = 1; bFailed && !HasFailure(); ++i)
    {
        SCOPED_TRACE(i);
        FailAllocation(i);
        const bool bDone = m_Host.GetGround().Do(grow);
        bFailed = HasAllocationFailed();
        FailAllocation(0);
        ASSERT_EQ(GetColumns(), bDone ? 65U : 49U);
        ASSERT_EQ(ListPictures() == "types.png ", !bDone);
        ASSERT_EQ(m_Document.GetBitmap(), bDone ? "types.1.png" : m_Bitmap);
        nRefused += bDone ? 0 : 1;
        m_Host.Undo();
        std::filesystem::remove(m_Folder.Path("types.1.png"));
    }
    EXPECT_GT(nRefused, 20U);
    // A picture that would be wider than any is refused before anything of that size is made.
    log.Clear();
    m_Document.SetBitmap(MakeBitmap("types.wide.png", 4800));
    EXPECT_FALSE(m_Host.GetGround().Do({.eKind = EGround::Extend, .iWest = 400}));
    EXPECT_EQ(log.TakeLines(),
              std::vector<std::string>{
                  "[CBitmapFollower::Follow] the bitmap would have 44800 x 4 pixels, more than a "
                  "picture can have; the ground stays"});
    EXPECT_EQ(GetColumns(), 49U);
    EXPECT_TRUE(m_Host.GetGround().Do({.eKind = EGround::Extend, .iWest = 200}));
    EXPECT_EQ(listener.strHeard,
              "The bitmap follows as types.wide.1.png; the file before stays | types.wide.1.png")
        << "not before it is so";
}

TEST_F(CBitmapFollowerTest, ABitmapThatIsGoneHoldsNothingUpAndADamagedOneDoes)
{
    ASSERT_NO_FATAL_FAILURE(StartPainted());
    const CBitmapFollower follower(m_Host, m_Document);
    CLogCatcher log;
    WriteBytes(m_Bitmap, "no picture");
    EXPECT_FALSE(m_Host.GetGround().Do({.eKind = EGround::Extend, .iEast = 16}));
    EXPECT_EQ(log.TakeLines().back(),
              "[CBitmapFollower::Follow] the bitmap " + m_Bitmap +
                  " cannot follow the ground, which stays");
    EXPECT_EQ(ListPictures(), "types.png ");
    std::filesystem::remove(m_Bitmap);
    EXPECT_TRUE(m_Host.GetGround().Do({.eKind = EGround::Extend, .iEast = 16}));
    EXPECT_EQ(log.TakeLines(),
              std::vector<std::string>{"[CBitmapFollower::Follow] the bitmap " + m_Bitmap +
                                       " is not there: the ground moves without it"});
    EXPECT_EQ(GetColumns(), 65U);
    EXPECT_EQ(m_Document.GetBitmap(), m_Bitmap);
    EXPECT_EQ(ListPictures(), "");
}

TEST_F(CBitmapFollowerTest, AKillKeepsANameThatWasGivenBeforeAnActAndBeforeAnUndo)
{
    ASSERT_NO_FATAL_FAILURE(StartPainted());
    const CBitmapFollower follower(m_Host, m_Document);
    const std::string strOther = MakeBitmap("types.other.png", 96);
    const std::string strLast = MakeBitmap("types.last.png", 96);
    ASSERT_NO_FATAL_FAILURE(Crash(
        [&]
        {
            m_Document.SetBitmap(strOther);
            PlayScript("level_turn( 1 )\nlevel_turn( 1 )\n");
            m_Document.SetBitmap(strLast);
            PlayScript("undo()\n");
        }));
    Open();
    size_t nSteps = 0;
    CLogCatcher log;
    ASSERT_TRUE(Recover(FindRecoverable({m_Level}).at(0), nSteps));
    EXPECT_EQ(nSteps, 1U);
    EXPECT_EQ(log.GetText(), "") << "all that came back is no warning";
    EXPECT_EQ(m_Document.GetBitmap(), "types.other.1.png");
    m_Host.Redo();
    EXPECT_EQ(m_Document.GetBitmap(), strLast);
    m_Host.GoToStep(0);
    EXPECT_EQ(m_Document.GetBitmap(), strOther);
    End();
}

TEST_F(CBitmapFollowerTest, AStepThatWasCutOffIsSpokenOf)
{
    ASSERT_NO_FATAL_FAILURE(StartPainted());
    for (const int nStrokes : {1, 2})
    {
        SCOPED_TRACE(nStrokes);
        ASSERT_NO_FATAL_FAILURE(Crash(
            [&]
            {
                for (int i = 0; i < nStrokes; ++i)
                {
                    Raise(i == 0 ? "100, 100" : "200, 100");
                }
            }));
        ASSERT_EQ(FindFiles(".tellur").size(), 1U);
        const std::string strJournal = FindFiles(".tellur")[0];
        std::filesystem::resize_file(strJournal, std::filesystem::file_size(strJournal) - 5);
        Open();
        CLogCatcher log;
        const std::vector<SRecoverable> entries = FindRecoverable({m_Level});
        size_t nSteps = 0;
        ASSERT_EQ(entries.size(), nStrokes == 1 ? 0U : 1U);
        EXPECT_TRUE(nStrokes == 1 || Recover(entries[0], nSteps));
        const std::string strLine =
            nStrokes == 1 ? "[FindRecoverable] the first step after the last save of " + m_Level +
                                " was cut off while it was written and is lost"
                          : "[CAutosave::Recover] 1 of 1 steps were given back; the last one was "
                            "cut off while it was written and is lost";
        EXPECT_EQ(log.TakeLines(), std::vector<std::string>{strLine});
        End();
    }
}
