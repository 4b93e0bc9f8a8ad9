#pragma once

#include <cstdint>
#include <string>

class IImage;

// The terrain-type bitmap that the plug-in paints, and what of it is saved. See IPlugin.h for how a
// host gets it. The host calls it on the UI thread, and nothing here calls back but StepPaint and
// SaveBitmap, which redraw and log.
//
// A recorder and an autosave look at GetBitmapRevision after each event and take GetBitmap where it
// is another one. A window asks WouldDropPainting before a mode becomes current, GetUnreadBitmap
// after, and GetUnsavedBitmap before it closes. StepPaint is what undo is while IsPainting
// (IPluginTools); it is not called during a drag.
class IPluginPainting
{
public:
    virtual ~IPluginPainting() = default;

    // The texels as they are after the last stroke, 32 bits each; borrowed until the next change,
    // null without a bitmap.
    virtual const IImage* GetBitmap() = 0;
    // Another number after each change of the bitmap; 0 without one. Leaving the mode and coming
    // back changes nothing.
    virtual uint64_t GetBitmapRevision() = 0;
    // The file whose bitmap is painted, as the draw dialog has it; empty before the first one.
    virtual std::string GetBitmapFile() = 0;
    // That file when there are strokes that are not in it yet, else empty.
    virtual std::string GetUnsavedBitmap() = 0;
    // The file that the mode which paints is on with and could not read; empty when there is none.
    virtual std::string GetUnreadBitmap() = 0;
    // Whether making that mode current now would drop strokes that are in no file yet, because the
    // draw dialog names another one.
    virtual bool WouldDropPainting(int32_t iModeId) = 0;
    // Writes the bitmap as it is painted now. False with one logged line, or without a bitmap.
    virtual bool SaveBitmap(const char* pszPath) = 0;
    // Takes back the last stroke that was painted, or paints it again. False when there is none.
    virtual bool StepPaint(bool bRedo) = 0;
};
