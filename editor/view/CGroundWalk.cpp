#include "editor/view/CGroundWalk.h"

#include "editor/view/CViewNavigator.h"
#include "editor/view/ViewMoves.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CCamera.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr float DEGREES_A_PIXEL = 0.25F;
constexpr float HEIGHTS_A_SECOND = 2.0F;
constexpr float FAST = 4.0F;
constexpr float LONGEST_STEP = 0.25F; // seconds
constexpr float EYE_FACTOR = 1.15F;   // a notch
constexpr float STEEPEST_LOOK = 89.0F;

} // namespace

void CGroundWalk::Start(CCamera& camera, const CTerrain* pTerrain, float fEyeHeight)
{
    m_Camera = &camera;
    m_EyeHeight = std::clamp(fEyeHeight, LEAST_EYE, MOST_EYE);
    camera.SetAngles(camera.GetYaw(), 0.0F);
    Stand(pTerrain, camera.GetPosition());
}

void CGroundWalk::Stand(const CTerrain* pTerrain, SVec3 position)
{
    if (pTerrain == nullptr)
    {
        return;
    }
    const SVec3 size = pTerrain->GetSize();
    position.x = std::clamp(position.x, 0.0F, size.x);
    position.z = std::clamp(position.z, 0.0F, size.z);
    position.y = std::max(pTerrain->GetHeightAt(position.x, position.z), 0.0F) + m_EyeHeight;
    m_Camera->SetPosition(position);
}

void CGroundWalk::Look(float fStepX, float fStepY)
{
    if (IsOn() && std::isfinite(fStepX) && std::isfinite(fStepY))
    {
        m_Camera->SetAngles(m_Camera->GetYaw() + std::fmod(fStepX * DEGREES_A_PIXEL, 360.0F),
                            std::clamp(m_Camera->GetPitch() - fStepY * DEGREES_A_PIXEL,
                                       -STEEPEST_LOOK,
                                       STEEPEST_LOOK));
    }
}

bool CGroundWalk::Step(const CTerrain* pTerrain, const SFlyKeys& keys, float fSeconds)
{
    const float fAhead = GetAxis(keys.bBack, keys.bForward);
    const float fAside = GetAxis(keys.bLeft, keys.bRight);
    if (!IsOn() || pTerrain == nullptr || !(fSeconds > 0.0F) || (fAhead == 0.0F && fAside == 0.0F))
    {
        return false;
    }
    // On the map: who looks at the own feet walks as fast.
    const SVec3 right = m_Camera->GetRight();
    const float fWayX = right.z * fAhead + right.x * fAside;
    const float fWayZ = -right.x * fAhead + right.z * fAside;
    const float fTravel = HEIGHTS_A_SECOND * m_EyeHeight * std::min(fSeconds, LONGEST_STEP) *
                          (keys.bFast ? FAST : 1.0F) / std::hypot(fWayX, fWayZ);
    const SVec3 from = m_Camera->GetPosition();
    Stand(pTerrain, {from.x + fWayX * fTravel, 0.0F, from.z + fWayZ * fTravel});
    return true;
}

void CGroundWalk::ChangeEye(const CTerrain* pTerrain, float fNotches)
{
    if (IsOn() && std::isfinite(fNotches))
    {
        m_EyeHeight =
            std::clamp(m_EyeHeight * std::pow(EYE_FACTOR, std::clamp(fNotches, -30.0F, 30.0F)),
                       LEAST_EYE,
                       MOST_EYE);
        Stand(pTerrain, m_Camera->GetPosition());
    }
}
