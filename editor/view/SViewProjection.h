#pragma once

#include "host/HostTypes.h"

// A half-line in terrain units; the direction has length 1.
struct SRay
{
    SVec3 origin;
    SVec3 direction;
};

// How one view looks at the terrain. Lengths are terrain units, pixels are device pixels with the
// origin in the view's upper left corner; the middle of a pixel is at .5.
struct SViewProjection
{
    SVec3 position;
    SVec3 right = {1.0F, 0.0F, 0.0F}; // unit vectors, perpendicular
    SVec3 up = {0.0F, 1.0F, 0.0F};
    SVec3 forward = {0.0F, 0.0F, -1.0F};
    bool bOrthographic = false;
    float fHalfHeight = 1.0F;  // of the picture, orthographic only
    float fTanHalfFov = 0.45F; // of the vertical field of view, perspective only
    float fNear = 1.0F;
    float fFar = 100000.0F;
    int iWidth = 1;
    int iHeight = 1;

    // Column by column, for column vectors: clip = matrix * (x, y, z, 1), z from -1 to 1.
    void GetMatrix(float (&matrix)[16]) const;
    SRay GetRay(float fX, float fY) const;
    // Tells where a point is in the picture, in device pixels. False for what is behind the view.
    bool Project(const SVec3& point, float& fX, float& fY) const;
    // What one device pixel covers at a distance along the view direction.
    float GetPixelSize(float fDistance) const;
};
