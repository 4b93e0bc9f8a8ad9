#pragma once

#include "host/HostTypes.h"
#include "host/IPluginStrokes.h"

#include <cstddef>
#include <cstdint>

// Which images each point of a stroke has: mirrored at lines of the ground through a centre, or
// turned about it. Places are looked at from above, in terrain units, whatever the terrain's sides.
struct SSymmetry
{
    static constexpr int32_t LEAST_TURNS = 2;
    static constexpr int32_t MOST_TURNS = 16;
    static constexpr size_t MOST_IMAGES = MOST_TURNS - 1; // beside the point itself

    bool bAcrossX = false; // x changes its side
    bool bAcrossZ = false; // z does; with both there are three images
    bool bTurned = false;  // in place of these
    int32_t iTurns = 4;    // places of a turned point, itself among them
    bool bOwnCentre = false;
    SVec3 centre; // only with bOwnCentre; y has no meaning

    bool IsOn() const { return bAcrossX || bAcrossZ || bTurned; }

    // The middle of a terrain of that size, unless another centre was chosen.
    SVec3 GetCentre(const SVec3& size) const;
    size_t GetImageCount() const; // beside the point itself
    // i: below GetImageCount. The height is the point's; the place may lie off the terrain.
    SVec3 GetImage(size_t i, const SVec3& point, const SVec3& size) const;
    // How a brush that lies so at a point lies at its image.
    SPointForm TurnForm(size_t i, const SPointForm& form) const;
    // An offset from a point is mirrored in x where bFlip says so and then turned by fTurn, in
    // radians from +x towards +z, to be the one from its image.
    void GetTurn(size_t i, float& fTurn, bool& bFlip) const;

private:
    void GetSides(size_t i, bool& bX, bool& bZ) const; // that a mirrored point changes
};
