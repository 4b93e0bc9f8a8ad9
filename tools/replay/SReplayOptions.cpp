#include "tools/replay/SReplayOptions.h"

#include "host/FileSystem.h"

#include <iterator>
#include <utility>

bool SReplayOptions::Read(int nArguments, const char* const* ppszArguments, std::string& strFault)
{
    const SProgramOption known[] = {
        {"--out", &strOut},
        {"--log", &strLog},
        {"--stats", &strStats},
        {"--root", &strRoot},
        {"--plugin", &strPlugin},
        {"--declarations", nullptr, &bDeclarations},
        {"--plain-terrain", nullptr, &bPlainTerrain},
    };
    SCommandLine line;
    if (!line.Read(nArguments, ppszArguments, known, strFault))
    {
        return false;
    }
    eAnswer = line.eAnswer;
    if (eAnswer != EProgramAnswer::None || bDeclarations)
    {
        return true;
    }
    if (line.operands.empty())
    {
        strFault = "no script given";
        return false;
    }
    strScript = line.operands.front();
    if (line.operands.size() > 1 || strScript.empty())
    {
        strFault = "exactly one script, please";
        return false;
    }
    strFault = FindClash();
    return strFault.empty();
}

// Says which two options name one file, of which at least one is written; empty when none do.
std::string SReplayOptions::FindClash() const
{
    const std::pair<const char*, const std::string&> files[] = {
        {"--out", strOut},
        {"--log", strLog},
        {"--stats", strStats},
        {"the script", strScript},
        {"--plugin", strPlugin},
    };
    // The first three are written, and none of them may be another of the five.
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
           "                     [--root DIR] [--plugin PATH] [--plain-terrain]\n"
           "       tellur-replay --declarations [--plugin PATH] | --help | --version\n"
           "\n"
           "Plays a script of mouse and keyboard events into the terrain-editing plug-in.\n"
           "\n"
           "  --out FILE.height   write the final terrain, only when everything succeeded\n"
           "  --log FILE          write the log to FILE instead of stderr\n"
           "  --stats FILE.json   write what each drag visited and changed, and its times\n"
           "  --root DIR          folder for relative paths of brush files\n"
           "                      (default: $TELLUR_ROOT, else the current folder)\n"
           "  --plugin PATH       plug-in library (default: libtellur.so beside the program)\n"
           "  --plain-terrain     show the plug-in a terrain without direct access to its "
           "heights,\n"
           "                      as another host may; strokes give the same heights\n"
           "  --declarations      print the declarations that a script for the plug-in starts "
           "with\n"
           "  -h, --help          show this text\n"
           "  --version           show the version\n"
           "\n"
           "Exit code: 0 everything played; 1 an expectation or an operation failed; 2 usage,\n"
           "or a script that cannot be read or parsed.\n";
}
