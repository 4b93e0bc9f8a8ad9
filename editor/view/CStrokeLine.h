#pragma once

#include "host/HostTypes.h"

#include <cstdint>
#include <functional>

// Keeps a stroke on a straight line of the ground, seen from above: points lie whole spacings from
// where the line begins, whatever path the cursor takes beside it. Owned by the stroke of a view.
class CStrokeLine
{
public:
    // A point on the line; its height is not set.
    using FnEmit = std::function<void(const SVec3& point)>;

    // fSpacing, fLeast: terrain units, above 0. The line leads towards the first point that is
    // fLeast away from its beginning. sent: of the stroke's last point, which counts as sent.
    void Start(const SVec3& from, const SVec3& sent, float fSpacing, float fLeast);

    void Stop() { m_bOn = false; }

    bool IsOn() const { return m_bOn; }

    // Sends what lies between the last point and the one on the line next to `to`.
    void Follow(const SVec3& to, const FnEmit& emit);

    // The point on the line next to the cursor, or the cursor's while the line leads nowhere yet;
    // its height is not set.
    const SVec3& GetPoint() const { return m_Point; }

private:
    double GetDistance(const SVec3& point) const; // along the line
    SVec3 GetPointAt(double fDistance) const;

    bool m_bOn = false;
    bool m_bDirected = false;
    SVec3 m_From;
    SVec3 m_Sent;
    SVec3 m_Point;
    double m_Spacing = 1.0;
    double m_Least = 1.0;
    double m_X = 0.0; // direction
    double m_Z = 0.0;
    int64_t m_Step = 0; // spacings from the beginning to what was sent last
};
