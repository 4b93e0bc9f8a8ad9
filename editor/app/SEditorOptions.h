#pragma once

#include "host/CommandLine.h"

#include <string>

// The command line of the editor. Paths as they were given; empty for an option left out.
struct SEditorOptions
{
    std::string strLevel;
    std::string strPlugin;
    std::string strRoot;
    std::string strScreenshot;
    std::string strPlay;
    std::string strLanguage;
    EProgramAnswer eAnswer = EProgramAnswer::None;

    // False for a line that makes no sense; strFault then says why in one line.
    bool Read(int nArguments, const char* const* ppszArguments, std::string& strFault);

    static const char* GetUsage(); // of several lines
};
