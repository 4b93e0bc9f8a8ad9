#pragma once

#include "host/HostTypes.h"

class CEngineHost;
class CGroundRuler;
class CStrokePath;
class CTerrain;
struct SSymmetry;

// Lines on the ground of one frame that show where a stroke will go: the path that is being set,
// the lines or the centre that images of a stroke lie about, and what is measured. Drawn as debug
// lines of the engine, which every view shows. Made for a frame.
class CGroundGuides
{
public:
    explicit CGroundGuides(CEngineHost& engine); // borrowed

    // pCursor: where the next knot would be; null for nowhere.
    void DrawPath(const CStrokePath& path, const SVec3* pCursor);
    void DrawRuler(const CGroundRuler& ruler);
    void DrawSymmetry(const SSymmetry& symmetry);
    // A frame below all ground, for a view from beside: flat ground has no height to be seen by.
    void DrawBase();

private:
    void DrawLine(const SVec3& from, const SVec3& to, int nPieces, const SColor& color);
    void DrawCross(const SVec3& at, float fArm, const SColor& color);
    void DrawRing(const SVec3& at, float fRadius, const SColor& color);
    SVec3 GetGround(float fX, float fZ) const;

    CEngineHost& m_Engine;
    const CTerrain* m_Terrain; // null without a level
};
