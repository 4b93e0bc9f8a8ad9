#include "host/Log.h"
#include "tests/support/CLogCatcher.h"

#include <gtest/gtest.h>

#include <string>

TEST(Log, ShortAndLongTextsReachTheSinkWhole)
{
    CLogCatcher log;
    for (const size_t nLength : {0U, 1U, 510U, 511U, 512U, 513U, 200000U})
    {
        SCOPED_TRACE(nLength);
        const std::string strLong(nLength, 'x');
        CrashLog("[CFirst::Run] %s %d\n", strLong.c_str(), -7);
        LogR("[CSecond::Run] %s %5.2f\n", strLong.c_str(), 1.5);
        EXPECT_EQ(log.GetText(),
                  "[CFirst::Run] " + strLong + " -7\n[CSecond::Run] " + strLong + "  1.50\n");
        log.Clear();
    }
}

TEST(Log, SinksNestAndNullIsStandardError)
{
    CLogCatcher outer;
    {
        CLogCatcher inner;
        CrashLog("inner\n");
        EXPECT_EQ(inner.TakeLines(), std::vector<std::string>{"inner"});
    }
    LogR("out");
    LogR("er\n");
    EXPECT_EQ(outer.TakeLines(), std::vector<std::string>{"outer"});

    testing::internal::CaptureStderr();
    ILogSink* pBefore = SetLogSink(nullptr);
    CrashLog("plain %s\n", "text");
    EXPECT_EQ(SetLogSink(pBefore), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "plain text\n");
    EXPECT_EQ(pBefore, &outer);
    EXPECT_TRUE(outer.TakeLines().empty());
}

TEST(LogDeathTest, CrashExitLogsAndLeavesWithThree)
{
    EXPECT_EXIT(CrashExit("fault %d of %s\n", 3, "the build"),
                testing::ExitedWithCode(3),
                "^fault 3 of the build\n$");
}
