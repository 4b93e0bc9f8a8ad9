#pragma once

#include "host/ScriptKeywords.h"

#include <cstdint>
#include <string>
#include <vector>

namespace fs
{
class ifile;
}
class CTCPARSE_KEYWORD;

// Lets a script player or a recorder reach the plug-in's own state, by keywords that are the
// plug-in's own. See IPlugin.h for how a host gets it. The host calls it on the UI thread, from
// Initialize to NOTIFY_HOST_GOES; the two lists of keywords may be asked for at any time.
//
// Playing: each keyword in file order, between the events that the script sends, with the level
// open that it is meant for. Recording: WriteState before each press; where the text is another one
// than last time it is a piece of the script. Playing what was written gives the same state, bit
// for bit. Play may make a mode current, show a dialog, save a file, and change the level's
// resolution, so it calls the host as a command does. WriteState changes nothing.

enum class EScriptResult : uint32_t
{
    Unknown, // not a keyword of the plug-in
    Done,
    Failed,
};

class IPluginScript
{
public:
    virtual ~IPluginScript() = default;

    // What Play takes, in the order in which scripts declare it. A script that uses another one is
    // refused before it reaches the plug-in, as is one with other arguments; names that the host
    // has itself are the host's. The texts are static.
    virtual std::vector<SScriptKeyword> GetKeywords() = 0;
    // What may stand in the blocks of those. A host declares it, too, and finds the files.
    virtual std::vector<SScriptKeyword> GetBlockKeywords() = 0;
    // Executes one keyword. pKeyword: borrowed for the call; names of files are full paths where
    // the host has found the file beside the script. strWhy: one line without a line feed when the
    // result is Failed.
    virtual EScriptResult Play(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy) = 0;
    // Appends the current state as the same keywords. file: borrowed, open for writing. False on a
    // file fault.
    virtual bool WriteState(fs::ifile& file) = 0;
};
