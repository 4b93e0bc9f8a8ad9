#pragma once

#include "host/Export.h"

#include <cstdint>

class CProtectionEdit;

// The areas of a terrain that can be protected at one go. The same ground gives the same vertices
// on every machine: only operations that round in one way are on the way to them.

constexpr uint32_t MOST_GROWTH = 64; // vertices

// The vertices up to fRadius from a point on the ground, terrain units, are protected, or no longer
// are. Costs what lies under the disc.
TELLUR_API void
ProtectDisc(CProtectionEdit& edit, float fX, float fZ, float fRadius, bool bProtected);

// What is protected no longer is, and the other way round.
TELLUR_API void InvertProtection(CProtectionEdit& edit);
TELLUR_API void ClearProtection(CProtectionEdit& edit);
// Protects also what lies up to so many vertices beside a protected vertex, at most MOST_GROWTH.
TELLUR_API void GrowProtection(CProtectionEdit& edit, uint32_t uVertices);
// Protects also vertices where the ground is steeper than so many degrees, 0 to 90.
TELLUR_API void ProtectSteep(CProtectionEdit& edit, float fDegrees);
// Protects also vertices from one height to another, both inclusive, terrain units.
TELLUR_API void ProtectHeights(CProtectionEdit& edit, float fLowest, float fHighest);
