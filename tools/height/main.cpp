#include "host/Program.h"
#include "tools/height/Convert.h"
#include "tools/height/Info.h"
#include "tools/height/Picture.h"

#include <cstdio>

// Converts height maps, tells what they are and draws them.

namespace
{

enum EExitCode
{
    EXIT_DONE = 0,
    EXIT_BAD_FILE = 1,
    EXIT_USAGE = 2,
};

bool Run(const SHeightOptions& options)
{
    switch (options.eAction)
    {
    case SHeightOptions::EAction::Convert:
        return Convert(options);
    case SHeightOptions::EAction::Picture:
        return DrawPicture(options);
    case SHeightOptions::EAction::Info:
        return PrintInfo(options);
    default:
        std::fputs(SHeightOptions::GetUsage(), stdout);
        return FlushStandardOutput("tellur-height");
    }
}

} // namespace

int main(int nArguments, char** ppszArguments)
{
    GuardStandardStreams();
    DropWritesOnSignals();
    SHeightOptions options;
    std::string strFault;
    if (!options.Read(nArguments, ppszArguments, strFault))
    {
        std::fprintf(
            stderr, "tellur-height: %s\nTry \"tellur-height --help\".\n", strFault.c_str());
        return EXIT_USAGE;
    }
    return Run(options) ? EXIT_DONE : EXIT_BAD_FILE;
}
