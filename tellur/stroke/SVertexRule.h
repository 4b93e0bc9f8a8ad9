#pragma once

#include "host/ITerrainAccess.h"
#include "tellur/stroke/ITellurFunction.h"

#include <cstddef>

// What a function does to one vertex at one operation point, in numbers: y is its height, w its
// weight. With it the session runs a point in one pass over the vertices, with the bits that the
// function's own loop over a set gives.
enum class EVertexRule : uint32_t
{
    Raise, // y + w * fStroke * fAmount
    Pull,  // y + (fAmount - y) * w * fStroke
    Move,  // y + (target - y) * w * fStroke, each vertex has a target of its own
};

struct SVertexRule
{
    EVertexRule eRule = EVertexRule::Raise;
    EMergeRule eMerge = EMergeRule::Strongest; // not ByCall
    bool bFromDest = false;                    // y is the destination's height, else the source's
    float fStroke = 1.0F;
    float fAmount = 0.0F;
    // Pull and Move: what is not allowed leaves y. Pull looks at where y lies, Move at the step.
    bool bRaise = true;
    bool bLower = true;
    // The change is multiplied by max(0, (fBandDistance - |y - fBandCenter|) / fBandDistance).
    bool bBand = false;
    float fBandDistance = 0.0F;
    float fBandCenter = 0.0F;
};

enum class ETargets : uint32_t
{
    Ready,
    Refused, // the point has to be run with a set
    NoMemory,
};

// Vertices of a point in one tile.
struct SPointPart
{
    int iX = 0; // first column and row
    int iZ = 0;
    int iColumns = 0;
    int iRows = 0;
    const float* pHeights = nullptr;
};

struct STargetRows
{
    const float* pFirst = nullptr; // of the part's first vertex
    size_t nPitch = 0;             // floats from row to row
};

// The targets of EVertexRule::Move.
class IVertexTargets
{
public:
    virtual ~IVertexTargets() = default;

    // A point begins over the vertices of a box; nothing of it is written yet.
    virtual ETargets Begin(const SGridBox& /*box*/) { return ETargets::Ready; }

    // The targets of a part of the box, asked for once. part.pHeights: y, PITCH floats a row;
    // pScratch: room for PITCH floats a row, for targets that are not at hand. Where the target is
    // y the vertex stays; vertices below 0 get any number. Borrowed until the next call; eight
    // floats before and behind the result are readable.
    static constexpr int PITCH = 64;
    virtual STargetRows GetTargets(const SPointPart& part, float* pScratch) = 0;
};
