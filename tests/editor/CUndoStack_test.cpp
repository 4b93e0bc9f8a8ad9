#include "editor/core/CUndoStack.h"
#include "editor/core/IPreparedStep.h"
#include "host/CUndo.h"
#include "tests/support/CNumbers.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

// Appends what happens to it to a shared text: "u1 " undo of record 1, "r1 " redo, "~1 "
// its end.
class CRecord : public CUndo
{
public:
    CRecord(std::string& strEvents, const char* pszName, bool bTransient = false)
        : m_Events(strEvents)
        , m_Name(pszName)
        , m_bTransient(bTransient)
    {
    }

    ~CRecord() override { Say("~"); }

    bool IsTransient() const override { return m_bTransient; }

    void Undo() override { Say("u"); }

    void Redo() override { Say("r"); }

    void OnNotify(uintptr_t) override {}

private:
    void Say(const char* pszWhat) { m_Events += pszWhat + m_Name + " "; }

    std::string& m_Events;
    std::string m_Name;
    bool m_bTransient;
};

} // namespace

TEST(CUndoStack, ANewRecordDestroysWhatCouldBeRedone)
{
    std::string strEvents;
    CUndoStack stack;
    stack.Add(new CRecord(strEvents, "1"));
    stack.Add(new CRecord(strEvents, "2"));
    stack.Undo();
    stack.Add(new CRecord(strEvents, "3"));
    EXPECT_EQ(strEvents, "u2 ~2 ");
    EXPECT_EQ(stack.GetCount(), 2U);
    EXPECT_EQ(stack.GetRedoCount(), 0U);
    stack.Clear();
    EXPECT_EQ(strEvents, "u2 ~2 ~1 ~3 ");
    EXPECT_EQ(stack.GetCount(), 0U);
    EXPECT_FALSE(stack.Undo());
}

TEST(CUndoStack, TransientRecordsAreDroppedWithoutAStepOfTheirOwn)
{
    std::string strEvents;
    CUndoStack stack;
    stack.Add(new CRecord(strEvents, "1"));
    stack.Add(new CRecord(strEvents, "t", true));
    EXPECT_TRUE(stack.Undo());
    EXPECT_EQ(strEvents, "~t u1 ");
    EXPECT_EQ(stack.GetCount(), 0U);
    EXPECT_TRUE(stack.Redo());
    EXPECT_FALSE(stack.Redo());
    stack.Clear();
    stack.Add(new CRecord(strEvents, "t", true));
    EXPECT_FALSE(stack.Undo());
    EXPECT_EQ(stack.GetCount(), 0U);
}

TEST(CUndoStack, GoesToAnyStepAndNamesStatesThatComeBack)
{
    std::string strEvents;
    CUndoStack stack;
    const uint64_t uEmpty = stack.GetStateId();
    stack.Add(new CRecord(strEvents, "1"), "Set height");
    const uint64_t uFirst = stack.GetStateId();
    stack.Add(new CRecord(strEvents, "2"), "Blur");
    stack.Add(new CRecord(strEvents, "3"), "Blur");
    EXPECT_EQ(stack.GetText(0), "1 Set height");
    EXPECT_EQ(stack.GetText(2), "3 Blur");

    EXPECT_TRUE(stack.GoTo(1));
    EXPECT_EQ(stack.GetStateId(), uFirst);
    EXPECT_TRUE(stack.GoTo(3));
    EXPECT_FALSE(stack.GoTo(4));
    EXPECT_TRUE(stack.GoTo(0));
    EXPECT_EQ(stack.GetStateId(), uEmpty);
    EXPECT_EQ(strEvents, "u3 u2 r2 r3 u3 u2 u1 ");

    // Another record in place of those is another state, at the same count.
    stack.Add(new CRecord(strEvents, "4"));
    EXPECT_NE(stack.GetStateId(), uFirst);
    stack.Clear();
    EXPECT_NE(stack.GetStateId(), uEmpty);
}

TEST(CUndoStack, TheOldestRecordsGoWhereTheLimitIsReached)
{
    std::string strEvents;
    CUndoStack stack;
    stack.SetLimit(100);
    const uint64_t uEmpty = stack.GetStateId();
    stack.Add(new CRecord(strEvents, "1"), "Blur", 40);
    const uint64_t uFirst = stack.GetStateId();
    stack.Add(new CRecord(strEvents, "2"), "Ramp", 40);
    EXPECT_EQ(strEvents, "") << "80 of 100 bytes";
    stack.Add(new CRecord(strEvents, "3"), "Blur", 40);
    EXPECT_EQ(strEvents, "~1 ");
    EXPECT_EQ(stack.GetGivenUpCount(), 1U);
    EXPECT_EQ(stack.GetText(0), "2 Ramp") << "a step keeps its number";

    // The state that the way back ends at is the one after the record that went.
    EXPECT_TRUE(stack.GoTo(0));
    EXPECT_EQ(stack.GetStateId(), uFirst);
    EXPECT_NE(stack.GetStateId(), uEmpty);
    EXPECT_FALSE(stack.Undo());
    EXPECT_TRUE(stack.GoTo(2));

    // A record larger than the limit stays while it is the newest, and what is undone counts too.
    stack.Add(new CRecord(strEvents, "4"), "Blur", 500);
    EXPECT_EQ(strEvents, "~1 u3 u2 r2 r3 ~2 ~3 ");
    EXPECT_EQ(stack.GetCount(), 1U);
    stack.Add(new CRecord(strEvents, "5"), "Blur", 60);
    stack.Undo();
    strEvents.clear();
    stack.Add(new CRecord(strEvents, "6"), "Blur", 60);
    EXPECT_EQ(strEvents, "~5 ") << "60 bytes are left";
    stack.Add(new CRecord(strEvents, "7"), "Blur", 40);
    stack.GoTo(0);
    strEvents.clear();
    stack.SetLimit(60);
    EXPECT_EQ(strEvents, "~7 ") << "the far end of what can be redone";
    EXPECT_EQ(stack.GetRedoCount(), 1U);
    stack.Clear();
    EXPECT_EQ(stack.GetGivenUpCount(), 0U);
}

TEST(CUndoStack, ARecordThatCannotTakeItsStepStaysWhereItIs)
{
    class CStubborn : public CRecord, public IPreparedStep
    {
    public:
        using CRecord::CRecord;

        bool Prepare() override { return bReady; }

        bool bReady = false;
    };

    std::string strEvents;
    CUndoStack stack;
    stack.Add(new CRecord(strEvents, "1"));
    auto* pStep = new CStubborn(strEvents, "2");
    stack.Add(pStep);
    const uint64_t uState = stack.GetStateId();
    EXPECT_FALSE(stack.Undo());
    EXPECT_FALSE(stack.GoTo(0));
    EXPECT_EQ(stack.GetStateId(), uState) << "what lies below was made on other heights";
    pStep->bReady = true;
    EXPECT_TRUE(stack.Undo());
    pStep->bReady = false;
    EXPECT_FALSE(stack.Redo());
    EXPECT_FALSE(stack.GoTo(2));
    EXPECT_EQ(stack.GetRedoCount(), 1U);
    EXPECT_EQ(strEvents, "u2 ");
    pStep->bReady = true;
    stack.Add(new CRecord(strEvents, "t", true)); // takes no step
    EXPECT_TRUE(stack.GoTo(1)) << strEvents;
    EXPECT_TRUE(stack.GoTo(0)) << strEvents;
}

namespace
{

// The ground is a text: a record puts a letter behind it, and takes that very letter off again.
class CLetter : public CUndo
{
public:
    CLetter(std::string& strGround, char c)
        : m_Ground(strGround)
        , m_Letter(c)
    {
        Redo();
    }

    bool IsTransient() const override { return false; }

    void Undo() override
    {
        ASSERT_EQ(m_Ground.back(), m_Letter);
        m_Ground.pop_back();
    }

    void Redo() override { m_Ground += m_Letter; }

    void OnNotify(uintptr_t) override {}

private:
    std::string& m_Ground;
    char m_Letter;
};

// A stack, and beside it a plain list of the grounds after each step.
struct SWalk
{
    explicit SWalk(uint32_t uSeed)
        : numbers(uSeed)
    {
        stack.SetLimit(nLimit = uSeed % 2 == 0 ? 12 : 0);
    }

    void Add()
    {
        const char c = static_cast<char>('a' + numbers.Int(0, 25));
        if (!bRecord)
        {
            states.resize(nAt + 1);
            states.push_back(states[nAt++]);
        }
        bRecord = bOpen;
        states[nAt] += c;
        ASSERT_TRUE(stack.Add(new CLetter(strGround, c), "", 1));
    }

    void End(bool bCancel)
    {
        bCancel ? stack.CancelStep() : stack.EndStep();
        if (bCancel && bRecord)
        {
            states.pop_back();
            --nAt;
        }
        bOpen = bRecord = false;
    }

    void GoTo()
    {
        const size_t nAll = stack.GetCount() + stack.GetRedoCount();
        const auto nTo = static_cast<size_t>(numbers.Int(0, static_cast<int>(nAll)));
        nAt = states.size() - 1 - nAll + nTo;
        bOpen = bOpen && nTo == stack.GetCount(); // else the first undo ends it
        bRecord = bRecord && bOpen;
        ASSERT_TRUE(stack.GoTo(nTo));
    }

    void Compare()
    {
        const size_t nGone = stack.GetGivenUpCount();
        ASSERT_EQ(strGround, states[nAt]);
        ASSERT_EQ(nGone + stack.GetCount(), nAt);
        ASSERT_EQ(nAt + stack.GetRedoCount() + 1, states.size());
        const size_t nHeld = states.back().size() - states[nGone].size();
        ASSERT_TRUE(nLimit == 0 || nHeld <= nLimit || nGone + 2 == states.size());
    }

    CNumbers numbers;
    std::string strGround;
    CUndoStack stack;
    std::vector<std::string> states = {""};
    size_t nAt = 0;
    size_t nLimit = 0;
    bool bOpen = false;
    bool bRecord = false; // of the open step
};

} // namespace

TEST(CUndoStack, StepsOfSeveralRecordsDoAsAPlainListDoes)
{
    for (uint32_t uSeed = 1; uSeed <= 60; ++uSeed)
    {
        SCOPED_TRACE(uSeed);
        SWalk walk(uSeed);
        for (int i = 0; i < 300; ++i)
        {
            switch (walk.numbers.Int(0, 9))
            {
            case 0:
            case 1:
                ASSERT_NO_FATAL_FAILURE(walk.GoTo());
                break;
            case 2:
                EXPECT_EQ(walk.stack.BeginStep(), !walk.bOpen);
                walk.bOpen = true;
                break;
            case 3:
                walk.End(i % 2 == 0);
                break;
            default:
                ASSERT_NO_FATAL_FAILURE(walk.Add());
            }
            ASSERT_NO_FATAL_FAILURE(walk.Compare());
        }
    }
}
