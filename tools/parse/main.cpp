#include "host/CommandLine.h"
#include "host/FileSystem.h"
#include "host/Program.h"
#include "parser/TCParseFile.h"
#include "tools/parse/TreeJson.h"

#include <cstdio>
#include <cstdlib>
#include <memory>

// Shows a text file of typed keyword calls as JSON.

static constexpr const char* USAGE =
    "usage: tellur-parse [--root DIR] FILE\n"
    "Reads FILE, a text file of typed keyword calls, and prints its tree as JSON.\n"
    "\n"
    "  --root DIR   folder that relative paths start from (default: $TELLUR_ROOT, else the\n"
    "               current folder)\n"
    "  -h, --help   show this text\n"
    "  --version    show the version\n"
    "\n"
    "Messages go to standard error. Exit code: 0; 1 when FILE has an error or cannot be read,\n"
    "and nothing is printed then; 2 when the command line is wrong.\n";

enum EExitCode
{
    exit_done = 0,
    exit_failed = 1,
};

static bool Print(const std::string& strText)
{
    fwrite(strText.data(), 1, strText.size(), stdout);
    return FlushStandardOutput("tellur-parse");
}

int main(int argc, char** argv)
{
    GuardStandardStreams();
    const char* pszRoot = getenv("TELLUR_ROOT");
    std::string strRoot = pszRoot != nullptr ? pszRoot : "";
    const SProgramOption known[] = {{"--root", &strRoot}};
    SCommandLine line;
    std::string strFault;
    if (!line.Read(argc, argv, known, strFault))
    {
        return ReportWrongLine("tellur-parse", strFault);
    }
    if (line.eAnswer != EProgramAnswer::None)
    {
        return PrintAnswer(line.eAnswer, "tellur-parse", USAGE);
    }
    if (line.operands.size() != 1)
    {
        return ReportWrongLine("tellur-parse",
                               line.operands.empty() ? "no file given"
                                                     : "more than one file: " + line.operands[1]);
    }
    const char* pszFile = line.operands.front().c_str();
    fs::set_user_root(strRoot.c_str());
    ETCParseStatus eStatus = tcparse_done;
    const std::unique_ptr<CTCPARSE_KEYWORD> pTree(
        TCParseFile(pszFile, nullptr, nullptr, nullptr, nullptr, nullptr, &eStatus));
    // The parser has said what is wrong with a text, but nothing of a file that cannot be read.
    if (eStatus == tcparse_unreadable)
    {
        fprintf(stderr, "tellur-parse: cannot read '%s'\n", pszFile);
    }
    if (eStatus != tcparse_done)
    {
        return exit_failed;
    }
    return Print(MakeTreeJson(pTree.get())) ? exit_done : exit_failed;
}
