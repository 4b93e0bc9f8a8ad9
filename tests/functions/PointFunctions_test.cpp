#include "tests/functions/FunctionParts.h"
#include "tests/support/CLogCatcher.h"

#include <gtest/gtest.h>

namespace
{

using CPointFunctionTest = CDragTest;
using CTwoPointsFunctionTest = CDragTest;

} // namespace

TEST_F(CPointFunctionTest, StartsLaterWhenThePressMissed)
{
    CTestPoint* pPoint = Use(new CTestPoint(&context.calls));
    context.host.Miss();
    ASSERT_TRUE(session.Start(1, 2, 3, &context.terrain, &brush));
    context.host.Miss();
    EXPECT_EQ(session.OnMouseMove(6, 2, 4, 0, 0), 0);
    EXPECT_EQ(context.TakeCalls(),
              (FakeCalls{"Host.PickTerrain(1, 3, 0)", "Host.PickTerrain(6, 4, 0)"}));
    EXPECT_EQ(Move(40, 0, 50, 7), 1);
    EXPECT_EQ(context.TakeCalls()[1], "Process(40 0 50, 9, 7)");

    // After the release the next move would have to hit again.
    Release();
    CLogCatcher log; // the session has no terrain from here on
    context.TakeCalls();
    context.host.Miss();
    EXPECT_EQ(pPoint->OnMouseMove(&session, &brush, 1, 2, 3, 0, 0), 0);
    // A press always starts anew, also one that misses.
    context.host.Hit(40, 0, 50);
    EXPECT_EQ(pPoint->Start(&session, &brush, 1, 2, 3), 1);
    context.host.Miss();
    EXPECT_EQ(pPoint->Start(&session, &brush, 1, 2, 3), 0);
    context.host.Miss();
    EXPECT_EQ(pPoint->OnMouseMove(&session, &brush, 1, 2, 3, 0, 0), 0);
    for (const std::string& strCall : context.TakeCalls())
    {
        EXPECT_EQ(strCall, "Host.PickTerrain(1, 3, 0)");
    }
}

TEST_F(CTwoPointsFunctionTest, AppliesOnceBetweenPressAndRelease)
{
    struct SCase
    {
        const char* pszName;
        std::vector<SPick> picks; // press, moves, release
        const char* pszProcess;   // null: not applied
    };

    const auto hit = [](float fX)
    {
        return SPick{1, {fX, fX * 2, fX * 3}};
    };
    const SPick miss;
    // clang-format off
    const SCase cases[] = {
        {"press, move, release", {hit(1), hit(2), hit(3)}, "Process(1 2 3, 3 6 9)"},
        {"no move", {hit(1), hit(3)}, "Process(1 2 3, 3 6 9)"},
        {"press missed", {miss, hit(2), hit(4), hit(3)}, "Process(2 4 6, 3 6 9)"},
        {"only the release hits", {miss, miss, hit(3)}, "Process(-1 -1 -1, 3 6 9)"},
        {"move missed", {hit(1), miss, hit(3)}, "Process(1 2 3, 3 6 9)"},
        {"release missed", {hit(1), hit(2), miss}, nullptr},
        {"left of 0 the first move counts", {hit(-4), hit(2), hit(3)}, "Process(2 4 6, 3 6 9)"},
        {"again, nothing is left over", {miss, miss}, nullptr},
    };
    // clang-format on
    FakeCalls calls;
    Use(new CTestTwoPoints(&calls)); // one object for all drags
    for (const SCase& test : cases)
    {
        SCOPED_TRACE(test.pszName);
        calls.clear();
        context.host.picks.assign(test.picks.begin(), test.picks.end());
        ASSERT_TRUE(session.Start(1, 2, 3, &context.terrain, &brush));
        for (size_t i = 1; i + 1 < test.picks.size(); ++i)
        {
            EXPECT_EQ(session.OnMouseMove(1, 2, 3, 0, 0), test.picks[i].iResult);
            EXPECT_EQ(calls, FakeCalls{});
        }
        Release();
        EXPECT_EQ(calls, test.pszProcess != nullptr ? FakeCalls{test.pszProcess} : FakeCalls{});
    }
    EXPECT_TRUE(context.terrain.boxes.empty());
}
