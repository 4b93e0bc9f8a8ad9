#pragma once

#include "engine/elevation/HeightExport.h"
#include "engine/elevation/SExportForm.h"
#include "engine/elevation/SImportOptions.h"
#include "host/CommandLine.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// The command line of the height-map converter. Numbers that were not given are 0.
struct SHeightOptions
{
    enum class EAction : uint8_t
    {
        Convert,
        Picture,
        Info,
    };

    EProgramAnswer eAnswer = EProgramAnswer::None;
    EAction eAction = EAction::Convert;
    std::vector<std::string> inputs; // one to convert, one or more to draw or to tell about
    std::string strOutput;
    SImportOptions import; // its scale and byte order are the output's when the input is a
                           // ".height" file
    SExportOptions output; // what is said of the output alone
    std::string strTarget; // a row of the table of targets; empty: OUT is as its name says
    uint32_t uTiles = 0;   // a side, with a target
    std::optional<ELevelUnit> levelUnit; // with one that counts metres
    bool bFitGiven = false;              // --fit or --size was given
    uint32_t uPixels = 0;                // of a picture's longer side
    // Both or none: where a picture is seen from, and what lies in its middle.
    std::optional<SVec3> eye;
    std::optional<SVec3> target;

    // Answers false for a line that makes no sense; strFault then says why, without a line feed.
    bool Read(int nArguments, const char* const* ppszArguments, std::string& strFault);

    static const char* GetUsage(); // of several lines
};
