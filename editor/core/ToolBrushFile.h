#pragma once

#include <map>
#include <set>
#include <string>

class IPluginScript;

// The file that keeps the brushes of the tools: the blocks that the plug-in writes of them, and for
// those that nobody has changed since they were fitted to a level, a line that says so.

// By function, as it is read: the ready brush that the tool's brush is, empty for none.
using FittedTools = std::map<std::string, std::string>;

enum class EToolFile
{
    None,   // there is no such file
    Read,   // all of it
    Faulty, // one line is logged for each fault; what could be used is with the plug-in
};

// Plays the file into the plug-in. found: every tool that the file has; fitted: those that are as
// the rule left them.
EToolFile LoadToolBrushes(const std::string& strFile,
                          IPluginScript& script,
                          std::set<std::string>& found,
                          FittedTools& fitted);

// The declarations that such a file begins with.
std::string GetToolBrushDeclarations(IPluginScript& script);
// The line behind a block.
std::string MakeFittedLine(const std::string& strFunction, const std::string& strReady);
