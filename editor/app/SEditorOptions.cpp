#include "editor/app/SEditorOptions.h"

#include "host/FileSystem.h"

#include <iterator>

namespace
{

struct SOption
{
    const char* pszName;
    std::string SEditorOptions::*pText;
};

constexpr SOption OPTIONS[] = {
    {"--plugin", &SEditorOptions::strPlugin},
    {"--root", &SEditorOptions::strRoot},
    {"--screenshot", &SEditorOptions::strScreenshot},
    {"--play", &SEditorOptions::strPlay},
};

const SOption* FindOption(const std::string& strName)
{
    for (const SOption& option : OPTIONS)
    {
        if (strName == option.pszName)
        {
            return &option;
        }
    }
    return nullptr;
}

} // namespace

bool SEditorOptions::Read(int nArguments, char** ppszArguments, std::string& strFault)
{
    for (int i = 1; i < nArguments; ++i)
    {
        const std::string strArgument = ppszArguments[i];
        if (strArgument == "--help")
        {
            bHelp = true;
            continue;
        }
        if (!strArgument.starts_with("--"))
        {
            if (!strLevel.empty())
            {
                strFault = "more than one level: " + strArgument;
                return false;
            }
            strLevel = strArgument;
            continue;
        }
        const SOption* pOption = FindOption(strArgument);
        if (pOption == nullptr)
        {
            strFault = "unknown option " + strArgument;
            return false;
        }
        if (i + 1 == nArguments || *ppszArguments[i + 1] == '\0')
        {
            strFault = strArgument + " needs a value";
            return false;
        }
        this->*(pOption->pText) = ppszArguments[++i];
    }
    for (const std::string& strRead : {strLevel, strPlay, strPlugin})
    {
        if (fs::same_file(strScreenshot.c_str(), strRead.c_str()))
        {
            strFault = strScreenshot + ": --screenshot would replace what is read";
            return false;
        }
    }
    return true;
}

const char* SEditorOptions::GetUsage()
{
    return "usage: tellur-editor [LEVEL] [options]\n"
           "Opens a level (\".level\" or \".height\") and sculpts its terrain.\n"
           "\n"
           "  --plugin PATH      the terrain plug-in (default: libtellur.so beside the program)\n"
           "  --root DIR         where relative paths are looked for and written\n"
           "                     (default: $TELLUR_ROOT, else tellur in $XDG_DATA_HOME)\n"
           "  --screenshot FILE  save a picture of the window and quit\n"
           "  --play SCRIPT      play a replay script in the window and quit\n"
           "  --help             show this text\n"
           "\n"
           "Exit codes: 0 done; 1 a call of the script or the picture failed; 2 wrong usage, no\n"
           "display, or a plug-in, level or script that cannot be loaded.\n";
}
