#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace fs
{
class ifile;
}

// The library of defined brushes, and the brush of each tool, which a brush of the library replaces
// when it is taken. See IPlugin.h for how a host gets it. The host calls it on the UI thread:
// GetBrushFaults once after Initialize, to tell the person and to keep the file that the next save
// would cut; HasUnsavedBrushes and SaveBrushes before it closes; the others whenever it shows the
// library. Only IBrushTaker and IBrushSaveGuard are called back. What changes the library are
// keywords of scripts (IPluginScript), which tell brushes by their place in it, counted from 0:
// names need not differ.

// What reading the library of brushes could not use; the next save of the library leaves it out.
struct SBrushFault
{
    std::string strBrush; // its name; empty where the brush has none, or all of the file is meant
    int32_t iLine = 0;    // in the file; 0 where no one line is meant
    std::string strFault; // a phrase without a line feed
    bool bWholeFile = false; // nothing of the file could be read
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

// Hears what is taken from the library: the sizes of a brush may not be those for the level that is
// open.
class IBrushTaker
{
public:
    virtual ~IBrushTaker() = default;

    // A copy of the brush has become that of its tool and current, inside the call that did it,
    // whoever called. pszName: in the library, may be empty; pszFunction: as IPluginTools::TakeTool
    // has it. It may ask for the tool and call IPluginTools::SetToolSizes, and nothing else that
    // changes what is at hand.
    virtual void OnBrushTaken(const char* pszName, const char* pszFunction) = 0;
};

// Is asked when the file of the library is about to be replaced, whoever wants that: the panel, a
// script or the host.
class IBrushSaveGuard
{
public:
    virtual ~IBrushSaveGuard() = default;

    // False, after a logged line: the file has to stay, and the brushes are not saved.
    virtual bool MayReplaceBrushFile() = 0;
    // The file holds the library now.
    virtual void OnBrushFileSaved() = 0;
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
    // Who hears of brushes that are taken; borrowed until another one or null (nobody) is set.
    virtual void SetBrushTaker(IBrushTaker* pTaker) = 0;
    // Who is asked about saves; borrowed until another one or null (nobody) is set.
    virtual void SetBrushSaveGuard(IBrushSaveGuard* pGuard) = 0;
    // Appends the brush of a tool, as IPluginTools::TakeTool has it, as the keyword "tool_brush",
    // which IPluginScript::Play takes; what is at hand has no part in it. False for a tool without
    // a brush, for a brush that would not read back, and on a file fault.
    virtual bool WriteToolBrush(fs::ifile& file, const char* pszFunction) = 0;
    // All of them, by their places.
    virtual std::vector<SDefinedBrush> GetDefinedBrushes() = 0;
    // Another number whenever the library is another one than before, whoever changed it.
    virtual uint64_t GetBrushRevision() = 0;
    // The place of the brush whose copy is at hand, also where that was changed since; -1 when it
    // is no brush of the library.
    virtual int32_t FindBrushAtHand() = 0;
};
