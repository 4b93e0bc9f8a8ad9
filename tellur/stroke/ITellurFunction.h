#pragma once

#include "host/HostTypes.h"

#include <cstdint>

namespace fs
{
class ifile;
}
class CRTTIObject;
class CTCPARSE_KEYWORD;
class ITellurBrush;
class ITerrainModification;

// How a candidate height competes with the one that the drag has already reached. Lets the session
// merge a whole set in one loop; ByCall asks MergeHeight for each vertex.
enum class EMergeRule : uint32_t
{
    ByCall,
    Strongest, // the candidate when it is at least as far from the source as the destination is
    Candidate, // always the candidate
};

// What the moves of a drag are to a function, and what points of it that overlap do to each other.
enum class EStrokePath : uint32_t
{
    None,      // the moves are no path on the ground
    Strongest, // each vertex keeps the strongest point
    AddedUp,   // each point works on what those before have left
};

// What a brush does to the heights under it. Owned by its brush, or by the function container as a
// prototype. Arguments are borrowed for the call. UI thread.
class ITellurFunction
{
public:
    virtual ~ITellurFunction() = default;
    virtual const char* GetClassName() const = 0; // the name in files
    virtual int Start(ITerrainModification* pModification,
                      ITellurBrush* pBrush,
                      ViewId view,
                      uint32_t uFlags,
                      ViewPoint point) = 0;
    virtual int End(ITerrainModification* pModification,
                    ITellurBrush* pBrush,
                    ViewId view,
                    uint32_t uFlags,
                    ViewPoint point) = 0;
    virtual int OnMouseMove(ITerrainModification* pModification,
                            ITellurBrush* pBrush,
                            ViewId view,
                            uint32_t uFlags,
                            ViewPoint point,
                            uintptr_t uExtra1,
                            uintptr_t uExtra2) = 0;
    // Decides whether a vertex is written: the candidate, or the destination height to leave it.
    virtual float MergeHeight(float fSrc, float fDst, float fCandidate) const = 0;
    // Draws the function's own preview; true when it did. pModification: null while hovering.
    virtual bool Render(ITerrainModification* pModification,
                        ITellurBrush* pBrush,
                        const SVec3* pPickedPoint) = 0;
    virtual CRTTIObject* GetRTTIObject() = 0;
    virtual const CRTTIObject* GetRTTIObject() const = 0;
    virtual bool SetCursor() = 0;
    virtual ITellurFunction* Clone() const = 0; // owned by the caller
    // Writes the function's block, every line indented by iIndent blanks. False on failure.
    virtual bool Save(fs::ifile& file, int iIndent) const = 0;
    // pBlock: first node of the parsed block, null for an empty one. Always true.
    virtual bool Load(const CTCPARSE_KEYWORD* pBlock) = 0;

    // What the points of a drag are to it, which tells a host how to send them.
    virtual EStrokePath GetStrokePath() const { return EStrokePath::None; }

    // Whether it takes its mode from the keys that are held: Ctrl only raises, Alt only lowers.
    virtual bool HeedsModeKeys() const { return false; }

    // Gives the ends of what the drag lays so far, terrain units. False where a function has none,
    // and as long as the cursor was not over the ground.
    virtual bool GetEnds(SVec3& /*first*/, SVec3& /*second*/) const { return false; }

    // Must agree with MergeHeight.
    virtual EMergeRule GetMergeRule() const { return EMergeRule::ByCall; }
};
