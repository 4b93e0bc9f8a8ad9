#include "parser/CTCParse.h"
#include "tests/parser/CParserTest.h"

class CParserDirectives : public CParserTest
{
protected:
    CParserDirectives()
    {
        Write("a.txt", "a()");
        Write("sub/b.txt", "b()");
    }
};

// clang-format off
TEST_F(CParserDirectives, ReadDeclarations)
{
    const SParserCase CASES[] = {
        {"!attrib( string, string ) Attrib(\"a\",\"b\")", "attrib(\"a\",\"b\")", ""},
        {"!x(I,n,N,F,S,V3,V4,integer!?,float /*c*/ ) x(1,2,3,4,\"5\",[6,6,6],[7,7,7,7],8,9)",
         "x(i1,i2,i3,f4,\"5\",[6 6 6],[7 7 7 7],i8,f9)", ""},
        {"!a(){} a()", "", "unknown keyword \n!"},
        {"!pos( vec3 )", "", "unexpected character in typedef\n!"},
        {"!pos( v 3 )", "", "unexpected character in typedef\n!"},
        {"!pos( , )", "", "unexpected character in typedef\n!"},
        {"!pos( i, )", "", "unexpected character in typedef\n!"},
        {"!pos( x )", "", "unexpected character in typedef\n!"},
        {"!pos( f", "", "unexpected character in typedef\n!"},
        {"!pos(", "", "unexpected character in typedef\n!"},
        {"!pos i )", "", "left bracked expected in typedef\n!"},
        {"! pos( i )", "", "left bracked expected in typedef\n!"},
        {"!", "", "error in typedef\n!"},
        {"!a234567890123456789012345678901234567890()", "", "word limit exceeded\nerror in typedef\n!"},
        {"!n(){!n()!m(i)n()", "", "unknown keyword \n!"},
        {"!n()n(){!m(i)} m(3)", "n() m(i3)", ""},
        {"!brush()!brush( s )brush(\"x\")brush()", "brush(\"x\") brush(\"???parser error???\")",
         "WARNING unknown const name ''\n"},
    };
    for (const SParserCase& test : CASES)
    {
        Check(test, "");
    }
}

TEST_F(CParserDirectives, ReadConstants)
{
    const SParserCase CASES[] = {
        {"!f(f)$scale( F, 2.5 )f(scale)f(SCALE)$Scale(f,3)f(scale)$t(f,scale)f(T)",
         "f(f2.5) f(f2.5) f(f3) f(f3)", ""},
        {"!i(i)$a(N,1)$b(i,a)i(B)", "i(i1)", ""},
        {"!i(i)$a(i,b)i(a)", "i(i0)", "WARNING unknown const name 'b'\n"},
        {"!n()n(){$a(i,4)!i(i)}i(a)", "n() i(i4)", ""},
        {"$n( i, 1, 2 )", "", "unexpected character in typedef\n!"},
        {"$n( int, 1 )", "", "unexpected character in typedef\n!"},
        {"$n( i f, 1 )", "", "unexpected character in typedef\n!"},
        {"$n( i /* */ , 1 ", "", "unexpected character in typedef\n!"},
        {"$n( )", "", "unexpected character in typedef\n!"},
        {"$n( vec3, [1,2,3] )", "", "unexpected character in typedef\n!"},
        {"$n( v3, none )", "", "vec3 wrong syntax or const name\nerror in const def\n!"},
        {"$n( v4, none )", "", "vec4 wrong syntax or const name\nerror in const def\n!"},
        {"$n( i, - )", "", "expected number\n!"},
        {"$n i", "", "left bracked expected in const def\n!"},
        {"$", "", "error in const def\n!"},
    };
    for (const SParserCase& test : CASES)
    {
        Check(test, "");
    }
}

TEST_F(CParserDirectives, IncludeFiles)
{
    const SParserCase CASES[] = {
        {"!a()!b()!include( \"a.txt\" )b(){!INCLUDE(\"./sub/b.txt\")a()}!include(\"a.txt\")",
         "a() b(){b() a()} a()", ""},
        {"!a()a()!include(\"\")!include(\"nowhere.txt\")!include(\"./nowhere.txt\")", "a()", ""},
        {"!a()$name(s,\"A.TXT\")!include(Name)", "a()", ""},
        {"!include( missing )", "", "WARNING unknown const name 'missing'\n"},
        {"!include \"a.txt\" )", "", "left bracked expected in include\n!"},
        {"!include( \"a.txt\" ", "", "right bracked expected in include\n!"},
        {"!include( \"a.txt", "", "expected ending \"\n"}, // lets the parse go on, at the end
        {"$c(i,1)!a()!include( c a() ", "a()", "'c' const type != 'string'\n"},
    };
    for (const SParserCase& test : CASES)
    {
        Check(test, "");
    }
}

TEST_F(CParserDirectives, IncludeOnConditions)
{
    const SParserCase CASES[] = {
        {"!include_if_int 1", "", "left bracked expected in 'include_if_int'\n!"},
        {"!include_if_int(2>=1,\"a.txt\")", "", "invalid termination of integer\nint expected in 'include_if_int'\n!"},
        {"!include_if_int(2 = 1,\"a.txt\")", "", "operator expected in 'include_if_int'\n!"},
        {"!include_if_int(2 > = 1,\"a.txt\")", "", "WARNING unknown const name ''\ncomma expected in 'include_if_int'\n!"},
        {"!include_if_int(2 == -,\"a.txt\")", "", "expected number\nint expected in 'include_if_int'\n!"},
        {"!include_if_int(2 == 1 \"a.txt\")", "", "comma expected in 'include_if_int'\n!"},
        {"$c(i,1)!include_if_int(2 == 1,c)", "", "'c' const type != 'string'\nstring expected in 'include_if_int'\n!"},
        {"!include_if_int(2 == 1,\"a.txt\"]", "", "right bracked expected in 'include_if_int'\n!"},
        {"!include_if_float[", "", "left bracked expected in 'include_if_float'\n!"},
        {"!include_if_float(-,\"a.txt\")", "", "expected number\nint expected in 'include_if_float'\n!"},
        {"!include_if_float(2.5 ", "", "operator expected in 'include_if_float'\n!"},
        {"!include_if_float(2.5 < x.", "", "WARNING unknown const name 'x'\ncomma expected in 'include_if_float'\n!"},
        {"!include_if_float(2.5 < -.", "", "expected number\nint expected in 'include_if_float'\n!"},
        {"$c(i,1)!include_if_float(2 == 1,c)", "", "'c' const type != 'string'\nstring expected in 'include_if_float'\n!"},
        {"!include_if_float(2.5 < 3 ,\"a.txt\"", "", "right bracked expected in 'include_if_float'\n!"},
        {"!a()$level(i,2)!include_if_int(level>=2 ,\"a.txt\")!include_if_int(level>2 ,\"a.txt\")a()", "a() a()", ""},
        {"!include_if_int(1 == 1, \"\")!include_if_int(1 != 1, \"a.txt\")", "", ""},
    };
    for (const SParserCase& test : CASES)
    {
        Check(test, "");
    }
}

// clang-format on

TEST_F(CParserDirectives, CompareBothKindsOfNumbers)
{
    static constexpr const char* OPERATORS[] = {"==", "!=", ">", "<", ">=", "<="};
    const auto holds = [](int nOperator, double a, double b)
    {
        const bool results[] = {a == b, a != b, a > b, a < b, a >= b, a <= b};
        return results[nOperator];
    };
    for (int nOperator = 0; nOperator < 6; ++nOperator)
    {
        for (const char* pszLeft : {"-1", "2", "3"})
        {
            const bool bHolds = holds(nOperator, atoi(pszLeft), 2);
            const std::string strCondition =
                std::string("( ") + pszLeft + " " + OPERATORS[nOperator] + "2 , \"a.txt\" )";
            const SOutcome ints = Parse("!a()!include_if_int" + strCondition);
            EXPECT_EQ(ints.strTree, bHolds ? "a()" : "") << strCondition;
            // The halves are what an int would not see.
            const std::string strHalves =
                std::string("( ") + pszLeft + ".5 " + OPERATORS[nOperator] + " 2.0 , \"a.txt\" )";
            const double fLeft = atoi(pszLeft) < 0 ? -1.5 : atoi(pszLeft) + 0.5;
            const SOutcome floats = Parse("!a()!include_if_float" + strHalves);
            EXPECT_EQ(floats.strTree, holds(nOperator, fLeft, 2.0) ? "a()" : "") << strHalves;
        }
    }
}

TEST_F(CParserDirectives, IncludedFilesShareWordsAndErrors)
{
    Write("words.txt", "!made(i) $made_here(i,outer) $outer(i,2)");
    EXPECT_EQ(Parse("$outer(i,1)!include(\"words.txt\")made(made_here)made(outer)").strTree,
              "made(i1) made(i2)");

    // Messages come from the outermost file first, each with the place of its own.
    Write("deep/one.txt", "\n!include( \"two.txt\" )\n!include( \"./two.txt\" )");
    Write("deep/two.txt", "a();\n}");
    const SOutcome outcome = Parse("!a()\n!include( \"deep\\\\one.txt\" ) a()");
    // The folder of an included file comes from the file system, as it spells it.
    const std::string strMiddleRoot = fs::root_path(m_Folder.Path("deep\\one.txt").c_str());
    const std::string strInner =
        strMiddleRoot.substr(0, strMiddleRoot.rfind("one.txt")) + "./two.txt";
    const std::string strMiddle = m_Folder.Path("deep\\one.txt");
    std::string strLog;
    for (const char* pszMessage : {"its not c!", "unexpected closing curly bracket"})
    {
        const bool bFirst = pszMessage[0] == 'i';
        strLog += Message(pszMessage, "t.txt", 2, "!include( \"deep\\\\one.txt\" ) a()");
        strLog += Message(pszMessage, strMiddle, 3, "!include( \"./two.txt\" )");
        strLog += Message(pszMessage, strInner, bFirst ? 1 : 2, bFirst ? "a();" : "}");
    }
    EXPECT_EQ(outcome.strLog, strLog + REFUSED);
    EXPECT_EQ(outcome.strTree, "");
}

TEST_F(CParserDirectives, RefusesEndlessIncludes)
{
    const SOutcome outcome = Parse("!include(\"t.txt\")");
    std::string strLog;
    for (size_t i = 0; i <= CTCParse::INCLUDE_DEPTH_LIMIT; ++i)
    {
        strLog += Message("include depth limit exceeded", "t.txt", 1, "!include(\"t.txt\")");
    }
    EXPECT_EQ(outcome.strLog, strLog + REFUSED);

    // Each file includes the next one twice: without an end, however shallow.
    for (int i = 0; i < 20; ++i)
    {
        const std::string strNext = "!include(\"" + std::to_string(i + 1) + ".x\")";
        Write((std::to_string(i) + ".x").c_str(), strNext + strNext);
    }
    Write("20.x", "");
    const SOutcome many = Parse("!include(\"0.x\")");
    EXPECT_EQ(many.strLog.find("[CTCParse] include count limit exceeded: in file 't.txt'"), 0U);
    EXPECT_EQ(many.eStatus, tcparse_failed);
}

TEST_F(CParserDirectives, LogsIncludesWhenDebugging)
{
    Write("t.txt", "!include(\"a.txt\")!include(\"./sub/c.txt\")");
    Write("a.txt", "");
    Write("sub/c.txt", "!include(\"a%s.txt\")");
    CLogCatcher log;
    int32_t nError = -1;
    EXPECT_EQ(CTCParse("t.txt", true).Parse(&nError), nullptr);
    EXPECT_EQ(nError, 0);
    EXPECT_EQ(log.GetText(),
              "[parser debug] including file: a.txt\n[parser debug] including file: ./sub/c.txt\n"
              "[parser debug] including file: a%s.txt\n");
}
