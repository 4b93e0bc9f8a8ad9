#pragma once

#include <cstdint>
#include <string>
#include <vector>

// What reading the library of brushes could not use; the next save of the library leaves it out.
struct SBrushFault
{
    std::string strBrush; // its name; empty where the brush has none, or all of the file is meant
    int32_t iLine = 0;    // in the file; 0 where no one line is meant
    std::string strFault; // a phrase without a line feed
};

// The library of defined brushes. See IPlugin.h for how a host gets it.
class IPluginBrushes
{
public:
    virtual ~IPluginBrushes() = default;

    virtual const char* GetBrushFile() = 0; // of the library
    // What was wrong with that file when the plug-in read it at its start.
    virtual const std::vector<SBrushFault>& GetBrushFaults() = 0;
    // Whether a brush was added to the library since it was saved last.
    virtual bool HasUnsavedBrushes() = 0;
    // As the panel's button. False after a logged line; the old file is then in its place.
    virtual bool SaveBrushes() = 0;
};
