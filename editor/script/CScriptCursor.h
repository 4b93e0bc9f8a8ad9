#pragma once

#include "framework/core/IFrontEnd.h"
#include "host/HostTypes.h"

class World;

// Where the cursor of a script is and which keys it holds. The face of the program that plays the
// script owns it and answers picks and questions for keys from it.
class CScriptCursor
{
public:
    // What the cursor is over from here on: a horizontal position whose height is the terrain's at
    // the time of the pick (outside the terrain: nothing), an exact hit, or nothing.
    void PointAtPosition(float fX, float fZ);
    void PointAtHit(const SVec3& hit);
    void PointAtNothing();

    void SetKeys(bool bControl, bool bAlt);

    // pWorld: where heights are looked up; null picks nothing. False leaves hit as it is.
    bool Pick(World* pWorld, SVec3& hit) const;

    bool IsKeyDown(EKey eKey) const;

private:
    enum class ETarget
    {
        Nothing,
        Position,
        Hit,
    };

    ETarget m_Target = ETarget::Nothing;
    SVec3 m_Point; // a position has no y
    bool m_bControl = false;
    bool m_bAlt = false;
};
