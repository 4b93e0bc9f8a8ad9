#include "host/CommandLine.h"

#include "host/Program.h"

#include <getopt.h>

#include <algorithm>
#include <cctype>
#include <cstdio>

namespace
{

constexpr int EXIT_WRONG_LINE = 2;

constexpr const char* ANSWERS[] = {"-h", "--help", "--version"};

// What getopt_long returns; the program's own options follow.
enum EOptionCode
{
    operand_code = 1, // as the "-" in front of the short options asks for
    help_code = 'h',
    version_code = 0x100,
    first_code = 0x101,
};

// With the list's end, a row of zeros.
std::vector<option> MakeTable(std::span<const SProgramOption> known)
{
    std::vector<option> table = {{"help", no_argument, nullptr, help_code},
                                 {"version", no_argument, nullptr, version_code}};
    // Counted in the order of the rows, so that a code leads back to its row.
    int iCode = first_code;
    for (const SProgramOption& row : known)
    {
        table.push_back({row.pszName + 2,
                         row.pText != nullptr ? required_argument : no_argument,
                         nullptr,
                         iCode++});
    }
    table.push_back({});
    return table;
}

// What is wrong with the option that getopt_long has read from the word; empty when it is fine.
std::string FindFault(int iCode, const std::string& strWord, std::span<const SProgramOption> known)
{
    const bool bLong = strWord.starts_with("--");
    const std::string strName = bLong ? strWord.substr(0, strWord.find('=')) : strWord;
    // getopt_long takes the beginning of a name, too: scripts that use it would break with the next
    // option that begins alike.
    if (std::find(std::begin(ANSWERS), std::end(ANSWERS), strName) == std::end(ANSWERS) &&
        std::none_of(known.begin(),
                     known.end(),
                     [&](const SProgramOption& row) { return strName == row.pszName; }))
    {
        return "unknown option " + strName;
    }
    if (iCode == '?')
    {
        return strName + " takes no value";
    }
    const bool bEmpty = optarg != nullptr && *optarg == '\0';
    return iCode == ':' || bEmpty ? strName + " needs a value" : "";
}

} // namespace

bool SCommandLine::Read(int nArguments,
                        const char* const* ppszArguments,
                        std::span<const SProgramOption> known,
                        std::string& strFault)
{
    const std::vector<option> table = MakeTable(known);
    // It changes none of them unless it may put operands last.
    auto* const* ppszWords = const_cast<char* const*>(ppszArguments);
    optind = 0; // begins anew
    while (true)
    {
        // The word that is looked at now; while optind is 0 that is the first one.
        const int iWord = std::max(optind, 1);
        // The '-' gives operands in their order, the ':' tells a missing value from an unknown
        // option.
        const int iCode = ::getopt_long(nArguments, ppszWords, "-:h", table.data(), nullptr);
        if (iCode == -1)
        {
            // What stands behind a "--".
            operands.insert(operands.end(), ppszWords + optind, ppszWords + nArguments);
            return true;
        }
        if (iCode == operand_code)
        {
            operands.emplace_back(optarg);
            continue;
        }
        strFault = FindFault(iCode, ppszWords[iWord], known);
        if (!strFault.empty())
        {
            return false;
        }
        if (iCode < first_code)
        {
            // The program will only answer, so the rest of the line is not looked at.
            eAnswer = iCode == help_code ? EProgramAnswer::Help : EProgramAnswer::Version;
            return true;
        }
        const SProgramOption& row = known[static_cast<size_t>(iCode - first_code)];
        if (row.pText != nullptr)
        {
            *row.pText = optarg;
        }
        else if (row.pGiven != nullptr)
        {
            *row.pGiven = true;
        }
    }
}

int PrintAnswer(EProgramAnswer eAnswer, const char* pszProgram, const char* pszUsage)
{
    if (eAnswer == EProgramAnswer::Version)
    {
        std::printf("%s %s\n", pszProgram, GetProgramVersion());
    }
    else
    {
        std::fputs(pszUsage, stdout);
    }
    return FlushStandardOutput(pszProgram) ? 0 : 1;
}

const char* GetProgramVersion()
{
    return TELLUR_VERSION;
}

int ReportWrongLine(const char* pszProgram, const std::string& strFault)
{
    std::string strLine = strFault; // it may name a file whose name has several lines
    std::replace_if(
        strLine.begin(),
        strLine.end(),
        [](char character) { return std::iscntrl(static_cast<unsigned char>(character)) != 0; },
        '?');
    std::fprintf(stderr, "%s: %s (try --help)\n", pszProgram, strLine.c_str());
    return EXIT_WRONG_LINE;
}
