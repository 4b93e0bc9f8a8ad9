#include "editor/view/CPointForms.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr float LEAST_POWER = 0.01F;
constexpr float RADIANS = 0.017453292519943F;
constexpr float LEAST_STEP = 1e-3F; // terrain units; shorter ones lead nowhere

// fX, fZ: where the right side of the image is to point, of length 1.
void Point(SPointForm& form, float fX, float fZ)
{
    form.fXX = fX;
    form.fXZ = fZ;
    form.fZX = -fZ;
    form.fZZ = fX;
}

} // namespace

float SFormSettings::GetPower(float fPressure) const
{
    const float fPower = std::pow(std::clamp(fPressure, 0.0F, 1.0F), std::exp2(fPenCurve));
    return bPen ? std::max(fPower, LEAST_POWER) : 1.0F;
}

CPointForms::CPointForms(const SFormSettings& settings)
    : m_Settings(settings)
{
}

SPointForm CPointForms::MakeTurned(float fDegrees)
{
    SPointForm form;
    Point(form, std::cos(fDegrees * RADIANS), std::sin(fDegrees * RADIANS));
    return form;
}

void CPointForms::Begin(float fX, float fY, bool bPath)
{
    m_Random.seed(++m_Strokes);
    m_bPath = bPath;
    m_bLast = false;
    m_FromX = m_ToX = fX;
    m_FromY = m_ToY = fY;
    m_FromPressure = m_ToPressure = m_Pressure;
}

void CPointForms::GoTo(float fX, float fY)
{
    m_FromX = m_ToX;
    m_FromY = m_ToY;
    m_FromPressure = m_ToPressure;
    m_ToX = fX;
    m_ToY = fY;
    m_ToPressure = m_Pressure;
}

SPointForm CPointForms::Make(float fX, float fY, const SVec3* pHit)
{
    SPointForm form;
    if (m_bPath && m_Settings.bPen)
    {
        const float fLength = std::hypot(m_ToX - m_FromX, m_ToY - m_FromY);
        const float fShare =
            fLength > 0.0F
                ? std::clamp(std::hypot(fX - m_FromX, fY - m_FromY) / fLength, 0.0F, 1.0F)
                : 1.0F;
        const float fPressure = m_FromPressure + (m_ToPressure - m_FromPressure) * fShare;
        form.fPower = m_Settings.GetPower(fPressure);
    }
    Turn(form, pHit);
    return form;
}

void CPointForms::SetWay(const SVec3& from, const SVec3& to)
{
    const float fX = to.x - from.x;
    const float fZ = to.z - from.z;
    const float fLength = std::hypot(fX, fZ);
    if (fLength > LEAST_STEP)
    {
        m_WayX = fX / fLength;
        m_WayZ = fZ / fLength;
    }
}

void CPointForms::Turn(SPointForm& form, const SVec3* pHit)
{
    switch (m_Settings.eTurn)
    {
    case EBrushTurn::None:
        break;
    case EBrushTurn::Fixed:
    {
        const SPointForm turned = MakeTurned(m_Settings.fDegrees);
        Point(form, turned.fXX, turned.fXZ);
        break;
    }
    case EBrushTurn::Along:
        if (pHit != nullptr)
        {
            if (m_bLast)
            {
                SetWay(m_Last, *pHit);
            }
            m_Last = *pHit;
            m_bLast = true;
        }
        Point(form, m_WayX, m_WayZ);
        break;
    case EBrushTurn::Random:
    {
        const auto fSteps = static_cast<float>(m_Random() % 3600U); // tenths of a degree
        const SPointForm turned = MakeTurned(fSteps * 0.1F);
        Point(form, turned.fXX, turned.fXZ);
        break;
    }
    }
}
