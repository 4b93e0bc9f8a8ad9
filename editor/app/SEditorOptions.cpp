#include "editor/app/SEditorOptions.h"

#include "editor/core/CTextCatalogue.h"
#include "host/FileSystem.h"

bool SEditorOptions::Read(int nArguments, const char* const* ppszArguments, std::string& strFault)
{
    const SProgramOption known[] = {
        {"--plugin", &strPlugin},
        {"--root", &strRoot},
        {"--screenshot", &strScreenshot},
        {"--play", &strPlay},
        {"--language", &strLanguage},
    };
    SCommandLine line;
    if (!line.Read(nArguments, ppszArguments, known, strFault))
    {
        return false;
    }
    eAnswer = line.eAnswer;
    if (eAnswer != EProgramAnswer::None)
    {
        return true;
    }
    if (line.operands.size() > 1)
    {
        strFault = "more than one level: " + line.operands[1];
        return false;
    }
    if (!strLanguage.empty() && GetCatalogueFile(strLanguage).empty())
    {
        strFault = "no name of a language: " + strLanguage;
        return false;
    }
    strLevel = line.operands.empty() ? "" : line.operands.front();
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
           "                     (default: $TELLUR_ROOT, else tellur in $XDG_DATA_HOME or in\n"
           "                     ~/.local/share)\n"
           "  --screenshot FILE  save a picture of the window and quit\n"
           "  --play SCRIPT      play a replay script in the window and quit\n"
           "  --language NAME    the texts of data/texts/NAME.texts instead of the English ones\n"
           "                     (default: those of the locale, where there are any)\n"
           "  -h, --help         show this text\n"
           "  --version          show the version\n"
           "\n"
           "Exit codes: 0 done; 1 a call of the script or the picture failed; 2 wrong usage, no\n"
           "display, or a plug-in, level, script or language that cannot be loaded.\n";
}
