#include "editor/view/SSymmetry.h"

#include <algorithm>
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
    bool bX = false;
    bool bZ = false;
    GetSides(i, bX, bZ);
    return {bX ? GetOther(point.x, about.x) : point.x,
            point.y,
            bZ ? GetOther(point.z, about.z) : point.z};
}

void SSymmetry::GetSides(size_t i, bool& bX, bool& bZ) const
{
    // Of both lines the images are: at the first, at the second, at both.
    const bool bBoth = bAcrossX && bAcrossZ;
    bX = bBoth ? i != 1 : bAcrossX;
    bZ = bBoth ? i != 0 : bAcrossZ;
}

SPointForm SSymmetry::TurnForm(size_t i, const SPointForm& form) const
{
    // The way back from the image's surroundings to those of the point.
    float fXX = 1.0F;
    float fXZ = 0.0F;
    float fZX = 0.0F;
    float fZZ = 1.0F;
    if (bTurned)
    {
        const double fAngle = FULL_TURN * static_cast<double>(i + 1) / iTurns;
        fXX = fZZ = static_cast<float>(std::cos(fAngle));
        fXZ = static_cast<float>(std::sin(fAngle));
        fZX = -fXZ;
    }
    else
    {
        bool bX = false;
        bool bZ = false;
        GetSides(i, bX, bZ);
        fXX = bX ? -1.0F : 1.0F;
        fZZ = bZ ? -1.0F : 1.0F;
    }
    const auto limit = [](float fElement)
    {
        return std::clamp(fElement, -1.0F, 1.0F);
    };
    return {form.fPower,
            limit(form.fXX * fXX + form.fXZ * fZX),
            limit(form.fXX * fXZ + form.fXZ * fZZ),
            limit(form.fZX * fXX + form.fZZ * fZX),
            limit(form.fZX * fXZ + form.fZZ * fZZ)};
}

void SSymmetry::GetTurn(size_t i, float& fTurn, bool& bFlip) const
{
    if (bTurned)
    {
        fTurn = static_cast<float>(FULL_TURN * static_cast<double>(i + 1) / iTurns);
        bFlip = false;
        return;
    }
    bool bX = false;
    bool bZ = false;
    GetSides(i, bX, bZ);
    // Across z it is mirrored in x and half a turn away.
    fTurn = bZ ? static_cast<float>(FULL_TURN * 0.5) : 0.0F;
    bFlip = bX != bZ;
}
