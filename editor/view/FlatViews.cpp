// What of a navigator moves a view without perspective, and where views of all kinds come back to.

#include "editor/view/CViewNavigator.h"
#include "editor/view/Vectors.h"
#include "editor/view/ViewGround.h"
#include "editor/view/ViewMoves.h"
#include "engine/world/CCamera.h"

#include <algorithm>
#include <cmath>

namespace
{

struct SAxes
{
    SVec3 right;
    SVec3 up;
    SVec3 forward;
};

// In the order of EViewKind, from Top on.
constexpr SAxes AXES[] = {
    {{1.0F, 0.0F, 0.0F}, {0.0F, 0.0F, -1.0F}, {0.0F, -1.0F, 0.0F}},
    {{1.0F, 0.0F, 0.0F}, {0.0F, 1.0F, 0.0F}, {0.0F, 0.0F, -1.0F}},
    {{0.0F, 0.0F, -1.0F}, {0.0F, 1.0F, 0.0F}, {-1.0F, 0.0F, 0.0F}},
};

} // namespace

bool CViewNavigator::TurnFlat(SViewProjection& view) const
{
    if (!IsFlat())
    {
        return false;
    }
    const SAxes& axes = AXES[static_cast<int>(m_eKind) - static_cast<int>(EViewKind::Top)];
    view.right = axes.right;
    view.up = axes.up;
    view.forward = axes.forward;
    return true;
}

void CViewNavigator::FrameFlat(const SExtents& box, float fLeast)
{
    SViewProjection view;
    TurnFlat(view);
    const SVec3 half = AddScaled(AddScaled({}, box.max, 0.5F), box.min, -0.5F);
    const float fShape = static_cast<float>(m_Height) / static_cast<float>(m_Width);
    const float fAcross = std::fabs(Dot(half, view.right));
    const float fTall = std::fabs(Dot(half, view.up));
    m_Center = GetBoxCenter(box);
    const float fHalfHeight = std::max(std::max(fTall, fAcross * fShape) * FRAME_MARGIN, fLeast);
    m_HalfSide = fHalfHeight * std::min(1.0F / fShape, 1.0F);
}

void CViewNavigator::ZoomFlat(const CTerrain* pTerrain, float fX, float fY, double fFactor)
{
    const SVec3 under = GetView(pTerrain).GetRay(fX, fY).origin;
    const float fNearest = std::min(m_HalfSide, 8.0F * GetClearance(pTerrain));
    const float fFarthest = std::max(m_HalfSide, FARTHEST_ZOOM * GetDiagonal(pTerrain));
    const auto fWanted = static_cast<float>(m_HalfSide * fFactor);
    const float fHalfSide = std::clamp(fWanted, fNearest, fFarthest);
    // The centre comes nearer to the point under the cursor by the same share, so that point stays.
    const double fScale = static_cast<double>(fHalfSide) / m_HalfSide;
    const SVec3 center = {static_cast<float>(under.x + (m_Center.x - under.x) * fScale),
                          static_cast<float>(under.y + (m_Center.y - under.y) * fScale),
                          static_cast<float>(under.z + (m_Center.z - under.z) * fScale)};
    if (IsUsable(center))
    {
        m_Center = center;
        m_HalfSide = fHalfSide;
    }
}

bool CViewNavigator::FlyFlat(const CTerrain* pTerrain, const SFlyKeys& keys, float fSeconds)
{
    SViewProjection view;
    TurnFlat(view);
    const float fRight = GetAxis(keys.bLeft, keys.bRight);
    const float fUp = GetAxis(keys.bBack, keys.bForward);
    const float fOut = GetAxis(keys.bDown, keys.bUp);
    // As fast on the screen at any scale: half the view's height in a second.
    const float fWay = fSeconds * GetHalfHeight();
    const SVec3 center =
        AddScaled(AddScaled(m_Center, view.right, fRight * fWay), view.up, fUp * fWay);
    if (!IsUsable(center) || (fRight == 0.0F && fUp == 0.0F && fOut == 0.0F))
    {
        return false;
    }
    m_Center = center;
    if (fOut != 0.0F)
    {
        ZoomFlat(pTerrain,
                 static_cast<float>(m_Width) * 0.5F,
                 static_cast<float>(m_Height) * 0.5F,
                 std::exp(fOut * fSeconds));
    }
    return true;
}

SViewLook CViewNavigator::GetLook() const
{
    if (IsFlat())
    {
        return {.eKind = m_eKind, .at = m_Center, .fHalfSide = m_HalfSide, .bFramed = IsFramed()};
    }
    return {.eKind = m_eKind,
            .at = m_Camera->GetPosition(),
            .fYaw = m_Camera->GetYaw(),
            .fPitch = m_Camera->GetPitch(),
            .bFramed = IsFramed()};
}

void CViewNavigator::SetLook(const CTerrain* pTerrain, const SViewLook& look)
{
    const bool bUsable = IsUsable(look.at) && std::isfinite(look.fYaw) &&
                         std::isfinite(look.fPitch) && look.fHalfSide > 0.0F &&
                         look.fHalfSide < COORDINATE_LIMIT;
    if (look.eKind != m_eKind || !bUsable)
    {
        return;
    }
    m_IsOrbiting = m_IsPanning = false;
    if (IsFlat())
    {
        m_Center = look.at;
        m_HalfSide = look.fHalfSide;
        return;
    }
    SVec3 position = look.at;
    position.y += std::max(GetClearance(pTerrain) - GetGroundRoom(pTerrain, position), 0.0F);
    m_Camera->SetPosition(position);
    m_Camera->SetAngles(look.fYaw, look.fPitch);
}
