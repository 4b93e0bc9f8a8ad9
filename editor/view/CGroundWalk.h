#pragma once

#include "host/HostTypes.h"

class CCamera;
class CTerrain;
struct SFlyKeys;

// Takes a camera over the ground at the height of an eye, as who will stand there sees it. pTerrain
// may be null: nothing moves then. Owned by the input of a view; the camera is borrowed, and others
// may move it: the next step brings it back to the ground. UI thread.
class CGroundWalk
{
public:
    static constexpr float LEAST_EYE = 0.01F; // terrain units
    static constexpr float MOST_EYE = 10000.0F;

    // The camera comes down where it is, or at the edge it is beside, and looks level.
    void Start(CCamera& camera, const CTerrain* pTerrain, float fEyeHeight);

    void Stop() { m_Camera = nullptr; }

    bool IsOn() const { return m_Camera != nullptr; }

    // Turns the head: pixels to the right and downwards.
    void Look(float fStepX, float fStepY);
    // Forward, back, left and right; twice its height a second, with Shift four times as fast.
    // True when the camera has moved.
    bool Step(const CTerrain* pTerrain, const SFlyKeys& keys, float fSeconds);
    // Makes the eye higher or lower by notches of the wheel.
    void ChangeEye(const CTerrain* pTerrain, float fNotches);

    float GetEyeHeight() const { return m_EyeHeight; }

private:
    void Stand(const CTerrain* pTerrain, SVec3 position);

    CCamera* m_Camera = nullptr; // null: does not walk
    float m_EyeHeight = 1.8F;
};
