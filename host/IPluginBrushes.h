#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The library of defined brushes. See IPlugin.h for how a host gets it. The host calls it on the UI
// thread: GetBrushFaults once after Initialize, to tell the person and to keep the file that the
// next save would cut; HasUnsavedBrushes and SaveBrushes before it closes; the others whenever it
// shows the library. Nothing here calls back. What changes the library are keywords of scripts
// (IPluginScript), which tell brushes by their place in it, counted from 0: names need not differ.

// What reading the library of brushes could not use; the next save of the library leaves it out.
struct SBrushFault
{
    std::string strBrush; // its name; empty where the brush has none, or all of the file is meant
    int32_t iLine = 0;    // in the file; 0 where no one line is meant
    std::string strFault; // a phrase without a line feed
};

// A brush of the library as a window shows it.
struct SDefinedBrush
{
    std::string strName;
    std::string strFunction; // as a person reads it: "Set height"; empty without one
    std::string strImage;    // the image's path as the library has it; empty without one
    float fExtent = 0.0F;    // side of the footprint, terrain units
    // The image: uSide rows of uSide bytes, top row first, from 0 (no effect) to 255 (full).
    // Borrowed until the library is another one; null and 0 without one.
    const uint8_t* pPixels = nullptr;
    uint32_t uSide = 0;
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
    // All of them, by their places.
    virtual std::vector<SDefinedBrush> GetDefinedBrushes() = 0;
    // Another number whenever the library is another one than before, whoever changed it.
    virtual uint64_t GetBrushRevision() = 0;
};
