#pragma once

#include "host/Export.h"

#include <span>
#include <string>
#include <vector>

// The command line of every program. Options and operands come in any order, a value behind its
// option or as "--name=value"; after "--" everything is an operand. All programs know -h, --help
// and --version. Implemented by the engine library.

struct SProgramOption
{
    const char* pszName = "";     // with its dashes
    std::string* pText = nullptr; // takes the value, never an empty one; null: there is none
    bool* pGiven = nullptr;       // for an option without value
};

// What a program is asked for in place of its work.
enum class EProgramAnswer
{
    None,
    Help,
    Version,
};

struct SCommandLine
{
    std::vector<std::string> operands;
    EProgramAnswer eAnswer = EProgramAnswer::None; // the first one that is asked for ends the line

    // Reads the words behind the program's name. False for a line with an option that is not known,
    // lacks its value or has one too many; strFault then says so, without a line feed. Of an option
    // that is given twice the last one counts.
    TELLUR_API bool Read(int nArguments,
                         const char* const* ppszArguments,
                         std::span<const SProgramOption> known,
                         std::string& strFault);
};

// Prints the answer and gives the program's exit code: 0, or 1 when the text did not arrive.
TELLUR_API int PrintAnswer(EProgramAnswer eAnswer, const char* pszProgram, const char* pszUsage);

TELLUR_API const char* GetProgramVersion(); // as --version prints it, "0.1.0"; static

// Prints the fault as one line on stderr and gives the exit code of a wrong command line, 2.
TELLUR_API int ReportWrongLine(const char* pszProgram, const std::string& strFault);
