#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The library of defined brushes. See IPlugin.h for how a host gets it. The host calls it on the UI
// thread: GetBrushFaults once after Initialize, to tell the person and to keep the file that the
// next save would cut; HasUnsavedBrushes and SaveBrushes before it closes. Nothing here calls back.

// What reading the library of brushes could not use; the next save of the library leaves it out.
struct SBrushFault
{
    std::string strBrush; // its name; empty where the brush has none, or all of the file is meant
    int32_t iLine = 0;    // in the file; 0 where no one line is meant
    std::string strFault; // a phrase without a line feed
};

class IPluginBrushes
{
public:
    virtual ~IPluginBrushes() = default;

    virtual const char* GetBrushFile() = 0; // of the library, as it was named; borrowed, static
    // What was wrong with that file when the plug-in read it at its start; borrowed.
    virtual const std::vector<SBrushFault>& GetBrushFaults() = 0;
    virtual bool HasUnsavedBrushes() = 0; // true: one was added since the library was saved last
    // As the panel's button. False after a logged line; the old file is then in its place.
    virtual bool SaveBrushes() = 0;
};
