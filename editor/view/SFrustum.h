#pragma once

#include "host/HostTypes.h"

// The six planes of what a view shows. A value, made once a frame.
struct SFrustum
{
    SVec4 planes[6]; // inside is where x * px + y * py + z * pz + w is not below 0

    // From a matrix as SViewProjection gives it.
    explicit SFrustum(const float (&matrix)[16])
    {
        for (int i = 0; i < 6; ++i)
        {
            // Each plane is the matrix's fourth row plus or minus one of the others.
            const float fSign = i % 2 == 0 ? 1.0F : -1.0F;
            const int iRow = i / 2;
            planes[i] = {matrix[3] + fSign * matrix[iRow],
                         matrix[7] + fSign * matrix[4 + iRow],
                         matrix[11] + fSign * matrix[8 + iRow],
                         matrix[15] + fSign * matrix[12 + iRow]};
        }
    }

    // True for some boxes near a corner of the frustum that are outside, never false for one that
    // is inside.
    bool MaySee(const SExtents& box) const
    {
        for (const SVec4& plane : planes)
        {
            const float fX = plane.x > 0.0F ? box.max.x : box.min.x;
            const float fY = plane.y > 0.0F ? box.max.y : box.min.y;
            const float fZ = plane.z > 0.0F ? box.max.z : box.min.z;
            if (plane.x * fX + plane.y * fY + plane.z * fZ + plane.w < 0.0F)
            {
                return false;
            }
        }
        return true;
    }
};
