#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

class IPluginScript;
struct SToolOffer;

// The file that keeps the brushes of the tools: the blocks that the plug-in writes of them, and for
// those that nobody has changed since they were fitted to a level, a line that says so. Its last
// line says that it is whole.

// What a file says of the tools, all by function.
struct SKeptTools
{
    std::set<std::string> found; // those that the plug-in has taken
    // Of those that are as the rule left them the ready brush that each is, empty for none.
    std::map<std::string, std::string> fitted;
    std::map<std::string, std::string> masks; // paths, also of masks that are not there
};

enum class EToolFile
{
    None,   // there is no such file
    Read,   // all of it
    Faulty, // one line is logged for each fault; what could be used is with the plug-in
};

// Plays the file into the plug-in. offers: the tools that a file from before there was a last line
// has to have to count as whole. A mask that is not there is one line and no fault: its name is in
// kept, and the tool goes on without it until it is back.
EToolFile LoadToolBrushes(const std::string& strFile,
                          IPluginScript& script,
                          const std::vector<SToolOffer>& offers,
                          SKeptTools& kept);

// The declarations that such a file begins with.
std::string GetToolBrushDeclarations(IPluginScript& script);
// The lines behind a block.
std::string MakeFittedLine(const std::string& strFunction, const std::string& strReady);
std::string MakeLostMaskLine(const std::string& strFunction, const std::string& strMask);
// The last line of the file.
std::string MakeEndLine();
