// The editor is killed at any moment of a long walk: what the autosave gives back then.

#include "tests/editor/script/AutosaveFixture.h"
#include "tests/support/DieAfter.h"

#include <sys/mman.h>

#include <cstdlib>

namespace
{

constexpr int STEPS = 200;

class CAutosaveKills : public CAutosaveTest
{
protected:
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
            m_Host.GetInput().SendAction(1, m_Numbers.Int(1, 2), 2);
            break;
        case 3:
            TakeBrush(m_Numbers.Int(0, 5), m_Numbers.Float(0.05F, 0.4F));
            break;
        case 4: // several drags, of which half are never given back
            m_Host.GetHistory().BeginStep(1);
            Stroke();
            m_Autosave->Tick(m_Now);
            Stroke();
            m_Host.GetHistory().EndStep();
            break;
        default:
            Stroke();
        }
        m_Now += std::chrono::seconds(1);
        m_Autosave->Tick(m_Now);
    }

    // In a child process: works until it dies that long after so many steps, and says how many it
    // has done.
    pid_t Work(uint32_t uSeed, int nUntil, long nMicroseconds, volatile int* pnDone)
    {
        End(); // its thread would not be in the child
        const pid_t child = ::fork();
        if (child == 0)
        {
            BeginWalk(uSeed);
            m_Autosave->SetInterval(std::chrono::seconds(20));
            for (int i = 0;; ++i)
            {
                if (i == nUntil)
                {
                    DieAfter(nMicroseconds);
                }
                if (i < STEPS)
                {
                    Step();
                    *pnDone = i + 1;
                }
            }
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
            const int nUntil = pauses.Int(0, STEPS - 1);
            const pid_t child = Work(uSeed, nUntil, pauses.Int(1, 3000), pnDone);
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
        EXPECT_EQ(nSteps, CountHistorySteps(entries[0], entries[0].steps.size()));
        EXPECT_TRUE(sums[nAt] == GetSum() || uNext == GetSum())
            << nDone << " steps were done, " << nSteps << " are back on copy "
            << entries[0].text.uNumber << ", as after step "
            << std::find(sums.begin(), sums.end(), GetSum()) - sums.begin();
        EXPECT_TRUE(m_Document.IsModified());
        End();
        EXPECT_FALSE(std::filesystem::exists(m_Folder.Path(".tellur-autosave")));
    }
};

} // namespace

TEST_F(CAutosaveKills, AKillCostsTheStepUnderTheHandAndNoMore)
{
    const char* pszKills = std::getenv("TELLUR_KILLS");
    const int nKills = pszKills != nullptr ? std::atoi(pszKills) : 10;
    ASSERT_NO_FATAL_FAILURE(Start());
    for (uint32_t uSeed = 1; uSeed <= 3; ++uSeed)
    {
        ASSERT_NO_FATAL_FAILURE(KillAndRecover(uSeed, nKills));
    }
}

// What undo brings back was no step of the journal, which began with the save.
TEST_F(CAutosaveTest, AKillAfterAnUndoAcrossTheSaveKeepsTheGroundThatCameBack)
{
    ASSERT_NO_FATAL_FAILURE(Start());
    ASSERT_NO_FATAL_FAILURE(Crash(
        [&]
        {
            PlayScript("level_extend( 4, 2, 4, 0, 0 )");
            ASSERT_TRUE(m_Document.Save());
            m_Host.Undo();
            m_Autosave->Tick(m_Now);
            EXPECT_TRUE(m_Autosave->Wait()); // for the copy that says what heights cannot
            Raise("100, 100");
        }));
    ASSERT_NO_FATAL_FAILURE(ExpectBack());
}
