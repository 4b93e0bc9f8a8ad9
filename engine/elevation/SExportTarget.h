#pragma once

#include "engine/elevation/SExportPlan.h"

#include <cstdint>
#include <string>
#include <vector>

// How many samples a side a program takes.
enum class ESideRule : uint8_t
{
    Any,
    PowerOfTwoPlusOne,
    Multiple,        // of uSideStep
    MultiplePlusOne, // of uSideStep cells
};

// Which heights become which numbers of the file.
enum class EHeightCodes : uint8_t
{
    Maximum, // full white is the level's maximum height
    Range,   // black is the lowest height of the ground, white the highest
    Unit,    // 1 is a fixed number of terrain units
};

// What can be told of an export as a number.
enum class EExportNumber : uint8_t
{
    White,    // height between 0 and full white
    Count,    // height of one step, or of 1.0
    Base,     // height of 0
    Zero,     // the number in the file of height 0
    Width,    // along x and z
    Depth,    //
    SpacingX, // between samples
    SpacingZ, //
    Columns,  // samples, of one tile
    Rows,     //
    Highest,  // the level's maximum height
};

// A field of the importing program, and what to type there.
struct STargetNumber
{
    std::string strLabel;
    EExportNumber eNumber = EExportNumber::White;
    double dFactor = 1.0; // that program's units for one of ours, see SExportTarget::bMetres
};

// What a program asks of a height map. A row of the table of targets.
struct SExportTarget
{
    std::string strName;
    std::string strUse;       // for whom it is
    std::string strExtension; // names a row of the table of formats
    uint32_t uBits = 0;
    EByteOrder eByteOrder = EByteOrder::None;
    bool bSouthFirst = false;
    bool bSquare = false;
    ESideRule eSide = ESideRule::Any;
    uint32_t uSideStep = 1;
    EHeightCodes eHeights = EHeightCodes::Unit;
    double dUnit = 1.0;   // with EHeightCodes::Unit
    double dZero = 0.0;   // the number in the file of height 0; not with EHeightCodes::Range
    bool bMetres = false; // the factors of lengths hold for a level whose unit is a metre
    std::vector<STargetNumber> numbers;
};

// What one terrain unit is. No file says it, so it matters only to a program that counts metres.
enum class ELevelUnit : uint8_t
{
    Centimetre, // as the editor's own texts have it
    Metre,      // as maps have it
};
