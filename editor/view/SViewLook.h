#pragma once

#include "host/HostTypes.h"

#include <string>

enum class EViewKind
{
    Perspective,
    // Without perspective, and without a camera that others may move.
    Top,   // straight down, north (smaller z) up
    Front, // to the north
    Side,  // to the west
};

constexpr EViewKind VIEW_KINDS[] = {
    EViewKind::Perspective, EViewKind::Top, EViewKind::Front, EViewKind::Side};

const char* GetViewName(EViewKind eKind); // as files have it; a key of Words
bool FindViewKind(const std::string& strName, EViewKind& eKind);

// Where a view looks from, to come back to. Terrain units.
struct SViewLook
{
    EViewKind eKind = EViewKind::Perspective;
    SVec3 at;                 // the camera; without one the middle of the picture
    float fYaw = 0.0F;        // degrees, with a camera
    float fPitch = 0.0F;      // degrees, with a camera
    float fHalfSide = 500.0F; // of the picture's shorter side, without a camera
    // Nobody has moved it since it showed the whole terrain, so another picture shows that, too.
    bool bFramed = false;
};
