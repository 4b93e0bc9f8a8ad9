#include "editor/view/CViewNavigator.h"

#include "editor/view/Framing.h"
#include "editor/view/Vectors.h"
#include "editor/view/ViewGround.h"
#include "editor/view/ViewMoves.h"
#include "engine/terrain/CTerrain.h"
#include "engine/world/CCamera.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr float ORBIT_DEGREES = 0.5F; // a pixel
constexpr double NOTCH_FACTOR = 0.8;  // of the distance, a notch
constexpr float NOTCH_LIMIT = 30.0F;  // at once
constexpr float FAST = 4.0F;
constexpr float FIRST_PITCH = -35.0F;

} // namespace

CViewNavigator::CViewNavigator(CCamera* pCamera, EViewKind eFlat)
    : m_Camera(pCamera)
    , m_eKind(pCamera != nullptr ? EViewKind::Perspective : eFlat)
{
}

void CViewNavigator::SetSize(int iWidth, int iHeight)
{
    m_Width = std::max(iWidth, 1);
    m_Height = std::max(iHeight, 1);
}

SViewProjection CViewNavigator::GetProjection(const CTerrain* pTerrain) const
{
    SViewProjection view = GetView(pTerrain);
    SetDepthRange(view, pTerrain);
    return view;
}

void CViewNavigator::StartOrbit(const CTerrain* pTerrain, float fX, float fY)
{
    m_IsPanning = false;
    m_IsOrbiting = !IsFlat() && std::isfinite(fX) && std::isfinite(fY);
    if (!m_IsOrbiting)
    {
        return;
    }
    if (!Pick(pTerrain, fX, fY, m_Grabbed))
    {
        m_Grabbed = FindPoint(
            pTerrain, static_cast<float>(m_Width) * 0.5F, static_cast<float>(m_Height) * 0.5F);
    }
    const SVec3 offset = Subtract(m_Grabbed, m_Camera->GetPosition());
    // Along the camera's own axes: turned with them, the pivot keeps its place in the picture.
    m_Offset = {Dot(offset, m_Camera->GetRight()),
                Dot(offset, m_Camera->GetUp()),
                Dot(offset, m_Camera->GetForward())};
}

void CViewNavigator::Orbit(const CTerrain* pTerrain, float fStepX, float fStepY)
{
    if (!m_IsOrbiting || !std::isfinite(fStepX) || !std::isfinite(fStepY))
    {
        return;
    }
    const float fYaw = m_Camera->GetYaw();
    const float fPitch = m_Camera->GetPitch();
    // Where the ground stops the tilt, the turn alone may still be free.
    for (const float fTilt : {fStepY * ORBIT_DEGREES, 0.0F})
    {
        m_Camera->SetAngles(fYaw + std::fmod(fStepX * ORBIT_DEGREES, 360.0F), fPitch - fTilt);
        SVec3 position = AddScaled(m_Grabbed, m_Camera->GetRight(), -m_Offset.x);
        position = AddScaled(position, m_Camera->GetUp(), -m_Offset.y);
        if (MoveTo(pTerrain, AddScaled(position, m_Camera->GetForward(), -m_Offset.z)))
        {
            return;
        }
    }
    m_Camera->SetAngles(fYaw, fPitch);
}

void CViewNavigator::StartPan(const CTerrain* pTerrain, float fX, float fY)
{
    m_IsOrbiting = false;
    m_IsPanning = std::isfinite(fX) && std::isfinite(fY);
    if (!m_IsPanning)
    {
        return;
    }
    m_Grabbed = FindPoint(pTerrain, fX, fY);
    const SViewProjection view = GetView(pTerrain);
    m_Offset = {0.0F, 0.0F, Dot(Subtract(m_Grabbed, view.position), view.forward)};
}

void CViewNavigator::Pan(const CTerrain* pTerrain, float fX, float fY)
{
    if (!m_IsPanning || !std::isfinite(fX) || !std::isfinite(fY))
    {
        return;
    }
    const SViewProjection view = GetView(pTerrain);
    const SRay ray = view.GetRay(fX, fY);
    if (!IsFlat())
    {
        // The grabbed point moves on the plane that faces the view, so its depth stays.
        const float fDistance = m_Offset.z / Dot(ray.direction, view.forward);
        MoveTo(pTerrain, AddScaled(m_Grabbed, ray.direction, -fDistance));
        return;
    }
    // In a flat view all rays are parallel, so the centre moves as far as the cursor, the other
    // way.
    const SVec3 center = AddScaled(Subtract(m_Grabbed, ray.origin), view.position, 1.0F);
    if (IsUsable(center))
    {
        m_Center = center;
    }
}

void CViewNavigator::Zoom(const CTerrain* pTerrain, float fX, float fY, float fNotches)
{
    if (!std::isfinite(fX) || !std::isfinite(fY) || !std::isfinite(fNotches))
    {
        return;
    }
    const double fFactor = std::pow(NOTCH_FACTOR, std::clamp(fNotches, -NOTCH_LIMIT, NOTCH_LIMIT));
    if (IsFlat())
    {
        ZoomFlat(pTerrain, fX, fY, fFactor);
        return;
    }
    const SVec3 position = m_Camera->GetPosition();
    const SVec3 direction = GetView(pTerrain).GetRay(fX, fY).direction;
    const float fDistance = GetLength(Subtract(FindPoint(pTerrain, fX, fY), position));
    const float fNearest = std::min(fDistance, GetClearance(pTerrain));
    const float fFarthest = std::max(fDistance, FARTHEST_ZOOM * GetDiagonal(pTerrain));
    const auto fWanted = static_cast<float>(fDistance * fFactor);
    float fAhead = fDistance - std::clamp(fWanted, fNearest, fFarthest);
    // Ahead there is nothing up to the point. Behind the camera there may be a hill.
    const SVec3 back = {-direction.x, -direction.y, -direction.z};
    SVec3 hit;
    if (fAhead < 0.0F && pTerrain != nullptr && pTerrain->PickRay(position, back, hit))
    {
        const float fRoom = GetLength(Subtract(hit, position)) - GetClearance(pTerrain);
        fAhead = std::max(fAhead, -std::max(fRoom, 0.0F));
    }
    const SVec3 target = AddScaled(position, direction, fAhead);
    // From beside the terrain the way can lead below it.
    const bool bSinks =
        GetGroundRoom(pTerrain, position) > 0.0F && GetGroundRoom(pTerrain, target) <= 0.0F;
    if (IsUsable(target) && !bSinks)
    {
        m_Camera->SetPosition(target);
    }
}

bool CViewNavigator::Fly(const CTerrain* pTerrain, const SFlyKeys& keys, float fSeconds)
{
    if (!(fSeconds > 0.0F))
    {
        return false;
    }
    const float fTime = std::min(fSeconds, 0.25F) * (keys.bFast ? FAST : 1.0F);
    if (IsFlat())
    {
        return FlyFlat(pTerrain, keys, fTime);
    }
    const SVec3 from = m_Camera->GetPosition();
    SVec3 way = AddScaled({}, m_Camera->GetForward(), GetAxis(keys.bBack, keys.bForward));
    way = AddScaled(way, m_Camera->GetRight(), GetAxis(keys.bLeft, keys.bRight));
    way.y += GetAxis(keys.bDown, keys.bUp);
    const float fLength = GetLength(way);
    if (fLength < 1e-3F)
    {
        return false;
    }
    const float fSpeed =
        std::max(GetGroundDistance(pTerrain, from), 16.0F * GetClearance(pTerrain));
    const float fTravel = fSpeed * fTime;
    SVec3 position = AddScaled(from, way, fTravel / fLength);
    const float fLack = GetRoomToKeep(pTerrain, from) - GetGroundRoom(pTerrain, position);
    // From beside the terrain, below it, a step inward would end in a jump to its top.
    const bool bBeside = GetGroundRoom(pTerrain, from) >= GROUND_NONE;
    if (!IsUsable(position) || (bBeside && fLack > 4.0F * fTravel))
    {
        return false;
    }
    // Over ground that rises the camera slides upwards instead of stopping.
    position.y += std::max(fLack, 0.0F);
    m_Camera->SetPosition(position);
    return true;
}

void CViewNavigator::Frame(const CTerrain* pTerrain, const SExtents& box)
{
    const float fLeast = 8.0F * GetClearance(pTerrain); // half side
    if (!IsUsable(box.min) || !IsUsable(box.max))
    {
        return;
    }
    if (IsFlat())
    {
        FrameFlat(box, fLeast);
        return;
    }
    // Steeper from try to try, until the camera would be above the ground.
    const SExtents around = Widen(box, fLeast);
    for (const float fPitch : {m_Camera->GetPitch(), FIRST_PITCH, -60.0F, -90.0F})
    {
        m_Camera->SetAngles(m_Camera->GetYaw(), fPitch);
        for (const bool bCentered : {false, true}) // that keeps higher
        {
            m_Camera->SetPosition(
                FindFramingPosition(GetView(nullptr), around, FRAME_MARGIN, fLeast, bCentered));
            if (GetGroundRoom(pTerrain, m_Camera->GetPosition()) >= GetClearance(pTerrain))
            {
                return;
            }
        }
    }
}

void CViewNavigator::FrameSpot(const CTerrain* pTerrain, const SVec3& point, float fRadius)
{
    const float fHalf = std::fabs(fRadius);
    Frame(pTerrain, {AddScaled(point, {1, 1, 1}, -fHalf), AddScaled(point, {1, 1, 1}, fHalf)});
}

void CViewNavigator::FrameTerrain(const CTerrain* pTerrain)
{
    const SExtents box = GetGroundBox(pTerrain);
    if (!IsFlat())
    {
        m_Camera->SetAngles(0.0F, FindBestPitch(GetView(nullptr), box, FRAME_MARGIN));
    }
    Frame(pTerrain, box);
    m_Framed = GetPose();
}

CViewNavigator::SPose CViewNavigator::GetPose() const
{
    if (IsFlat())
    {
        return {m_Center.x, m_Center.y, m_Center.z, m_HalfSide};
    }
    const SVec3 at = m_Camera->GetPosition();
    return {at.x, at.y, at.z, m_Camera->GetYaw(), m_Camera->GetPitch()};
}

void CViewNavigator::Resize(const CTerrain* pTerrain, int iWidth, int iHeight)
{
    const bool bFramed = IsFramed();
    SetSize(iWidth, iHeight);
    if (bFramed)
    {
        FrameTerrain(pTerrain);
    }
}

bool CViewNavigator::Pick(const CTerrain* pTerrain, float fX, float fY, SVec3& hit) const
{
    const SRay ray = GetRay(pTerrain, fX, fY);
    return pTerrain != nullptr && pTerrain->PickRay(ray.origin, ray.direction, hit);
}

SRay CViewNavigator::GetRay(const CTerrain* pTerrain, float fX, float fY) const
{
    return GetView(pTerrain).GetRay(fX, fY);
}

SViewProjection CViewNavigator::GetView(const CTerrain* pTerrain) const
{
    SViewProjection view;
    view.iWidth = m_Width;
    view.iHeight = m_Height;
    if (TurnFlat(view))
    {
        // Before all ground, since rays begin there.
        const SExtents box = GetGroundBox(pTerrain);
        const float fBox = std::min(Dot(box.min, view.forward), Dot(box.max, view.forward));
        const float fDepth = fBox - GetClearance(pTerrain);
        view.position = AddScaled(m_Center, view.forward, fDepth - Dot(m_Center, view.forward));
        view.bOrthographic = true;
        view.fHalfHeight = GetHalfHeight();
        return view;
    }
    view.position = m_Camera->GetPosition();
    view.right = m_Camera->GetRight();
    view.up = m_Camera->GetUp();
    view.forward = m_Camera->GetForward();
    return view;
}

SVec3 CViewNavigator::FindPoint(const CTerrain* pTerrain, float fX, float fY) const
{
    SVec3 hit;
    if (Pick(pTerrain, fX, fY, hit))
    {
        return hit;
    }
    const SViewProjection view = GetView(pTerrain);
    const SRay ray = view.GetRay(fX, fY);
    if (IsFlat())
    {
        return ray.origin;
    }
    const float fMiddleX = static_cast<float>(m_Width) * 0.5F;
    const float fMiddleY = static_cast<float>(m_Height) * 0.5F;
    const bool bMiddle = Pick(pTerrain, fMiddleX, fMiddleY, hit);
    const float fDistance =
        bMiddle ? GetLength(Subtract(hit, view.position))
                : GetLength(Subtract(GetBoxCenter(GetGroundBox(pTerrain)), view.position));
    return AddScaled(ray.origin, ray.direction, std::max(fDistance, GetClearance(pTerrain)));
}

// False, and the camera stays, where it would go from above the ground to below it.
bool CViewNavigator::MoveTo(const CTerrain* pTerrain, const SVec3& position)
{
    const float fRoom = GetRoomToKeep(pTerrain, m_Camera->GetPosition());
    const float fFound = GetGroundRoom(pTerrain, position);
    // Beside the terrain there is no ground, but from below its edge one sees it from below.
    const float fEdge = GetEdgeRoom(pTerrain, m_Camera->GetPosition());
    const bool bSinks = fFound >= GROUND_NONE && fEdge > 0.0F &&
                        GetEdgeRoom(pTerrain, position) < std::min(fEdge, GetClearance(pTerrain));
    if (!IsUsable(position) || fFound < fRoom || bSinks)
    {
        return false;
    }
    m_Camera->SetPosition(position);
    return true;
}
