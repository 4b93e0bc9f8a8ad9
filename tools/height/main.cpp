#include "host/Program.h"
#include "tools/height/Convert.h"
#include "tools/height/Info.h"
#include "tools/height/Picture.h"

// Converts height maps, tells what they are and draws them.

namespace
{

enum EExitCode
{
    EXIT_DONE = 0,
    EXIT_BAD_FILE = 1,
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
    }
    return false;
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
        return ReportWrongLine("tellur-height", strFault);
    }
    if (options.eAnswer != EProgramAnswer::None)
    {
        return PrintAnswer(options.eAnswer, "tellur-height", SHeightOptions::GetUsage());
    }
    return Run(options) ? EXIT_DONE : EXIT_BAD_FILE;
}
