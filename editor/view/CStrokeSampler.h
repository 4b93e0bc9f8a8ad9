#pragma once

#include "host/HostTypes.h"

#include <array>
#include <cstddef>
#include <functional>

// One position of a drag that is sent on.
struct SStrokePoint
{
    float fX = 0.0F; // device pixels of the view, whole sixteenths
    float fY = 0.0F;
    bool bHit = false; // whether there is ground under it
    SVec3 hit;         // terrain units, as picked before the point was sent; only with bHit
    int iStepX = 0;    // pixels since the point before; all steps add up to the whole movement
    int iStepY = 0;
    int iWheel = 0; // notches since the point before
};

// Makes a stroke independent of how often the mouse reports. It walks along the straight path from
// one reported position to the next and sends a point on each time the ground under it lies a
// spacing away from the point sent before; what is left at the end of a report waits for the next
// one, and at the release it is less than a spacing and stays. Sky is skipped: the first ground
// after it is sent, unless it is less than half a spacing away.
//
// Each point is sent before the next one is searched, on the ground as the stroke has left it by
// then. Ground that the stroke has just moved under the cursor is no progress: seen from what is
// now under the point sent before, a point must be at least half a spacing away too.
//
// Candidates are the points of the path whose coordinate along the longer axis of their piece is a
// whole sixteenth of a pixel. The ground is looked at where that coordinate is a whole pixel, and
// if something is due there, bisection finds the first of the candidates since the last look. None
// of these places depends on where the reports fall.
//
// Owned by the view. Knows no time; allocates nothing while a drag runs.
class CStrokeSampler
{
public:
    // Ground under a position in device pixels. False over sky.
    using FnPick = std::function<bool(float fX, float fY, SVec3& hit)>;
    // Sends one point on. May edit the ground, change the spacing and cancel the drag.
    using FnEmit = std::function<void(const SStrokePoint& point)>;

    CStrokeSampler(FnPick pick, FnEmit emit);

    // Horizontal, terrain units. May change during a drag. 0, below and no number: switched off,
    // each position is sent as it comes.
    void SetSpacing(float fSpacing);

    // Begins a drag. The point is returned, not sent: it belongs to the press. A drag that still
    // runs is forgotten.
    SStrokePoint Press(float fX, float fY);

    // Sends the point of the press, if there is ground: a press without a move leaves something.
    void SendPress();

    // iWheel: notches; they go along with the next point. A drag that stands still sends nothing.
    // Without a drag, and for a position that is no number, nothing happens.
    void Move(float fX, float fY, int iWheel = 0);

    // Lets the path go on from there; nothing on the way is sent. ground: where a point was sent
    // last, by somebody else.
    void Continue(float fX, float fY, const SVec3& ground);

    // Moves there and ends the drag. While it is switched off, the last position is sent unless it
    // was already.
    void Release(float fX, float fY);

    // The drag ends and nothing is sent any more; also from within FnEmit.
    void Cancel() { m_IsActive = false; }

    bool IsActive() const { return m_IsActive; }

private:
    struct SPosition
    {
        double fX = 0.0;
        double fY = 0.0;
    };

    // The candidates of one straight piece of the path.
    struct SPiece;

    bool Advance(float fX, float fY);
    void Walk(const SPiece& piece);
    void Search();
    bool IsDue(const SPosition& at, SStrokePoint& point) const;
    void Emit(SStrokePoint point);
    void EmitHere();
    bool IsSent() const;

    FnPick m_Pick;
    FnEmit m_Emit;
    float m_Spacing = 0.0F;
    bool m_IsActive = false;
    bool m_HasGap = false; // sky since the last point
    int m_Wheel = 0;       // not sent yet
    int m_SentX = 0;       // sums of the steps of this drag
    int m_SentY = 0;
    SPosition m_Start;
    SPosition m_Here;                    // the last report, as it came
    std::array<SPosition, 64> m_Waiting; // candidates since the last one that was looked at
    size_t m_WaitingCount = 0;
    SStrokePoint m_Last;
    bool m_HasGround = false;
    SVec3 m_Ground; // under the last point after it was sent
};
