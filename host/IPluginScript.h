#pragma once

#include <cstdint>
#include <string>

namespace fs
{
class ifile;
}
class CTCPARSE_KEYWORD;

enum class EScriptResult : uint32_t
{
    Unknown, // not a keyword of the plug-in
    Done,
    Failed,
};

// Lets a script or a recorder reach the plug-in's own state. See IPlugin.h for how a host gets it.
class IPluginScript
{
public:
    virtual ~IPluginScript() = default;

    // Executes one keyword: brush, brush_file, use_brush, save_brushes, mode, auto_normals,
    // resolution, and those that paint, of which the first opens the draw dialog. pKeyword:
    // borrowed for the call. strWhy: one line without a line feed when the result is Failed.
    virtual EScriptResult Play(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy) = 0;
    // Writes the current state as the same keywords. False on a file fault.
    virtual bool WriteState(fs::ifile& file) = 0;
};
