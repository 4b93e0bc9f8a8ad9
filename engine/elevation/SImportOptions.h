#pragma once

#include "engine/elevation/SOrientation.h"

#include <cstdint>
#include <optional>

// How the samples of a file become the vertices of a terrain.
enum class EFit : uint8_t
{
    Resample, // the whole file, interpolated, to a square
    Crop,     // a square window of it, sample by sample
    Keep,     // as many vertices as samples; not every such grid is a terrain
};

// What becomes of spacing in degrees whose latitude nobody knows.
enum class ESpacing : uint8_t
{
    FromFile, // it is not used, and a spacing of 1 is assumed
    Auto,     // the import is refused
};

// What a user says of a file to import. 0: not said, except for the window's place.
struct SImportOptions
{
    // Of a raw file.
    uint32_t uColumns = 0;
    uint32_t uRows = 0;
    EByteOrder eByteOrder = EByteOrder::None; // None: not said, little

    // Heights, one of the two at most: the height of full white in a file of codes, or the terrain
    // units of one step or unit of the file.
    double dWhite = 0.0;
    double dUnit = 0.0;
    double dBase = 0.0;      // the height of 0 in the file; of codes with one of these alone
    float fMaxHeight = 0.0F; // the terrain's height limit

    // Before all that follows, which is about what has been turned.
    SOrientation orientation = {};

    EFit eFit = EFit::Resample;
    uint32_t uSize = 0;                 // vertices per side
    std::optional<uint32_t> cropX = {}; // first column of the window; the middle when not given
    std::optional<uint32_t> cropZ = {};

    // Terrain units: the whole terrain, or between samples. One of the two along each axis.
    float fWidth = 0.0F;
    float fDepth = 0.0F;
    float fSpacingX = 0.0F;
    float fSpacingZ = 0.0F;

    // Of the middle of a file in degrees, in place of what its tags or its name say.
    std::optional<double> latitude = {};
    ESpacing eSpacing = ESpacing::FromFile;
};
