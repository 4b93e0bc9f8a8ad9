#pragma once

#include "editor/view/SViewProjection.h"
#include "host/HostTypes.h"

class CTerrain;

// What a view that moves about needs to know of the terrain. Terrain units; pTerrain is borrowed
// and may be null: then there is no ground, and lengths are those of a small level.

// The least distance that a camera keeps from the ground: a quarter of a cell.
float GetClearance(const CTerrain* pTerrain);

// The terrain with its present heights.
SExtents GetGroundBox(const CTerrain* pTerrain);

// Length of that box's diagonal.
float GetDiagonal(const CTerrain* pTerrain);

// How far a position is above the ground under it, below 0 inside the ground; GROUND_NONE beside
// the terrain.
constexpr float GROUND_NONE = 3e38F;
float GetGroundRoom(const CTerrain* pTerrain, const SVec3& position);

// The same, beside the terrain above the nearest place of its border.
float GetEdgeRoom(const CTerrain* pTerrain, const SVec3& position);

// The room above the ground that a camera that comes from a position must keep: as much as it has
// there, up to the clearance. Inside the ground it may go anywhere.
float GetRoomToKeep(const CTerrain* pTerrain, const SVec3& from);

// To the ground straight below or above; beside the terrain to the nearest place above its border.
float GetGroundDistance(const CTerrain* pTerrain, const SVec3& position);

// Sets near and far plane around the terrain, the near one as far away as the ground lets it: depth
// is the finer for it.
void SetDepthRange(SViewProjection& view, const CTerrain* pTerrain);
