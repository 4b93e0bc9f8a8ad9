#pragma once

#include "host/CommandLine.h"

#include <string>

// The command line of the script player. Paths as they were given; empty for an option left out.
struct SReplayOptions
{
    EProgramAnswer eAnswer = EProgramAnswer::None;
    bool bDeclarations = false; // are asked for, and nothing is played
    bool bPlainTerrain = false; // the plug-in gets no direct access to the heights
    std::string strScript;
    std::string strOut;
    std::string strLog;
    std::string strStats;
    std::string strRoot;
    std::string strPlugin;

    // Answers false for a line that makes no sense, or that would write over what it reads;
    // strFault then says why in one line. To be called before roots are set, since relative paths
    // are those of the current folder.
    bool Read(int nArguments, const char* const* ppszArguments, std::string& strFault);

    static const char* GetUsage(); // of several lines

private:
    std::string FindClash() const;
};
