#pragma once

#include "engine/terrain/CTerrain.h"

#include <random>

inline SHeightField MakeField(uint32_t uSizeX, uint32_t uSizeZ, const SVec3& size)
{
    SHeightField field;
    field.Allocate(uSizeX, uSizeZ);
    field.size = size;
    return field;
}

inline SHeightField MakeRandomField(uint32_t uSizeX, uint32_t uSizeZ, const SVec3& size)
{
    SHeightField field = MakeField(uSizeX, uSizeZ, size);
    std::mt19937 random(uSizeX * 31 + uSizeZ);
    for (size_t i = 0; i < field.GetCount(); ++i)
    {
        field.pHeights[i] = static_cast<float>(random() % 1000) * 0.1F;
    }
    return field;
}

inline SExtents MakeBox(float fMinX, float fMinZ, float fMaxX, float fMaxZ)
{
    return {{fMinX, 0.0F, fMinZ}, {fMaxX, 0.0F, fMaxZ}};
}
