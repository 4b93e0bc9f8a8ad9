#include "host/FileSystem.h"
#include "host/Program.h"
#include "parser/TCParseFile.h"
#include "tools/parse/CJsonWriter.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

// Shows a text file of typed keyword calls as JSON.

static constexpr const char* USAGE = "usage: tellur-parse [--root DIR] FILE\n";

static constexpr const char* HELP =
    "Reads FILE, a text file of typed keyword calls, and prints its tree as JSON.\n"
    "\n"
    "  --root DIR   folder that relative paths start from (default: $TELLUR_ROOT, else the\n"
    "               current folder)\n"
    "  --help       show this text\n"
    "\n"
    "Messages go to standard error. Exit code: 0; 1 when FILE has an error or cannot be read,\n"
    "and nothing is printed then; 2 when the command line is wrong.\n";

enum EExitCode
{
    exit_done = 0,
    exit_failed = 1,
    exit_usage = 2,
};

struct SCommandLine
{
    const char* pszFile = nullptr;
    const char* pszRoot = getenv("TELLUR_ROOT");
    bool bHelp = false;
};

static bool ReadCommandLine(int nArguments, char** ppszArguments, SCommandLine& commandLine)
{
    bool bOptions = true;
    for (int i = 1; i < nArguments; ++i)
    {
        const char* pszArgument = ppszArguments[i];
        if (bOptions && strcmp(pszArgument, "--help") == 0)
        {
            commandLine.bHelp = true;
            return true;
        }
        if (bOptions && strcmp(pszArgument, "--") == 0)
        {
            bOptions = false;
        }
        else if (bOptions && strcmp(pszArgument, "--root") == 0)
        {
            if (++i == nArguments)
            {
                return false;
            }
            commandLine.pszRoot = ppszArguments[i];
        }
        else if ((bOptions && pszArgument[0] == '-') || commandLine.pszFile != nullptr)
        {
            return false;
        }
        else
        {
            commandLine.pszFile = pszArgument;
        }
    }
    return commandLine.pszFile != nullptr;
}

static bool Print(const std::string& strText)
{
    fwrite(strText.data(), 1, strText.size(), stdout);
    return FlushStandardOutput("tellur-parse");
}

int main(int argc, char** argv)
{
    GuardStandardStreams();
    SCommandLine commandLine;
    if (!ReadCommandLine(argc, argv, commandLine))
    {
        fputs(USAGE, stderr);
        return exit_usage;
    }
    if (commandLine.bHelp)
    {
        return Print(std::string(USAGE) + HELP) ? exit_done : exit_failed;
    }
    fs::set_user_root(commandLine.pszRoot);
    ETCParseStatus eStatus = tcparse_done;
    const std::unique_ptr<CTCPARSE_KEYWORD> pTree(
        TCParseFile(commandLine.pszFile, nullptr, nullptr, nullptr, nullptr, nullptr, &eStatus));
    if (eStatus == tcparse_unreadable)
    {
        fprintf(stderr, "tellur-parse: cannot read '%s'\n", commandLine.pszFile);
    }
    if (eStatus != tcparse_done)
    {
        return exit_failed;
    }
    return Print(CJsonWriter().Write(pTree.get())) ? exit_done : exit_failed;
}
