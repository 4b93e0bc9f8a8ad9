#pragma once

#include <cstdint>
#include <string>

namespace fs
{
class ifile;
}
class CTCPARSE_KEYWORD;

// Lets a script player or a recorder reach the plug-in's own state. See IPlugin.h for how a host
// gets it. The host calls it on the UI thread, from Initialize to NOTIFY_HOST_GOES.
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

    // Executes one keyword: brush, brush_file, use_brush, save_brushes, mode, auto_normals,
    // resolution, and those that paint, of which the first opens the draw dialog. pKeyword:
    // borrowed for the call. strWhy: one line without a line feed when the result is Failed.
    virtual EScriptResult Play(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy) = 0;
    // Appends the current state as the same keywords. file: borrowed, open for writing. False on a
    // file fault.
    virtual bool WriteState(fs::ifile& file) = 0;
};
