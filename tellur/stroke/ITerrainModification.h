#pragma once

#include "host/HostTypes.h"

#include <cstddef>
#include <optional>

class CVertDataSet;
class IHeightRows;
class ITellurBrush;
class ITellurFunction;
class IVertexTargets;
class Terrain;
struct SBrushShape;
struct SVertexRule;

// What the merge of a set came to.
struct SMergeResult
{
    size_t nChanged = 0;   // vertices written
    size_t nVisited = 0;   // vertices offered to the function
    bool bAtLimit = false; // all of them were at fLimit before and would have gone beyond
    float fLimit = 0.0F;   // the height limit or 0
};

// An operation point that is told in numbers. All is borrowed for the call.
struct SPointInNumbers
{
    const SExtents& box; // clipped footprint
    const SVec3& center;
    const SBrushShape& shape;
    const SVertexRule& rule;
    IVertexTargets* pTargets = nullptr; // with EVertexRule::Move
};

// One drag of terrain editing as brushes and functions see it: the heights twice, the source as
// they were when the drag began and the destination as edited so far. Heights in terrain units,
// buffers row-major (index z * size x + x); a negative height is a vertex that is not editable.
// view, flags, point and the extra words are the host's and only passed on.
class ITerrainModification
{
public:
    virtual ~ITerrainModification() = default;

    // False without a brush and while a drag is in progress. terrain and brush are borrowed until
    // End. A missing terrain is reported but tolerated: the drag then changes nothing.
    virtual bool Start(
        ViewId view, uint32_t uFlags, ViewPoint point, Terrain* pTerrain, ITellurBrush* pBrush) = 0;
    // Ends the drag and hands one undo record to the host when a height changed.
    virtual void End(ViewId view, uint32_t uFlags, ViewPoint point) = 0;
    virtual bool IsInProgress() const = 0;
    virtual int OnMouseMove(
        ViewId view, uint32_t uFlags, ViewPoint point, uintptr_t uExtra1, uintptr_t uExtra2) = 0;
    // Draws the function's own preview during the drag. True when it drew one.
    virtual bool Render(const SVec3* pPickedPoint) = 0;

    virtual SExtents& GetExtents(SExtents& extents) const = 0;
    virtual void
    SetExtents(const SExtents& extents) = 0; // footprint of the latest point, unclipped
    virtual ITellurBrush* GetBrush() const = 0;
    virtual SExtents& GetTerrainExtents(SExtents& extents) const = 0;
    virtual float GetXSize() const = 0; // -1 without a terrain, with one logged line
    virtual float GetYSize() const = 0; // the height limit
    virtual float GetZSize() const = 0;

    // Heights of single vertices: -1 for indices outside the buffers and without buffers, with one
    // logged line. SetDstHeight is kept as it always was: it writes another element than the one at
    // (iX, iZ), and functions change heights by SetVerts or RunPoint alone.
    virtual float GetSrcHeight(int iX, int iZ) const = 0;
    virtual void SetDstHeight(int iX, int iZ, float fHeight) = 0;
    virtual float GetDstHeight(int iX, int iZ) const = 0;
    virtual int GetBufferSizeX() const = 0;
    virtual int GetBufferSizeZ() const = 0;

    // Fill the set with the editable vertices inside the box (clipped to the terrain) and their
    // source or destination heights. set: the caller's.
    virtual void GetVerts(const SExtents& box, CVertDataSet& set) = 0;
    virtual void GetDstVerts(const SExtents& box, CVertDataSet& set) = 0;
    // Heights change by this operation or by RunPoint, which does the same: merges the set by the
    // function's rule, clamps to 0 and the height limit, writes the destination buffer and shows it
    // on the terrain. Nothing without a terrain or a function, with one logged line, and after
    // GiveUp.
    virtual std::optional<SMergeResult> SetVerts(CVertDataSet& set, ITellurFunction* pFunction) = 0;

    // GetVerts or GetDstVerts, weights, function and SetVerts in one pass, with the same bits.
    // Nothing, and no line says why, where it cannot be done so: a set has to do it then.
    virtual std::optional<SMergeResult> RunPoint(const SPointInNumbers& /*point*/)
    {
        return std::nullopt;
    }

    // The heights by rows, for loops over many vertices; null without any. Borrowed until End.
    virtual const IHeightRows* GetSrcRows() const = 0;
    virtual const IHeightRows* GetDstRows() const = 0;

    // There is no memory to go on: the heights are those of Start again, one line says so, and the
    // rest of the drag changes nothing.
    virtual void GiveUp() = 0;

    // Whether a vertex, which lies on the terrain, is one that no stroke changes. SetVerts and
    // RunPoint leave it alone as if its weight were 0.
    virtual bool IsProtected(int /*iX*/, int /*iZ*/) const { return false; }
};
