#include "engine/terrain/SGeoTags.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

// What rounding leaves of a right angle.
constexpr double STRAIGHT = 1e-9;

} // namespace

bool SGeoTags::IsNorthUp() const
{
    const double dEast = lastX.dX - first.dX;
    const double dSouth = first.dY - lastZ.dY;
    const double dMost = STRAIGHT * std::max(std::fabs(dEast), std::fabs(dSouth));
    return bKnown && dEast > 0.0 && dSouth > 0.0 && std::fabs(lastX.dY - first.dY) <= dMost &&
           std::fabs(lastZ.dX - first.dX) <= dMost;
}

void SGeoTags::Turn(uint32_t uQuarters, bool bFlipX, bool bFlipZ)
{
    for (uint32_t i = 0; i < uQuarters % 4; ++i)
    {
        // What was in the south-west comes to the north-west.
        lastX = std::exchange(lastZ, GetLast());
        std::swap(first, lastX);
    }
    if (bFlipX)
    {
        lastZ = GetLast();
        std::swap(first, lastX);
    }
    if (bFlipZ)
    {
        lastX = GetLast();
        std::swap(first, lastZ);
    }
}

void SGeoTags::Crop(double dFromX, double dToX, double dFromZ, double dToZ)
{
    const auto at = [this](double dX, double dZ)
    {
        return SMapPoint{
            first.dX + (lastX.dX - first.dX) * dX + (lastZ.dX - first.dX) * dZ,
            first.dY + (lastX.dY - first.dY) * dX + (lastZ.dY - first.dY) * dZ,
        };
    };
    const SMapPoint cropped[] = {at(dFromX, dFromZ), at(dToX, dFromZ), at(dFromX, dToZ)};
    first = cropped[0];
    lastX = cropped[1];
    lastZ = cropped[2];
}

std::optional<uint16_t> SGeoTags::FindKey(uint16_t uKey) const
{
    // Four numbers say what follows, then each key has four: its name, where its value stands (0:
    // here), how many there are, the value.
    for (size_t i = 4; i + 4 <= keys.size(); i += 4)
    {
        if (keys[i] == uKey && keys[i + 1] == 0)
        {
            return keys[i + 3];
        }
    }
    return {};
}
