#include "parser/CTCParse.h"
#include "tests/parser/CParserTest.h"

#include <cstring>
#include <random>
#include <vector>

static constexpr const char* DECLARATIONS =
    "!n() !i(i) !f(f) !s(s) !v(v3) !w(v4) !two(i,f) !Mixed_1(s,v3,n) $c(i,7) $half(f,0.5) "
    "$text(s,\"a\\tb\") $up(v3,[0,1,0]) $all(v4,[1,2,3,4])";

class CTCParseReading : public CParserTest
{
};

// clang-format off
TEST_F(CTCParseReading, ReadsStatements)
{
    const SParserCase CASES[] = {
        {"", "", ""},
        {"n()", "n()", ""},
        {" N ( ) n()n()/**/n() // n()", "n() n() n() n()", ""},
        {"n(){i(1){n()}i(2)}i(3)", "n(){i(i1){n()} i(i2)} i(i3)", ""},
        {"n() { } n()", "n() n()", ""},
        {"n() { n( ) /* open", "n(){n()}", ""},
        {"n() ; n()", "n() n()", "its not c!\n"},
        {"n(){} ;", "", "unknown keyword \n!"},
        {"n() }", "", "unexpected closing curly bracket\n!"},
        {"n(){}} n()", "", "unexpected closing curly bracket\n!"},
        {"mIXED_1(\"x\",[1,2,3],4)", "mixed_1(\"x\",[1 2 3],i4)", ""},
        {"/ n()", "", "unknown keyword \n!"},
        {"Nowhere()", "", "unknown keyword nowhere\n!"},
        {"n", "", "error in call\n!"},
        {"n [", "", "opening bracket expected\n!"},
        {"two(1)", "", "comma expected\n!"},
        {"two(1,2,3)", "", "closing bracket expected\n!"},
        {"two(1 ", "", "comma expected\n!"},
        {"!a234567890123456789012345678901234567_9() A234567890123456789012345678901234567_9()",
         "a234567890123456789012345678901234567_9()", ""},
        {"a2345678901234567890123456789012345678_0()", "", "word limit exceeded\nerror in call\n!"},
        {"!n(i) n(1) !n(s) n(\"x\") !N() n()", "n(i1) n(\"x\") n()", ""},
        {"!() () ()", "() ()", ""},
    };
    for (const SParserCase& test : CASES)
    {
        Check(test, DECLARATIONS);
    }
}

TEST_F(CTCParseReading, ReadsNumbers)
{
    const SParserCase CASES[] = {
        {"i( 12)i(-7)i( - /* minus */ 007 )", "i(i12) i(i-7) i(i-7)", ""},
        {"i(2147483648)i(-2147483648)i(4294967297)i(-99999999999)",
         "i(i-2147483648) i(i-2147483648) i(i1) i(i-1215752191)", ""},
        {"i(12;)", "", "invalid termination of integer\n!"},
        {"i(12", "", "invalid termination of integer\n!"},
        {"i(1.5)", "", "invalid termination of integer\n!"},
        {"i(-)", "", "expected number\n!"},
        {"i(-c)", "", "expected number\n!"},
        {"i(- ", "", "expected number\n!"},
        {"i(c)i(C)", "i(i7) i(i7)", ""},
        {"i(Dept)", "i(i0)", "WARNING unknown const name 'Dept'\n"},
        {"i(half)", "", "'half' const type != 'int'\n!"},
        {"i(", "", "!"}, // the name ends the file
        {"i(c", "", "!"},
        {"f(3)f( - 0.5 )f(2.)f(2.50)f(0.25)", "f(f3) f(f-0.5) f(f2) f(f2.5) f(f0.25)", ""},
        {"f(3.0e2)", "", "invalid termination of float\n!"},
        {"f(1.2.3)", "", "invalid termination of float\n!"},
        {"f(1.5", "", "invalid termination of float\n!"},
        {"f(.5)", "", "WARNING unknown const name ''\nclosing bracket expected\n!"},
        {"f(-.5)", "", "expected number\n!"},
        {"f(HALF)f(none)", "f(f0.5) f(f0)", "WARNING unknown const name 'none'\n"},
        {"f(c)", "", "'c' const type != 'float'\n!"},
        {"f(a2345678901234567890123456789012345678_0)", "", "word limit exceeded\n!"},
    };
    for (const SParserCase& test : CASES)
    {
        Check(test, DECLARATIONS);
    }
}

TEST_F(CTCParseReading, ReadsTextsAndVectors)
{
    const SParserCase CASES[] = {
        {"s(\"\")s(\"plain // {\")", "s(\"\") s(\"plain // {\")", ""},
        {R"(s("a\nb")s("\\\"\q\t"))", "s(\"a\r\nb\") s(\"\\\"q\t\")", ""},
        {R"(s("open)", "", "expected ending \"\n!"},
        {R"(s("open\"))", "", "expected ending \"\n!"},
        {R"(s("open\)", "", "expected ending \"\n!"},
        {"s(Text)s(none)", "s(\"a\tb\") s(\"???parser error???\")", "WARNING unknown const name 'none'\n"},
        {"s(c)", "", "'c' const type != 'string'\n!"},
        {"v([ 1 , -2.5,half])v(up)w([1,2,3,4])w(ALL)",
         "v([1 -2.5 0.5]) v([0 1 0]) w([1 2 3 4]) w([1 2 3 4])", ""},
        {"v(none)w(none)n()", "v() w() n()", "vec3 wrong syntax or const name\nvec4 wrong syntax or const name\n"},
        {"mixed_1(\"a\",none,4)", "mixed_1(\"a\",i4)", "vec3 wrong syntax or const name\n"},
        {"v(all)", "", "'all' const type != 'vec3'\n!"},
        {"w(up)", "", "'up' const type != 'vec4'\n!"},
        {"v([x1y,2,3])", "v([0 2 3])", "WARNING unknown const name 'x1y'\n"},
        {"v([-,2,3])", "", "expected number\ninvalid 1st float in vec3\n!"},
        {"v([1,-,3])", "", "expected number\ninvalid 2nd float in vec3\n!"},
        {"v([1,2,c])", "", "'c' const type != 'float'\ninvalid 3rd float in vec3\n!"},
        {"v([1 2,3])", "", "comma after 1st float missed in vec3\n!"},
        {"v([1,2 3])", "", "comma after 2nd float missed in vec3\n!"},
        {"v([1,2,3)", "", "right closing bracket missed in vec3\n!"},
        {"w([-,2,3,4])", "", "expected number\ninvalid 1st float in vec4\n!"},
        {"w([1,-,3,4])", "", "expected number\ninvalid 2nd float in vec4\n!"},
        {"w([1,2,-,4])", "", "expected number\ninvalid 3rd float in vec4\n!"},
        {"w([1,2,3,-])", "", "expected number\ninvalid 4th float in vec4\n!"},
        {"w([1 2,3,4])", "", "comma after 1st float missed in vec4\n!"},
        {"w([1,2 3,4])", "", "comma after 2nd float missed in vec4\n!"},
        {"w([1,2,3 4])", "", "comma after 3rd float missed in vec4\n!"},
        {"w([1,2,3,4,5])", "", "right closing bracket in vec4 missed\n!"},
    };
    for (const SParserCase& test : CASES)
    {
        Check(test, DECLARATIONS);
    }
}

// clang-format on

static float Accumulate(const std::string& strNumber)
{
    double fValue = 0.0;
    double fScale = 1.0;
    bool bFraction = false;
    for (const char cChar : strNumber)
    {
        bFraction = bFraction || cChar == '.';
        if (cChar != '.')
        {
            fValue = fValue * 10.0 + (cChar - '0');
            fScale *= bFraction ? 0.1 : 1.0;
        }
    }
    return static_cast<float>(fValue * fScale);
}

TEST_F(CTCParseReading, AccumulatesFloatsDigitByDigit)
{
    // Halfway between two floats: the last bit tells this way of reading from an exact one.
    std::vector<std::string> numbers = {"121644773881675776",
                                        "270200335371337728",
                                        "491672514422898688",
                                        "2186291.625",
                                        "552516.90625",
                                        "2648370.625"};
    std::mt19937 random(7);
    for (int i = 0; i < 300; ++i)
    {
        const size_t nWhole = 1 + random() % (i < 250 ? 12 : 400);
        std::string strNumber;
        for (size_t k = 0; k < nWhole + random() % 40; ++k)
        {
            strNumber += k == nWhole ? "." : "";
            strNumber += static_cast<char>('0' + random() % 10);
        }
        numbers.push_back(strNumber);
    }
    std::string strText = "!f(f)";
    std::string strTree;
    for (const std::string& strNumber : numbers)
    {
        char szValue[64];
        snprintf(szValue, sizeof(szValue), " f(f%.9g)", Accumulate(strNumber));
        strText += "f(" + strNumber + ")\n";
        strTree += szValue;
    }
    EXPECT_EQ(Parse(strText).strTree, strTree.substr(1));
}

TEST_F(CTCParseReading, LocatesMessagesByLine)
{
    // Blank ends, both kinds of line breaks, and names that stop right before a line break.
    const SOutcome outcome = Parse("!n()!i(i)!s(s)\r\n//\n/*\n\n*/ n()\n;\n\rn();x\r\n"
                                   "i(Who\n)s(\"a\n\nb\\\r\nc\\\nd\\\re\") ;\n nobody\n(\n");
    EXPECT_EQ(outcome.strLog,
              Message("its not c!", "t.txt", 6, ";") + Message("its not c!", "t.txt", 7, "n();x") +
                  Message("unknown keyword x", "t.txt", 7, "n();x") + REFUSED);
    const SOutcome strings = Parse("!n()!i(i)!s(s)\ni(Who\n)s(\"a\n\nb\\\r\nc\\\nd\\\re\") ;\nn\n");
    EXPECT_EQ(strings.strLog,
              Message("WARNING unknown const name 'Who'", "t.txt", 2, "i(Who") +
                  Message("its not c!", "t.txt", 7, "e\") ;") +
                  Message("opening bracket expected", "t.txt", 9, "") + REFUSED);
    EXPECT_EQ(Parse("!s(s)s(\"a\n\nb\\\r\nc\\\nd\\\re\")").strTree, "s(\"a\n\nb\nc\nd\re\")");
}

TEST_F(CTCParseReading, ShowsMessagesAsTheyAre)
{
    Write("100%s.txt", "one\rtwo");
    CTCParse parse("100%s.txt", false);
    CLogCatcher log;
    parse.Error("%d%% done, %s", 5, "%n%s");
    EXPECT_EQ(log.GetText(), "[CTCParse] 5% done, %n%s: in file '100%s.txt' in line 1\none\n");
    log.Clear();
    parse.Error("%s", std::string(9000, 'x').c_str());
    EXPECT_EQ(log.GetText(),
              "[CTCParse] " + std::string(8191, 'x') + ": in file '100%s.txt' in line 1\none\n");
}

static bool FindInt(int32_t* pValue, const char* pszName)
{
    *pValue = *pValue == 0 && strcmp(pszName, "Known") == 0 ? 42 : 99;
    return *pValue == 42;
}

static bool FindFloat(float* pValue, const char* pszName, const char* pszMember)
{
    const bool bKnown = *pValue == 0.0F && strcmp(pszName, "Known") == 0 && pszMember[0] == '\0';
    *pValue = bKnown ? 1.5F : 0.0F;
    return bKnown;
}

template <int N> static bool FindVector(float* pValues, const char* pszName)
{
    for (int i = 0; i < N; ++i)
    {
        pValues[i] += strcmp(pszName, "Known") == 0 ? static_cast<float>(i + 1) : 0.0F;
    }
    return pValues[0] == 1.0F;
}

static bool FindText(char* pBuffer, const char* pszName)
{
    memset(pBuffer, 'z', TCPARSE_STRING_VARIABLE_BYTES); // no NUL
    return strcmp(pszName, "Known") == 0;
}

TEST_F(CTCParseReading, AsksTheHostForVariables)
{
    const STCParseCallbacks callbacks = {
        FindInt, FindFloat, FindVector<3>, FindVector<4>, FindText};
    const std::string strText(255, 'z');
    Write("inner.txt", "!b(i)b(%Known)");
    EXPECT_EQ(Parse("!include(\"inner.txt\")", callbacks).strTree, "b(i42%Known)");
    EXPECT_EQ(Parse("!a(i,f,v3,v4,s)!b(i)$k(i,%Known)$u(v3,%Known)!v(v3)"
                    "a(%Known,%Known,%Known, %Known,%Known)b(k)v(u)",
                    callbacks)
                  .strTree,
              "a(i42%Known,f1.5%Known,[1 2 3]%Known,[1 2 3 4]%Known,\"" + strText +
                  "\"%Known) b(i42) v([1 2 3])");

    const struct
    {
        const char* pszType;
        const char* pszName;
        const char* pszTreeUnknown; // null: unknown variables of the type fail
    } CASES[] = {{"i", "int", nullptr},
                 {"f", "float", "a(f0)"},
                 {"s", "string", nullptr},
                 {"v3", "vec3", "a([0 0 0])"},
                 {"v4", "vec4", "a([0 0 0 0])"}};

    for (const auto& test : CASES)
    {
        SCOPED_TRACE(test.pszName);
        const std::string strFile = std::string("!a(") + test.pszType + ")a(%x)";
        const bool bFails = test.pszTreeUnknown == nullptr;
        const std::string strUnknown = std::string(test.pszName) + " variable 'x' not found!\n";
        const SOutcome unknown = Parse(strFile, callbacks);
        EXPECT_EQ(unknown.strLog,
                  Message(strUnknown, "t.txt", 1, strFile) + (bFails ? REFUSED : ""));
        EXPECT_EQ(unknown.strTree, bFails ? "" : test.pszTreeUnknown);
        EXPECT_EQ(Parse(strFile).strLog,
                  Message("variable callback not specified: unable to read 'x' variable!\n",
                          "t.txt",
                          1,
                          strFile) +
                      REFUSED);
    }
    EXPECT_EQ(Parse("!f(f)f(%Known.x)", callbacks).strLog, REFUSED);
    EXPECT_EQ(Parse("!f(f)f(%Known", callbacks).strLog, REFUSED);
}

TEST_F(CTCParseReading, TellsUnreadableFilesFromEmptyOnes)
{
    const double fBefore = CTCParse::GetTotalSeconds();
    EXPECT_EQ(Parse("!n() // no calls").eStatus, tcparse_done);
    EXPECT_EQ(Parse("").eStatus, tcparse_done);
    EXPECT_GT(CTCParse::GetTotalSeconds(), fBefore);
    for (const char* pszName : {"missing.txt", ".", "", "no/such/folder.txt"})
    {
        const SOutcome outcome = ParseFile(pszName);
        EXPECT_EQ(outcome.eStatus, tcparse_unreadable) << pszName;
        EXPECT_EQ(outcome.strLog, "") << pszName;
    }
    EXPECT_EQ(ParseFile(nullptr).eStatus, tcparse_unreadable);
}
