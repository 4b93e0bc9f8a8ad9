#include "editor/view/CStrokeSampler.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

constexpr double PARTS = 16.0; // candidates a pixel
constexpr int64_t PIXEL = 16;
constexpr double LIMIT = 32767.0; // pixels; also what a point of a view can hold

// Halves go up, also when a report that lies on the path misses them by a little: otherwise
// the position would depend on where the reports fall.
double RoundToPart(double fValue)
{
    return std::floor(fValue * PARTS + 0.51) / PARTS;
}

double GetDistance(const SVec3& a, const SVec3& b)
{
    return std::hypot(static_cast<double>(a.x) - b.x, static_cast<double>(a.z) - b.z);
}

} // namespace

struct CStrokeSampler::SPiece
{
    SPiece(const SPosition& from, const SPosition& to)
        : bAlongX(std::fabs(to.fX - from.fX) >= std::fabs(to.fY - from.fY))
        , fStart(bAlongX ? from.fX : from.fY)
        , fOther(bAlongX ? from.fY : from.fX)
    {
        const double fEnd = bAlongX ? to.fX : to.fY;
        const double fOtherEnd = bAlongX ? to.fY : to.fX;
        iSign = fEnd >= fStart ? 1 : -1;
        fSlope = fEnd != fStart ? (fOtherEnd - fOther) / (fEnd - fStart) : 0.0;
        // Turned by the sign, so that candidates count upwards whichever way the piece leads.
        iBase = static_cast<int64_t>(std::floor(iSign * fStart * PARTS));
        iCount = static_cast<int64_t>(std::floor(iSign * fEnd * PARTS)) - iBase;
    }

    // Candidate 1 to iCount; the piece's own start is the last one of the piece before.
    SPosition GetCandidate(int64_t i) const
    {
        const double fAlong = static_cast<double>(iSign * (iBase + i)) / PARTS;
        const double fAcross = RoundToPart(fOther + (fAlong - fStart) * fSlope);
        return bAlongX ? SPosition{fAlong, fAcross} : SPosition{fAcross, fAlong};
    }

    bool IsOnPixel(int64_t i) const { return (iBase + i) % PIXEL == 0; }

    bool bAlongX;
    double fStart; // along the longer axis
    double fOther; // along the other one
    double fSlope = 0.0;
    int64_t iSign = 1;
    int64_t iBase = 0; // sixteenths in the direction of the piece
    int64_t iCount = 0;
};

CStrokeSampler::CStrokeSampler(FnPick pick, FnEmit emit)
    : m_Pick(std::move(pick))
    , m_Emit(std::move(emit))
{
}

void CStrokeSampler::SetSpacing(float fSpacing)
{
    m_Spacing = std::isfinite(fSpacing) ? std::max(fSpacing, 0.0F) : 0.0F;
}

SStrokePoint CStrokeSampler::Press(float fX, float fY)
{
    m_Here = {};
    m_IsActive = true;
    Advance(fX, fY);
    m_Start = {RoundToPart(m_Here.fX), RoundToPart(m_Here.fY)};
    m_Wheel = 0;
    m_SentX = 0;
    m_SentY = 0;
    m_Last = {};
    m_Last.fX = static_cast<float>(m_Start.fX);
    m_Last.fY = static_cast<float>(m_Start.fY);
    m_Last.bHit = m_Pick(m_Last.fX, m_Last.fY, m_Last.hit);
    m_WaitingCount = 0;
    m_HasGap = false;
    m_HasGround = m_Last.bHit;
    m_Ground = m_Last.hit;
    return m_Last;
}

void CStrokeSampler::SendPress()
{
    if (m_IsActive && m_Last.bHit)
    {
        Emit(m_Last);
    }
}

void CStrokeSampler::Continue(float fX, float fY, const SVec3& ground)
{
    if (m_IsActive && Advance(fX, fY))
    {
        m_WaitingCount = 0;
        m_HasGap = false;
        m_Last.bHit = m_HasGround = true;
        m_Last.hit = m_Ground = ground;
    }
}

void CStrokeSampler::Move(float fX, float fY, int iWheel)
{
    const SPosition from = m_Here;
    if (!m_IsActive || !Advance(fX, fY))
    {
        return;
    }
    m_Wheel += iWheel;
    if (m_Spacing > 0.0F)
    {
        // The end of a report is no place to look: it would depend on the rate.
        Walk(SPiece(from, m_Here));
    }
    else if (!IsSent())
    {
        m_WaitingCount = 0;
        EmitHere();
    }
}

void CStrokeSampler::Release(float fX, float fY)
{
    Move(fX, fY);
    // Candidates of the last pixel still wait when it has not come to its end.
    Search();
    if (m_IsActive && m_Spacing <= 0.0F && !IsSent())
    {
        EmitHere();
    }
    m_IsActive = false;
}

bool CStrokeSampler::Advance(float fX, float fY)
{
    if (!std::isfinite(fX) || !std::isfinite(fY))
    {
        return false;
    }
    m_Here = {std::clamp(static_cast<double>(fX), -LIMIT, LIMIT),
              std::clamp(static_cast<double>(fY), -LIMIT, LIMIT)};
    return true;
}

void CStrokeSampler::Walk(const SPiece& piece)
{
    for (int64_t i = 1; i <= piece.iCount && m_IsActive; ++i)
    {
        m_Waiting[m_WaitingCount++] = piece.GetCandidate(i);
        if (piece.IsOnPixel(i) || m_WaitingCount == m_Waiting.size())
        {
            Search();
        }
    }
}

// Sends what is due among the candidates that wait; none waits any more afterwards.
void CStrokeSampler::Search()
{
    const size_t nEnd = std::exchange(m_WaitingCount, 0);
    size_t nFirst = 0;
    SStrokePoint point;
    // Only the last candidate that waits is asked whether anything is due. If it is, the first one
    // that is due is found by halving, and what waits behind it is searched again from there.
    while (nFirst < nEnd && m_IsActive && IsDue(m_Waiting[nEnd - 1], point))
    {
        size_t nDue = nEnd - 1;
        while (nFirst < nDue)
        {
            const size_t nMiddle = (nFirst + nDue) / 2;
            SStrokePoint middle;
            if (IsDue(m_Waiting[nMiddle], middle))
            {
                nDue = nMiddle;
                point = middle;
            }
            else
            {
                nFirst = nMiddle + 1;
            }
        }
        nFirst = nDue + 1;
        Emit(point);
    }
    m_HasGap = m_HasGap || (nFirst < nEnd && !point.bHit);
}

// Fills in position and hit.
bool CStrokeSampler::IsDue(const SPosition& at, SStrokePoint& point) const
{
    point.fX = static_cast<float>(at.fX);
    point.fY = static_cast<float>(at.fY);
    point.bHit = m_Pick(point.fX, point.fY, point.hit);
    if (!point.bHit || !m_Last.bHit)
    {
        return point.bHit;
    }
    // Behind sky the first ground is sent from half a spacing on.
    const double fLeast = m_HasGap ? 0.5 * m_Spacing : m_Spacing;
    return GetDistance(point.hit, m_Last.hit) >= fLeast &&
           (!m_HasGround || GetDistance(point.hit, m_Ground) >= 0.5 * m_Spacing);
}

void CStrokeSampler::Emit(SStrokePoint point)
{
    // Of the whole movement, so that what rounding leaves over is carried on.
    const auto iWholeX = static_cast<int>(std::floor(point.fX - m_Start.fX + 0.5));
    const auto iWholeY = static_cast<int>(std::floor(point.fY - m_Start.fY + 0.5));
    point.iStepX = iWholeX - std::exchange(m_SentX, iWholeX);
    point.iStepY = iWholeY - std::exchange(m_SentY, iWholeY);
    point.iWheel = std::exchange(m_Wheel, 0);
    m_HasGap = false;
    m_Last = point;
    m_Emit(point);
    // The stroke may have moved the ground under the point; the next point is measured from there,
    // too.
    m_HasGround = m_IsActive && m_Spacing > 0.0F && m_Pick(point.fX, point.fY, m_Ground);
}

void CStrokeSampler::EmitHere()
{
    SStrokePoint point;
    point.fX = static_cast<float>(RoundToPart(m_Here.fX));
    point.fY = static_cast<float>(RoundToPart(m_Here.fY));
    point.bHit = m_Pick(point.fX, point.fY, point.hit);
    Emit(point);
}

bool CStrokeSampler::IsSent() const
{
    return m_Wheel == 0 && static_cast<double>(m_Last.fX) == RoundToPart(m_Here.fX) &&
           static_cast<double>(m_Last.fY) == RoundToPart(m_Here.fY);
}
