#include "editor/view/CStrokePath.h"

#include <cmath>

void CStrokePath::Stop()
{
    m_bOn = false;
    m_bClosed = false;
    m_Knots.clear();
}

void CStrokePath::Add(const SVec3& knot)
{
    if (m_bOn && !m_bClosed)
    {
        m_Knots.push_back(knot);
    }
}

bool CStrokePath::Remove()
{
    if (m_bClosed)
    {
        m_bClosed = false;
        return true;
    }
    if (m_Knots.empty())
    {
        return false;
    }
    m_Knots.pop_back();
    return true;
}

bool CStrokePath::Close()
{
    constexpr size_t LEAST = 3;
    m_bClosed = m_Knots.size() >= LEAST;
    return m_bClosed;
}

std::vector<SVec3> CStrokePath::GetKnots() const
{
    std::vector<SVec3> knots = m_Knots;
    if (m_bClosed)
    {
        knots.push_back(m_Knots.front());
    }
    return knots;
}

void CStrokePath::Walk(const std::vector<SVec3>& knots, float fSpacing, const FnEmit& emit)
{
    if (knots.empty())
    {
        return;
    }
    emit(knots.front());
    double fLeft = fSpacing; // to the next point
    double fSince = 0.0;     // of the way since the last one
    for (size_t i = 1; i < knots.size(); ++i)
    {
        const SVec3& from = knots[i - 1];
        const double fX = static_cast<double>(knots[i].x) - from.x;
        const double fZ = static_cast<double>(knots[i].z) - from.z;
        const double fLength = std::hypot(fX, fZ);
        double fAt = 0.0;
        while (fSpacing > 0.0F && fLength - fAt >= fLeft)
        {
            fAt += fLeft;
            emit({static_cast<float>(from.x + fX * (fAt / fLength)),
                  0.0F,
                  static_cast<float>(from.z + fZ * (fAt / fLength))});
            fLeft = fSpacing;
            fSince = 0.0;
        }
        fSince += fLength - fAt;
        fLeft -= fLength - fAt;
    }
    if (fSince > 0.0) // the line ends between two points
    {
        emit(knots.back());
    }
}
