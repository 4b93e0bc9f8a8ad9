#include "editor/view/SSymmetry.h"

#include <cmath>

namespace
{

constexpr double FULL_TURN = 6.283185307179586;

float GetOther(float fAt, float fCentre)
{
    return static_cast<float>(2.0 * fCentre - static_cast<double>(fAt));
}

} // namespace

SVec3 SSymmetry::GetCentre(const SVec3& size) const
{
    return bOwnCentre ? centre : SVec3{size.x * 0.5F, 0.0F, size.z * 0.5F};
}

size_t SSymmetry::GetImageCount() const
{
    if (bTurned)
    {
        return static_cast<size_t>(iTurns) - 1;
    }
    return bAcrossX && bAcrossZ ? 3 : IsOn() ? 1 : 0;
}

SVec3 SSymmetry::GetImage(size_t i, const SVec3& point, const SVec3& size) const
{
    const SVec3 about = GetCentre(size);
    if (bTurned)
    {
        const double fAngle = FULL_TURN * static_cast<double>(i + 1) / iTurns;
        const double fX = static_cast<double>(point.x) - about.x;
        const double fZ = static_cast<double>(point.z) - about.z;
        const double fCos = std::cos(fAngle);
        const double fSin = std::sin(fAngle);
        return {static_cast<float>(about.x + fX * fCos - fZ * fSin),
                point.y,
                static_cast<float>(about.z + fX * fSin + fZ * fCos)};
    }
    // Of both lines the images are: at the first, at the second, at both.
    const bool bBoth = bAcrossX && bAcrossZ;
    const bool bX = bBoth ? i != 1 : bAcrossX;
    const bool bZ = bBoth ? i != 0 : bAcrossZ;
    return {bX ? GetOther(point.x, about.x) : point.x,
            point.y,
            bZ ? GetOther(point.z, about.z) : point.z};
}
