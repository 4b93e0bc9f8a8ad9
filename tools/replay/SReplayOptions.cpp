#include "tools/replay/SReplayOptions.h"

#include "host/FileSystem.h"

#include <cstring>
#include <iterator>
#include <utility>

namespace
{

struct SValueOption
{
    const char* pszName;
    std::string SReplayOptions::*pValue;
};

constexpr SValueOption VALUE_OPTIONS[] = {
    {"--out", &SReplayOptions::strOut},
    {"--log", &SReplayOptions::strLog},
    {"--stats", &SReplayOptions::strStats},
    {"--root", &SReplayOptions::strRoot},
    {"--plugin", &SReplayOptions::strPlugin},
};

const SValueOption* FindValueOption(const char* pszArgument)
{
    for (const SValueOption& option : VALUE_OPTIONS)
    {
        if (std::strcmp(option.pszName, pszArgument) == 0)
        {
            return &option;
        }
    }
    return nullptr;
}

} // namespace

bool SReplayOptions::Read(int nArguments, char** ppszArguments, std::string& strFault)
{
    for (int i = 1; i < nArguments; ++i)
    {
        const std::string strArgument = ppszArguments[i];
        if (strArgument == "--help" || strArgument == "--declarations")
        {
            eAction = strArgument == "--help" ? EAction::ShowHelp : EAction::ShowDeclarations;
            return true;
        }
        if (const SValueOption* pOption = FindValueOption(ppszArguments[i]))
        {
            if (i + 1 == nArguments || *ppszArguments[i + 1] == '\0')
            {
                strFault = strArgument + " needs a value";
                return false;
            }
            this->*pOption->pValue = ppszArguments[++i];
        }
        else if (strArgument.size() > 1 && strArgument[0] == '-')
        {
            strFault = "unknown option " + strArgument;
            return false;
        }
        else if (!strScript.empty() || strArgument.empty())
        {
            strFault = "exactly one script, please";
            return false;
        }
        else
        {
            strScript = strArgument;
        }
    }
    if (strScript.empty())
    {
        strFault = "no script given";
        return false;
    }
    strFault = FindClash();
    return strFault.empty();
}

// What is written must be neither what is read nor written twice; empty when it is so.
std::string SReplayOptions::FindClash() const
{
    const std::pair<const char*, const std::string&> files[] = {
        {"--out", strOut},
        {"--log", strLog},
        {"--stats", strStats},
        {"the script", strScript},
        {"--plugin", strPlugin},
    };
    constexpr size_t WRITTEN = 3;
    for (size_t i = 0; i < WRITTEN; ++i)
    {
        for (size_t j = i + 1; j < std::size(files); ++j)
        {
            if (fs::same_file(files[i].second.c_str(), files[j].second.c_str()))
            {
                return files[i].second + ": " + files[i].first + " and " + files[j].first +
                       " are the same file";
            }
        }
    }
    return "";
}

const char* SReplayOptions::GetUsage()
{
    return "usage: tellur-replay SCRIPT [--out FILE.height] [--log FILE] [--stats FILE.json]\n"
           "                     [--root DIR] [--plugin PATH]\n"
           "       tellur-replay --declarations | --help\n"
           "\n"
           "Plays a script of mouse and keyboard events into the terrain-editing plug-in.\n"
           "\n"
           "  --out FILE.height   write the final terrain, only when everything succeeded\n"
           "  --log FILE          write the log to FILE instead of stderr\n"
           "  --stats FILE.json   write what each drag visited and changed, and its times\n"
           "  --root DIR          folder for relative paths of brush files (default: current)\n"
           "  --plugin PATH       plug-in library (default: libtellur.so beside the program)\n"
           "  --declarations      print the declarations that a script starts with\n"
           "\n"
           "Exit code: 0 everything played; 1 an expectation or an operation failed; 2 usage,\n"
           "or a script that cannot be read or parsed.\n";
}
