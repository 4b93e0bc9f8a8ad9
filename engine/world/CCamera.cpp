#include "engine/world/CCamera.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace
{

constexpr float DEGREE = std::numbers::pi_v<float> / 180.0F;

SVec3 Moved(const SVec3& from, const SVec3& axis, float fBy)
{
    return {from.x + axis.x * fBy, from.y + axis.y * fBy, from.z + axis.z * fBy};
}

} // namespace

void CCamera::Strafe(const SVec3& offset)
{
    m_Position = Moved(m_Position, GetRight(), offset.x);
    m_Position = Moved(m_Position, GetUp(), offset.y);
    m_Position = Moved(m_Position, GetForward(), -offset.z);
}

void CCamera::Dolly(float fDistance)
{
    m_Position = Moved(m_Position, GetForward(), fDistance);
}

void CCamera::Turn(float fDegrees)
{
    SetAngles(m_Yaw + fDegrees, m_Pitch);
}

void CCamera::LookFrom(const SVec3& target, float fX, float fZ)
{
    const float fLength = std::hypot(fX, fZ);
    const float fDistance = std::hypot(m_Position.x - target.x, m_Position.z - target.z);
    if (fLength > 0.0F)
    {
        m_Position.x = target.x + fX / fLength * fDistance;
        m_Position.z = target.z + fZ / fLength * fDistance;
    }
    const float fAheadX = target.x - m_Position.x;
    const float fAheadZ = target.z - m_Position.z;
    // Yaw 0 looks towards smaller z.
    SetAngles(std::atan2(fAheadX, -fAheadZ) / DEGREE,
              std::atan2(target.y - m_Position.y, fDistance) / DEGREE);
}

void CCamera::SetAngles(float fYaw, float fPitch)
{
    m_Yaw = fYaw - std::floor(fYaw / 360.0F) * 360.0F;
    m_Pitch = std::clamp(fPitch, -90.0F, 90.0F);
}

SVec3 CCamera::GetForward() const
{
    const float fLevel = std::cos(m_Pitch * DEGREE);
    return {std::sin(m_Yaw * DEGREE) * fLevel,
            std::sin(m_Pitch * DEGREE),
            -std::cos(m_Yaw * DEGREE) * fLevel};
}

SVec3 CCamera::GetRight() const
{
    return {std::cos(m_Yaw * DEGREE), 0.0F, std::sin(m_Yaw * DEGREE)};
}

SVec3 CCamera::GetUp() const
{
    // The direction forward of a pitch that is 90 degrees higher.
    const float fTilt = -std::sin(m_Pitch * DEGREE);
    return {std::sin(m_Yaw * DEGREE) * fTilt,
            std::cos(m_Pitch * DEGREE),
            -std::cos(m_Yaw * DEGREE) * fTilt};
}
