#include "editor/view/CStrokeLine.h"

#include <cmath>

void CStrokeLine::Start(const SVec3& from, const SVec3& sent, float fSpacing, float fLeast)
{
    m_bOn = true;
    m_bDirected = false;
    m_From = m_Point = from;
    m_Sent = sent;
    m_Spacing = static_cast<double>(fSpacing);
    m_Least = static_cast<double>(fLeast);
}

double CStrokeLine::GetDistance(const SVec3& point) const
{
    return (static_cast<double>(point.x) - m_From.x) * m_X +
           (static_cast<double>(point.z) - m_From.z) * m_Z;
}

SVec3 CStrokeLine::GetPointAt(double fDistance) const
{
    return {static_cast<float>(m_From.x + fDistance * m_X),
            0.0F,
            static_cast<float>(m_From.z + fDistance * m_Z)};
}

void CStrokeLine::Follow(const SVec3& to, const FnEmit& emit)
{
    if (!m_bDirected)
    {
        // As long as the cursor is near the beginning the line has no direction, and its point is
        // the cursor's. What was sent before counts as whole spacings along the direction it then
        // takes.
        const double fX = static_cast<double>(to.x) - m_From.x;
        const double fZ = static_cast<double>(to.z) - m_From.z;
        const double fLength = std::hypot(fX, fZ);
        if (!(fLength >= m_Least))
        {
            m_Point = to;
            return;
        }
        m_X = fX / fLength;
        m_Z = fZ / fLength;
        m_Step = std::llround(GetDistance(m_Sent) / m_Spacing);
        m_bDirected = true;
    }
    const double fDistance = GetDistance(to);
    m_Point = GetPointAt(fDistance);
    // emit may end the stroke and with it the line.
    while (m_bOn && fDistance >= static_cast<double>(m_Step + 1) * m_Spacing)
    {
        emit(GetPointAt(static_cast<double>(++m_Step) * m_Spacing));
    }
    while (m_bOn && fDistance <= static_cast<double>(m_Step - 1) * m_Spacing)
    {
        emit(GetPointAt(static_cast<double>(--m_Step) * m_Spacing));
    }
}
