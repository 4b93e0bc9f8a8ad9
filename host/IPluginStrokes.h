#pragma once

#include <cstddef>
#include <cstdint>

// How strokes feel and what they came to, for a host whose views draw them. See IPlugin.h for how a
// host gets it. The host calls it on the UI thread.
//
// Order of calls for one stroke: BeginSmoothing where it is to smooth; GetStrokeSpacing and
// HasFreePoints; the press;
// then for each position GetPressTile, to aim at, which may come from within the plug-in's
// PickTerrain, and the move; TakePointOutcome after the press, each move and the release, to tell
// the person; the release; EndSmoothing. SetPointForm before any of the events, for those that
// follow it. TakeDragStatistics before the press, to forget what was,
// and after the release. DropDrag in place of the release, after a call of the plug-in has ended in
// std::bad_alloc; a release that follows is ignored.

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
    Protected,  // all that the brush would change is protected
    NoExtent,   // the brush has no footprint: its extent is 0 or below
    NoWork,     // the tool has nothing to do with the numbers that it has
};

struct SPointOutcome
{
    EPointOutcome eKind = EPointOutcome::None;
    float fValue = 0.0F; // the fade distance, the vertical distance, or the height of the limit
};

// How the brush is put down at a point.
struct SPointForm
{
    float fPower = 1.0F; // 0 to 1, times the brush's power; of what is painted, too
    // The brush image turned or mirrored: an offset (x, z) on the ground times this matrix is the
    // one on the image. Rows of length 1. The footprint stays a square along the axes, so what is
    // turned beyond it is cut off. Not of what is painted.
    float fXX = 1.0F;
    float fXZ = 0.0F;
    float fZX = 0.0F;
    float fZZ = 1.0F;

    bool IsTurned() const { return fXX != 1.0F || fXZ != 0.0F || fZX != 0.0F || fZZ != 1.0F; }

    bool operator==(const SPointForm& other) const = default;
};

class IPluginStrokes
{
public:
    virtual ~IPluginStrokes() = default;

    // Terrain units between the points of a stroke that is not to depend on how often the mouse
    // reports: as far apart as leaves its crest even to a hundredth of its height, for the brush as
    // it is now, and further where points that overlap add up. Looks at the whole brush image. 0
    // where the moves of a drag are no path on the ground.
    virtual float GetStrokeSpacing() = 0;
    // Whether each move of the drag that comes stands for itself: what it does depends on its place
    // and on the heights or texels there, and not on the way that led to it. Moves at other places
    // may then be sent between them. False where the drag fades with its length, works from where
    // it was pressed, or at its release.
    virtual bool HasFreePoints() = 0;
    // The heights of before the press while a drag sculpts, by tiles of PRESS_TILE x PRESS_TILE
    // vertices that begin at multiples of it: row by row, PRESS_TILE of them a row, 0 beyond the
    // terrain. Null where the terrain still has those heights, off the terrain and without such a
    // drag. Borrowed until the plug-in is called again.
    static constexpr uint32_t PRESS_TILE = 64;
    virtual const float* GetPressTile(uint32_t uTileX, uint32_t uTileZ) = 0;
    // Gives the outcome of the latest point since the last query, and clears it.
    virtual SPointOutcome TakePointOutcome() = 0;
    // Gives the counters of the drags since the last query, and clears them.
    virtual SDragStatistics TakeDragStatistics() = 0;
    // For the points that come, until other ones are said. Tools whose work is not put down point
    // by point take the image and power as they are.
    virtual void SetPointForm(const SPointForm& form) = 0;
    // For the drag that comes next the current brush is one that smooths, with the extent and the
    // mask of the one at hand. EndSmoothing, after the drag, makes that one current again unless
    // another one has become current. False, and nothing happens, during a drag and without a tool.
    virtual bool BeginSmoothing() = 0;
    virtual void EndSmoothing() = 0;
    // Gives up the drag that sculpts, for when memory has run out inside one of its calls: heights
    // are those of before the press, no record is made, what the drag held is freed. Needs no
    // memory. False without such a drag.
    virtual bool DropDrag() = 0;
};
