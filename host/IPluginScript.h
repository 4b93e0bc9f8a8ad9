#pragma once

#include "host/Export.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace fs
{
class ifile;
}
class CTCPARSE_KEYWORD;
class IImage;

enum class EScriptResult : uint32_t
{
    Unknown, // not a keyword of the plug-in
    Done,
    Failed,
};

// What the drags since the last query did, summed over their operation points.
struct SDragStatistics
{
    uint64_t nPoints = 0;
    uint64_t nVisited = 0; // vertices offered to the function
    uint64_t nChanged = 0; // vertices written
    bool bLost = false;    // one found no memory: it did nothing, or was taken back
};

// What a point of a stroke came to.
enum class EPointOutcome : uint32_t
{
    None,       // there was no point
    Changed,    // it changed heights or texels
    NoGround,   // nothing under the cursor
    NoVertices, // none that can change under the brush
    Faded,      // the stroke is longer than its fade distance
    NoPower,    // the brush's power is 0
    NoShape,    // the brush image has no effect on any vertex
    Masked,     // the mask lets nothing through
    Band,       // all heights are as far from the point as the vertical distance, or farther
    Limit,      // all heights are at the level's highest, or at 0, and would go beyond
    Strongest,  // the stroke has changed what is here at least as much before
    Sideways,   // the mouse did not move up or down, which is all that counts
    NoLength,   // both ends are on one spot
    Same,       // what is here is what the point would make
};

struct SPointOutcome
{
    EPointOutcome eKind = EPointOutcome::None;
    float fValue = 0.0F; // the fade distance, the vertical distance, or the height of the limit
};

// What reading the library of brushes could not use; the next save of the library leaves it out.
struct SBrushFault
{
    std::string strBrush; // its name; empty where the brush has none, or all of the file is meant
    int32_t iLine = 0;    // in the file; 0 where no one line is meant
    std::string strFault; // a phrase without a line feed
};

// A number of the brush at hand that a key can change.
enum class EBrushValue : uint32_t
{
    Extent, // side of the footprint, terrain units; also of what is painted
    Power,
    Hardness,
    Amount, // of its function: the height that is added or set, or a whole number: the levels, the
            // half width of what is averaged
};

// Lets a script or a recorder reach the plug-in's own state. Implemented by the plug-in object and
// reached with dynamic_cast from the IPlugin pointer; a host that does not know it loses nothing.
class IPluginScript
{
public:
    virtual ~IPluginScript() = default;

    // Executes one keyword: brush, brush_file, use_brush, save_brushes, mode, auto_normals,
    // resolution, and those that paint, of which the first opens the draw dialog. pKeyword:
    // borrowed for the call. strWhy: one line without a line feed when the result is Failed.
    virtual EScriptResult Play(const CTCPARSE_KEYWORD* pKeyword, std::string& strWhy) = 0;
    // Writes the current state as the same keywords. False on a file fault.
    virtual bool WriteState(fs::ifile& file) = 0;
    // Reads and clears the counters.
    virtual SDragStatistics TakeDragStatistics() = 0;
    // Of the latest point since the last query; reads and clears it.
    virtual SPointOutcome TakePointOutcome() = 0;
    // Class name of the current brush's function, or the name of the one that paints; empty without
    // one.
    virtual std::string GetFunctionName() = 0;
    // Side of the footprint of the current brush, or of what is painted; terrain units, 0 without
    // one.
    virtual float GetBrushExtent() = 0;
    // Terrain units between the points of a stroke that is not to depend on how often the mouse
    // reports: as far apart as leaves its crest even to a hundredth of its height, for the brush as
    // it is now, and further where points that overlap add up. Looks at the whole brush image. 0
    // where the moves of a drag are no path on the ground.
    virtual float GetStrokeSpacing() = 0;
    // The heights of before the press while a drag sculpts, row by row, and how many they are; null
    // without such a drag. Borrowed until the plug-in is called again.
    virtual const float* GetPressHeights(size_t& nCount) = 0;
    // Whether the mode that sculpts is current.
    virtual bool IsTerraforming() = 0;
    // Whether a mask keeps the current brush off parts of the ground: it has one, switched on.
    virtual bool IsMaskActing() = 0;
    // Whether the mode that paints the terrain-type bitmap is current and has one.
    virtual bool IsPainting() = 0;
    // Writes the bitmap as it is painted now. False with one logged line, or without a bitmap.
    virtual bool SaveBitmap(const char* pszPath) = 0;
    // The bitmap's file when there are strokes that are not in it yet, else empty.
    virtual std::string GetUnsavedBitmap() = 0;
    // Whether making that mode current now would drop strokes that are in no file yet, because the
    // draw dialog names another one.
    virtual bool WouldDropPainting(int32_t iModeId) = 0;
    // The file that the mode which paints is on with and could not read; empty when there is none.
    virtual std::string GetUnreadBitmap() = 0;
    // Takes back the last stroke that was painted, or paints it again. False when there is none.
    virtual bool StepPaint(bool bRedo) = 0;
    // Gives up the drag that sculpts, for when memory has run out inside one of its calls: heights
    // are those of before the press, no record is made, what the drag held is freed. Needs no
    // memory. False without such a drag.
    virtual bool DropDrag() = 0;

    // The library of defined brushes: its file, and what was wrong with it when the plug-in read it
    // at its start.
    virtual const char* GetBrushFile() = 0;
    virtual const std::vector<SBrushFault>& GetBrushFaults() = 0;
    // Whether a brush was added to the library since it was saved last.
    virtual bool HasUnsavedBrushes() = 0;
    // As the panel's button. False after a logged line; the old file is then in its place.
    virtual bool SaveBrushes() = 0;

    // Another number after each change of the bitmap; 0 without one. Leaving the mode and coming
    // back changes nothing.
    virtual uint64_t GetBitmapRevision() = 0;
    // The file whose bitmap is painted, as the draw dialog has it; empty before the first one.
    virtual std::string GetBitmapFile() = 0;
    // The texels as they are after the last stroke, 32 bits each; borrowed until the next change,
    // null without a bitmap.
    virtual const IImage* GetBitmap() = 0;

    // What the keys of an editor do to the tool, as the panel would; an open panel follows. None of
    // these logs a refusal.
    //
    // The tool brush of a function, by class name, becomes current and the mode that sculpts is
    // switched on; a tool that is up stays. Null: the one that was up last, at first the one that
    // raises. False when there is none, or when the mode that is current stays.
    virtual bool TakeTool(const char* pszFunction) = 0;
    // 0 without a brush, no number where the function has no amount. SetBrushValue returns what the
    // value is now: power is 0 to 1, hardness 0 to 100, the extent half a cell to the terrain's
    // width, a height at most the terrain's, another amount 1 to 1000.
    virtual float GetBrushValue(EBrushValue eValue) = 0;
    virtual float SetBrushValue(EBrushValue eValue, float fValue) = 0;
    // Turns raising into lowering and back. fHeight: what the tool adds now. False for a function
    // that has no inverse, and without one.
    virtual bool InvertTool(float& fHeight) = 0;
    // Gives the height to the tool that sets one. False for another function, and without one.
    virtual bool SetToolHeight(float fHeight) = 0;
    // The picture that protects parts of the terrain from the current brush; empty: none.
    virtual std::string GetMaskPath() = 0;
    virtual bool IsMaskEnabled() = 0;
    virtual void EnableMask(bool bEnable) = 0;
    // Asks for the picture and switches it on. False without a brush and when cancelled.
    virtual bool ChooseMask() = 0;

    // Whether the current brush's function looks at Ctrl (only raise) and Alt (only lower).
    virtual bool HeedsMinMax() = 0;
    // For the drag that comes next the current brush is one that smooths, with the extent and the
    // mask of the one at hand. EndSmoothing, after the drag, makes that one current again unless
    // another one has become current. False, and nothing happens, during a drag and without a tool.
    virtual bool BeginSmoothing() = 0;
    virtual void EndSmoothing() = 0;
};
