#include "tests/parser/CParserTest.h"

static constexpr const char* SAMPLE =
    "!brush() !name( s ) !extent( f ) !at( v3, i ) !tint( v4 )\n"
    "$far( f, 3200. ) $up( v3, [0,1,0] ) /* note */\n"
    "!include_if_int( 1 == 1, \"part.txt\" )\n"
    "brush()\n{ name( \"a\\\\b\\n%s\" ) extent( far ) // end\n at( up, - 3 ) tint([1,2.5,0,1]) }\n"
    "brush() { extent( 12.25 ); }\n";

class CDamagedFiles : public CParserTest
{
protected:
    // A file is either read or refused whole, and a refusal says so last.
    void Check(const std::string& strText)
    {
        const SOutcome outcome = Parse(strText);
        const std::string strEnd = REFUSED;
        const size_t nEnd = outcome.strLog.rfind(strEnd);
        const bool bRefused =
            nEnd != std::string::npos && nEnd + strEnd.size() == outcome.strLog.size();
        EXPECT_EQ(outcome.eStatus, bRefused ? tcparse_failed : tcparse_done);
        EXPECT_TRUE(!bRefused || outcome.strTree.empty()) << outcome.strTree;
    }
};

TEST_F(CDamagedFiles, AreReadOrRefusedWhole)
{
    const std::string strSample = SAMPLE;
    Write("part.txt", "extent( far )");
    ASSERT_EQ(Parse(strSample).strTree,
              "extent(f3200) brush(){name(\"a\\b\r\n%s\") extent(f3200) at([0 1 0],i-3) "
              "tint([1 2.5 0 1])} brush(){extent(f12.25)}");
    for (size_t i = 0; i < strSample.size(); ++i)
    {
        SCOPED_TRACE(i);
        Check(strSample.substr(0, i));
        // Two of these at each place, every one in many places.
        static constexpr char OTHERS[] = {
            '\0', '\n', '"', '(', ')', '{', '}', '%', '*', '\xFF', '9'};
        for (const size_t iOther : {i, 5 * i + 3})
        {
            std::string strFlipped = strSample;
            strFlipped[i] = OTHERS[iOther % sizeof(OTHERS)];
            Check(strFlipped);
        }
    }
}

TEST_F(CDamagedFiles, ShowLinesUpToANul)
{
    using namespace std::string_literals;
    EXPECT_EQ(Parse("!n()\nn() \0 x"s).strLog,
              Message("unknown keyword ", "t.txt", 2, "n() ") + REFUSED);
    EXPECT_EQ(Parse("!s(s)s(\"a\0b\")"s).strTree, "s(\"a\")");
}
