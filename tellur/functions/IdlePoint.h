#pragma once

#include "host/HostTypes.h"
#include "host/IPluginStrokes.h"

class CVertDataSet;
class ITellurBrush;
class ITellurFunction;
class ITerrainModification;
class IVertexTargets;
struct SVertexRule;

// A point whose set is merged, as its function knows it. Everything is borrowed.
struct SDonePoint
{
    CVertDataSet& set;
    ITerrainModification& modification;
    ITellurBrush& brush;
    SVec3 center;
    float fStroke = 1.0F;   // weight of the stroke
    bool bFromDest = false; // which heights the set began with
};

// Notes what the latest point came to, for the host to ask.
void NoteOutcome(EPointOutcome eKind, float fValue = 0.0F);

// Runs a point as its rule tells. False, and nothing happens, where brush or session cannot.
struct SRulePoint
{
    const SExtents& box; // clipped footprint
    const SVec3& center;
    const SVertexRule& rule;
    IVertexTargets* pTargets;
};

bool RunPointInNumbers(ITerrainModification& modification,
                       const ITellurBrush& brush,
                       const SRulePoint& point);

// Writes the set of a point and counts it among what the drags did.
void MergePoint(ITerrainModification& modification, CVertDataSet& set, ITellurFunction* pFunction);

// Whether the session has written nothing for the latest point.
bool IsPointIdle();

// Finds out why a point was idle; looks at vertices only then. The set's weights are scratch
// afterwards.
void ExplainIdlePoint(const SDonePoint& point);

// Why there is no vertex under the brush.
EPointOutcome GetEmptyOutcome(const ITellurBrush& brush);

// Whether a weight of the set is not 0.
bool HasWeight(const CVertDataSet& set);
