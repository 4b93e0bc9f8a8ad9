#include "editor/view/SViewProjection.h"

#include "editor/view/Vectors.h"

#include <cmath>
#include <cstddef>

namespace
{

SVec3 Normalize(const SVec3& vec)
{
    const float fLength = std::sqrt(Dot(vec, vec));
    return {vec.x / fLength, vec.y / fLength, vec.z / fLength};
}

float GetAspect(const SViewProjection& view)
{
    return static_cast<float>(view.iWidth) / static_cast<float>(view.iHeight);
}

} // namespace

void SViewProjection::GetMatrix(float (&matrix)[16]) const
{
    const float fDepth = fFar - fNear;
    const float fTall = bOrthographic ? fHalfHeight : fTanHalfFov;
    const SVec3* rows[] = {&right, &up, &forward};
    // Right, up and depth of a point relative to the position.
    float eye[3][4];
    for (int i = 0; i < 3; ++i)
    {
        eye[i][0] = rows[i]->x;
        eye[i][1] = rows[i]->y;
        eye[i][2] = rows[i]->z;
        eye[i][3] = -Dot(*rows[i], position);
    }
    // The projection times the view's axes, column after column as OpenGL takes it; the depth range
    // becomes -1 to 1.
    const float fX = 1.0F / (fTall * GetAspect(*this));
    const float fY = 1.0F / fTall;
    for (int iColumn = 0; iColumn < 4; ++iColumn)
    {
        float* pColumn = matrix + static_cast<ptrdiff_t>(iColumn) * 4;
        const float fOne = iColumn == 3 ? 1.0F : 0.0F;
        const float fAlong = eye[2][iColumn];
        pColumn[0] = eye[0][iColumn] * fX;
        pColumn[1] = eye[1][iColumn] * fY;
        pColumn[2] = bOrthographic
                         ? (2.0F * fAlong - (fFar + fNear) * fOne) / fDepth
                         : ((fFar + fNear) * fAlong - 2.0F * fFar * fNear * fOne) / fDepth;
        pColumn[3] = bOrthographic ? fOne : fAlong;
    }
}

SRay SViewProjection::GetRay(float fX, float fY) const
{
    const float fSide = (2.0F * fX / static_cast<float>(iWidth) - 1.0F) * GetAspect(*this);
    const float fHigh = 1.0F - 2.0F * fY / static_cast<float>(iHeight);
    if (bOrthographic)
    {
        const SVec3 origin = AddScaled(position, right, fSide * fHalfHeight);
        return {AddScaled(origin, up, fHigh * fHalfHeight), forward};
    }
    const SVec3 sideways = AddScaled(forward, right, fSide * fTanHalfFov);
    return {position, Normalize(AddScaled(sideways, up, fHigh * fTanHalfFov))};
}

bool SViewProjection::Project(const SVec3& point, float& fX, float& fY) const
{
    const SVec3 offset = Subtract(point, position);
    const float fAlong = Dot(offset, forward);
    if (!bOrthographic && fAlong <= 0.0F)
    {
        return false;
    }
    const float fTall = bOrthographic ? fHalfHeight : fTanHalfFov * fAlong;
    fX = (Dot(offset, right) / (fTall * GetAspect(*this)) + 1.0F) * 0.5F *
         static_cast<float>(iWidth);
    fY = (1.0F - Dot(offset, up) / fTall) * 0.5F * static_cast<float>(iHeight);
    return true;
}

float SViewProjection::GetPixelSize(float fDistance) const
{
    const float fTall = bOrthographic ? fHalfHeight : fTanHalfFov * fDistance;
    return 2.0F * fTall / static_cast<float>(iHeight);
}
