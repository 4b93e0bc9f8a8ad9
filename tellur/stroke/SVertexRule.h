#pragma once

#include "host/ITerrainAccess.h"
#include "tellur/stroke/ITellurFunction.h"

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

// The targets of EVertexRule::Move.
class IVertexTargets
{
public:
    virtual ~IVertexTargets() = default;

    // A point begins over the vertices of a box; nothing of it is written yet.
    virtual ETargets Begin(const SGridBox& /*box*/) { return ETargets::Ready; }

    // Asked once for each row of the box, in order. pHeights: y of iCount vertices from column iX
    // on. Where pTargets is y the vertex stays. Vertices below 0 get any number.
    virtual void GetTargets(int iX, int iZ, int iCount, const float* pHeights, float* pTargets) = 0;
};
