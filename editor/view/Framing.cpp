#include "editor/view/Framing.h"

#include "editor/view/SViewProjection.h"
#include "editor/view/Vectors.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

// Which of them depends on the shapes of the box and of the picture.
constexpr float FLATTEST_PITCH = -30.0F;
constexpr float STEEPEST_PITCH = -60.0F;
constexpr float PITCH_STEP = 5.0F;
constexpr float DEGREE = 0.017453292519943F;

// How far the camera must lie beside what it sees: each corner bounds that on all four sides.
struct SBounds
{
    float fUpper = -std::numeric_limits<float>::max();
    float fLower = -std::numeric_limits<float>::max();

    void Add(float fAside, float fAhead, float fTan)
    {
        fUpper = std::max(fUpper, fAside - fTan * fAhead);
        fLower = std::max(fLower, -fAside - fTan * fAhead);
    }

    void Center() { fUpper = fLower = std::max(fUpper, fLower); }

    float GetMiddle() const { return (fUpper - fLower) * 0.5F; }

    // The camera may be so far ahead of where things are measured from.
    float GetAhead(float fTan) const { return -(fUpper + fLower) * 0.5F / fTan; }
};

// The share of the picture, 0 to 1, that the ground of a box covers. All of it must be in the
// picture.
float GetCoveredShare(const SViewProjection& view, const SExtents& box)
{
    constexpr int RING[] = {0, 1, 5, 4}; // the corners of a box's ground
    float fTwice = 0.0F;
    float fX = 0.0F;
    float fY = 0.0F;
    view.Project(GetCorner(box, RING[3]), fX, fY);
    for (const int iCorner : RING)
    {
        const float fFromX = fX;
        const float fFromY = fY;
        view.Project(GetCorner(box, iCorner), fX, fY);
        fTwice += fFromX * fY - fX * fFromY;
    }
    return std::fabs(fTwice) * 0.5F /
           (static_cast<float>(view.iWidth) * static_cast<float>(view.iHeight));
}

} // namespace

SVec3 FindFramingPosition(
    const SViewProjection& view, const SExtents& box, float fMargin, float fLeast, bool bCentered)
{
    const float fTanUp = view.fTanHalfFov / fMargin;
    const float fTanAside =
        fTanUp * static_cast<float>(view.iWidth) / static_cast<float>(view.iHeight);
    const SVec3 center = GetBoxCenter(box);
    SBounds aside;
    SBounds up;
    float fNearest = std::numeric_limits<float>::max();
    for (int i = 0; i < 8; ++i)
    {
        const SVec3 corner = Subtract(GetCorner(box, i), center);
        const float fAhead = Dot(corner, view.forward);
        aside.Add(Dot(corner, view.right), fAhead, fTanAside);
        up.Add(Dot(corner, view.up), fAhead, fTanUp);
        fNearest = std::min(fNearest, fAhead);
    }
    if (bCentered)
    {
        aside.Center();
        up.Center();
    }
    const float fAhead =
        std::min({aside.GetAhead(fTanAside), up.GetAhead(fTanUp), fNearest - fLeast});
    SVec3 position = AddScaled(center, view.right, aside.GetMiddle());
    position = AddScaled(position, view.up, up.GetMiddle());
    return AddScaled(position, view.forward, fAhead);
}

float FindBestPitch(const SViewProjection& view, const SExtents& box, float fMargin)
{
    float fBest = FLATTEST_PITCH;
    float fMost = 0.0F;
    SViewProjection tried = view;
    tried.right = {1.0F, 0.0F, 0.0F};
    constexpr int STEPS = static_cast<int>((FLATTEST_PITCH - STEEPEST_PITCH) / PITCH_STEP);
    for (int i = 0; i <= STEPS; ++i)
    {
        const float fPitch = FLATTEST_PITCH - static_cast<float>(i) * PITCH_STEP;
        const float fSine = std::sin(fPitch * DEGREE);
        const float fCosine = std::cos(fPitch * DEGREE);
        tried.forward = {0.0F, fSine, -fCosine};
        tried.up = {0.0F, fCosine, fSine};
        tried.position = FindFramingPosition(tried, box, fMargin, 0.0F);
        const float fCovered = GetCoveredShare(tried, box);
        fBest = fCovered > fMost ? fPitch : fBest;
        fMost = std::max(fMost, fCovered);
    }
    return fBest;
}

SExtents Widen(const SExtents& box, float fLeast)
{
    const SVec3 center = GetBoxCenter(box);
    const float fHalfX = std::max(std::fabs(box.max.x - center.x), fLeast);
    const float fHalfZ = std::max(std::fabs(box.max.z - center.z), fLeast);
    return {{center.x - fHalfX, box.min.y, center.z - fHalfZ},
            {center.x + fHalfX, box.max.y, center.z + fHalfZ}};
}
