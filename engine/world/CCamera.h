#pragma once

#include "host/Export.h"
#include "host/HostTypes.h"
#include "host/World.h"

// The camera of one view: a position and two angles in degrees. Yaw 0 looks north, towards smaller
// z, and grows clockwise seen from above; pitch 0 is level, above 0 looks up. Own axes: x to the
// right, y up, z backward. Owned by the camera list.
class TELLUR_API CCamera final : public ICamera
{
public:
    // Terrain units along the terrain's y axis.
    void StepVertical(float fStep) { m_Position.y += fStep; }

    void Strafe(const SVec3& offset); // terrain units in the camera's own axes
    void Dolly(float fDistance);      // terrain units, positive is forward
    void Turn(float fDegrees);        // about the vertical

    // Goes to the side of the target that (fX, fZ) names, at its present horizontal distance and
    // height, and looks at it. (0, 0) only looks at it.
    void LookFrom(const SVec3& target, float fX, float fZ);

    // Pitch is kept within -90 to 90, yaw within 0 to 360.
    void SetAngles(float fYaw, float fPitch);

    void SetPosition(const SVec3& position) { m_Position = position; }

    const SVec3& GetPosition() const { return m_Position; }

    float GetYaw() const { return m_Yaw; }

    float GetPitch() const { return m_Pitch; }

    SVec3 GetForward() const; // unit length
    SVec3 GetRight() const;
    SVec3 GetUp() const;

private:
    SVec3 m_Position;
    float m_Yaw = 0.0F;
    float m_Pitch = 0.0F;
};
