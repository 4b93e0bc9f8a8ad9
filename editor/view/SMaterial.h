#pragma once

#include "engine/terrain/GroundLook.h"
#include "host/HostTypes.h"

#include <array>
#include <string>

enum class EMaterialKind
{
    Plain,    // one colour
    Checker,  // cells, or blocks of them, in two colours
    Contours, // lines of equal height over a ground
    Slope,    // colour by steepness
    Bands,    // colour by height between the lowest and the highest ground
    Terrain,  // natural ground: by height, with rock where it is steep
    Hollows,  // one colour, darker where the ground around hides the sky
};

// How the ground looks while it is sculpted, as a ".mat" file says. A plain value.
struct SMaterial
{
    static constexpr int COLORS = 5;

    EMaterialKind eKind = EMaterialKind::Terrain;
    // Plain and hollows: the first. Checker: the first two. Contours: ground, line, stronger line.
    // Slope and bands: from flat or low to steep or high, evenly spread. Terrain: as SGroundTints,
    // whose own stand for those that a file leaves out.
    std::array<SColor, COLORS> colors = SGroundTints().colors;
    int nColors = COLORS;
    // Checker: cells a square is wide. Contours: terrain units between lines, 0 follows the view
    // in steps of 1, 2, 5. Slope: degrees of the last colour. Terrain: of bare rock, 0 for
    // those of SGroundTints. Hollows: how dark they are, 0 for 1.
    float fStep = 0.0F;

    // Reads a file in the declarative syntax. False, with one logged line that names the file and
    // the fault, and the material as it was.
    bool Load(const std::string& strPath);
};
