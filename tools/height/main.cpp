#include "tools/height/Convert.h"
#include "tools/height/Picture.h"

#include <cstdio>

// Makes height maps of elevation models, and pictures of height maps.

namespace
{

enum EExitCode
{
    EXIT_DONE = 0,
    EXIT_BAD_FILE = 1,
    EXIT_USAGE = 2,
};

} // namespace

int main(int nArguments, char** ppszArguments)
{
    SHeightOptions options;
    std::string strFault;
    if (!options.Read(nArguments, ppszArguments, strFault))
    {
        std::fprintf(
            stderr, "tellur-height: %s\nTry \"tellur-height --help\".\n", strFault.c_str());
        return EXIT_USAGE;
    }
    if (options.eAction == SHeightOptions::EAction::ShowHelp)
    {
        std::fputs(SHeightOptions::GetUsage(), stdout);
        return EXIT_DONE;
    }
    const bool bDone = options.eAction == SHeightOptions::EAction::Convert ? Convert(options)
                                                                           : DrawPicture(options);
    return bDone ? EXIT_DONE : EXIT_BAD_FILE;
}
