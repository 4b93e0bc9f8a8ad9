#pragma once

#include "host/HostTypes.h"
#include "host/IPluginStrokes.h"

#include <cstdint>
#include <random>

// How the brush image lies on the ground.
enum class EBrushTurn : uint8_t
{
    None,
    Fixed,
    Along,  // its right side leads the way of the stroke
    Random, // another way at each point
};

// What a person has chosen about pen and turned brushes.
struct SFormSettings
{
    static constexpr float FULL_TURN = 360.0F;
    static constexpr float MOST_CURVE = 2.0F;

    bool bPen = true;       // the pressure of a pen scales the power
    float fPenCurve = 0.0F; // -MOST_CURVE (a light touch is strong already) to MOST_CURVE
    EBrushTurn eTurn = EBrushTurn::None;
    float fDegrees = 0.0F; // of a fixed turn, clockwise seen from above

    // The share of the power that a pressure of 0 to 1 stands for: the pressure to the power of
    // 2^curve, and a hundredth at least, since a pen that touches is to do something.
    float GetPower(float fPressure) const;
};

// Makes the forms of the points of one stroke after the other. Positions are device pixels of the
// view. The turns of a stroke at random follow from how many there were before. Owned by a view's
// stroke.
class CPointForms
{
public:
    explicit CPointForms(const SFormSettings& settings); // borrowed

    void SetPressure(float fPressure) { m_Pressure = fPressure; } // of what the hand does next

    // A stroke begins there. bPath: its tool works along the path, so the pressure counts.
    void Begin(float fX, float fY, bool bPath);
    // What follows lies on the straight path from where the hand was to there; the pressure changes
    // evenly along it.
    void GoTo(float fX, float fY);
    // The form of a point, which has ground under it unless pHit is null (terrain units).
    SPointForm Make(float fX, float fY, const SVec3* pHit);

    // Whether the form of a point depends on where the stroke leads from there.
    bool NeedsWay() const { return m_Settings.eTurn == EBrushTurn::Along; }

    // The stroke leads from one point of the ground to the other.
    void SetWay(const SVec3& from, const SVec3& to);

    void End() { m_Pressure = 1.0F; } // as that of a mouse

    // A form turned by an angle, clockwise seen from above, with full power.
    static SPointForm MakeTurned(float fDegrees);

private:
    void Turn(SPointForm& form, const SVec3* pHit);

    const SFormSettings& m_Settings;
    std::minstd_rand m_Random;
    uint32_t m_Strokes = 0;
    bool m_bPath = false;
    float m_Pressure = 1.0F;
    float m_FromX = 0.0F;
    float m_FromY = 0.0F;
    float m_FromPressure = 1.0F;
    float m_ToX = 0.0F;
    float m_ToY = 0.0F;
    float m_ToPressure = 1.0F;
    bool m_bLast = false; // there was a point on ground
    SVec3 m_Last;
    float m_WayX = 1.0F; // of the stroke on the ground, of length 1
    float m_WayZ = 0.0F;
};
