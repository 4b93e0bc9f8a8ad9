#include "editor/view/ViewGround.h"

#include "editor/view/Vectors.h"
#include "engine/terrain/CTerrain.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr float NEAR_SHARE = 0.1F; // of the distance to the ground: enough for slopes of 84 degrees

// False beside the terrain.
bool GetGroundHeight(const CTerrain* pTerrain, const SVec3& position, float& fHeight)
{
    SVec3 hit;
    const SVec3 above = {position.x, 1e9F, position.z};
    if (pTerrain == nullptr || !pTerrain->PickRay(above, {0.0F, -1.0F, 0.0F}, hit))
    {
        return false;
    }
    fHeight = hit.y;
    return true;
}

} // namespace

float GetClearance(const CTerrain* pTerrain)
{
    if (pTerrain == nullptr)
    {
        return 0.25F;
    }
    const SVec3 size = pTerrain->GetSize();
    return 0.25F * std::min(size.x / static_cast<float>(pTerrain->GetCellsPerSide()),
                            size.z / static_cast<float>(pTerrain->GetCellsPerSideZ()));
}

SExtents GetGroundBox(const CTerrain* pTerrain)
{
    if (pTerrain == nullptr)
    {
        return {{0.0F, 0.0F, 0.0F}, {1000.0F, 100.0F, 1000.0F}};
    }
    const SVec3 size = pTerrain->GetSize();
    const SVertexRect whole = {0, 0, pTerrain->GetVerticesX(), pTerrain->GetVerticesZ()};
    SExtents box = {{0.0F, 0.0F, 0.0F}, size};
    pTerrain->GetHeightRange(whole, box.min.y, box.max.y);
    return box;
}

float GetDiagonal(const CTerrain* pTerrain)
{
    const SExtents box = GetGroundBox(pTerrain);
    return GetLength(Subtract(box.max, box.min));
}

float GetGroundRoom(const CTerrain* pTerrain, const SVec3& position)
{
    float fHeight = 0.0F;
    return GetGroundHeight(pTerrain, position, fHeight) ? position.y - fHeight : GROUND_NONE;
}

float GetEdgeRoom(const CTerrain* pTerrain, const SVec3& position)
{
    if (pTerrain == nullptr)
    {
        return GROUND_NONE;
    }
    const SVec3 size = pTerrain->GetSize();
    return position.y - pTerrain->GetHeightAt(std::clamp(position.x, 0.0F, size.x),
                                              std::clamp(position.z, 0.0F, size.z));
}

float GetRoomToKeep(const CTerrain* pTerrain, const SVec3& from)
{
    const float fRoom = GetGroundRoom(pTerrain, from);
    return fRoom > 0.0F ? std::min(fRoom, GetClearance(pTerrain)) : -GROUND_NONE;
}

float GetGroundDistance(const CTerrain* pTerrain, const SVec3& position)
{
    const SExtents box = GetGroundBox(pTerrain);
    const SVec3 nearest = {std::clamp(position.x, box.min.x, box.max.x),
                           0.0F,
                           std::clamp(position.z, box.min.z, box.max.z)};
    float fHeight = 0.0F;
    GetGroundHeight(pTerrain, nearest, fHeight);
    return GetLength({position.x - nearest.x, position.y - fHeight, position.z - nearest.z});
}

void SetDepthRange(SViewProjection& view, const CTerrain* pTerrain)
{
    SExtents box = GetGroundBox(pTerrain);
    // Previews and debug lines float a little above the ground.
    const float fRoom = GetClearance(pTerrain) + 0.02F * (box.max.y - box.min.y);
    box.min.y -= fRoom;
    box.max.y += fRoom;
    float fLeast = 3e38F;
    float fMost = -3e38F;
    for (int i = 0; i < 8; ++i)
    {
        const float fDepth = Dot(Subtract(GetCorner(box, i), view.position), view.forward);
        fLeast = std::min(fLeast, fDepth);
        fMost = std::max(fMost, fDepth);
    }
    if (view.bOrthographic)
    {
        // A picture may show heights for a while that the terrain has no more: as much as it may
        // have.
        const float fMay = pTerrain != nullptr ? pTerrain->GetSize().y : 0.0F;
        view.fNear = fLeast - fRoom - fMay; // may lie behind the view: nothing is divided by depth
        view.fFar = fMost + fRoom + fMay;
        return;
    }
    view.fFar = std::max(fMost * 1.01F, 16.0F * GetClearance(pTerrain));
    // From outside the terrain's box nothing is nearer than its nearest corner.
    const float fNear =
        std::max(NEAR_SHARE * GetGroundDistance(pTerrain, view.position), fLeast * 0.9F);
    view.fNear = std::clamp(fNear, view.fFar * 2e-6F, view.fFar * 0.5F);
}
