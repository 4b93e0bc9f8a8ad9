#include "tests/parser/CParserTest.h"
#include "tests/support/TestPaths.h"

#include <sys/wait.h>

class CParseTool : public CParserTest
{
protected:
    struct SRun
    {
        int nExitCode = 0;
        std::string strOutput;
        std::string strErrors;
    };

    SRun Run(const std::string& strArguments, const char* pszOutput = "out") const
    {
        const std::string strCommand = "cd '" + m_Folder.GetFolder() +
                                       "' && " TELLUR_BIN_DIR "/tellur-parse " + strArguments +
                                       " >" + pszOutput + " 2>err";
        const int nStatus = system(strCommand.c_str()); // NOLINT(cert-env33-c): the test's own text
        return {WIFEXITED(nStatus) ? WEXITSTATUS(nStatus) : -1,
                pszOutput[0] == '/' ? "" : ReadBytes(m_Folder.Path("out")),
                ReadBytes(m_Folder.Path("err"))};
    }
};

TEST_F(CParseTool, PrintsTreesAsJson)
{
    Write("t.txt",
          "!all(i,f,s,v3,v4)!n() n() { all(-2,0.1,\"a\\\"\\\\\\t\xE9\",[1,2,3],[4,5,6,7]) }\n"
          "n() { } n();");
    const SRun run = Run("t.txt");
    EXPECT_EQ(run.nExitCode, 0);
    EXPECT_EQ(run.strOutput,
              "[\n {\"name\": \"n\", \"params\": [], \"block\": [\n"
              "  {\"name\": \"all\", \"params\": [{\"type\": \"int\", \"value\": -2}, "
              "{\"type\": \"float\", \"value\": 0.100000001}, "
              "{\"type\": \"string\", \"value\": \"a\\\"\\\\\\u0009\\u00e9\"}, "
              "{\"type\": \"vec3\", \"value\": [1, 2, 3]}, "
              "{\"type\": \"vec4\", \"value\": [4, 5, 6, 7]}]}\n ]},\n"
              " {\"name\": \"n\", \"params\": []},\n {\"name\": \"n\", \"params\": []}\n]\n");
    EXPECT_EQ(run.strErrors, "[CTCParse] its not c!: in file 't.txt' in line 2\nn() { } n();\n");
}

TEST_F(CParseTool, AnswersWithExitCodes)
{
    Write("empty.txt", "!n()");
    Write("bad.txt", "n()");
    Write("sub/big.txt", "!f(f)f(" + std::string(60, '9') + ")f(-" + std::string(60, '9') + ")");
    Write("-dash", "");

    const struct
    {
        const char* pszArguments = nullptr;
        SRun expected;
    } CASES[] = {
        {"empty.txt", {0, "[]\n", ""}},
        {"-- -dash", {0, "[]\n", ""}},
        {"bad.txt",
         {1,
          "",
          "[CTCParse] unknown keyword n: in file 'bad.txt' in line 1\nn()\n"
          "Parser: cant parse file 'bad.txt'\n"}},
        {"missing.txt", {1, "", "tellur-parse: cannot read 'missing.txt'\n"}},
        {"big.txt --root=sub",
         {0,
          "[\n {\"name\": \"f\", \"params\": [{\"type\": \"float\", \"value\": 1e999}]},\n"
          " {\"name\": \"f\", \"params\": [{\"type\": \"float\", \"value\": -1e999}]}\n]\n",
          ""}},
        {"sub/big.txt --root=.. -- x",
         {2, "", "tellur-parse: more than one file: x (try --help)\n"}},
        {"", {2, "", "tellur-parse: no file given (try --help)\n"}},
    };

    for (const auto& test : CASES)
    {
        SCOPED_TRACE(test.pszArguments);
        const SRun run = Run(test.pszArguments);
        EXPECT_EQ(run.nExitCode, test.expected.nExitCode);
        EXPECT_EQ(run.strOutput, test.expected.strOutput);
        EXPECT_EQ(run.strErrors, test.expected.strErrors);
    }
    const SRun full = Run("empty.txt", "/dev/full");
    EXPECT_EQ(full.nExitCode, 1);
    EXPECT_EQ(full.strErrors,
              "tellur-parse: standard output cannot be written: No space left on device\n");
}
