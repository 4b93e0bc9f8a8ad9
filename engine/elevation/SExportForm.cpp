#include "engine/elevation/SExportForm.h"

#include "engine/elevation/ElevationFormats.h"
#include "engine/elevation/ReportText.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <iterator>

namespace
{

// The side nearest to uSide that the program takes, the larger of two equally near.
uint32_t GetNearestSide(const SExportTarget& target, uint32_t uSide)
{
    const uint32_t uLeast = std::max(uSide, MIN_SAMPLES);
    if (target.eSide == ESideRule::Any)
    {
        return uLeast;
    }
    if (target.eSide == ESideRule::PowerOfTwoPlusOne)
    {
        const uint32_t uCells = uLeast - 1;
        const uint32_t uBelow = std::bit_floor(uCells);
        return 1 + (uCells - uBelow < 2 * uBelow - uCells ? uBelow : 2 * uBelow);
    }
    const uint32_t uMore = target.eSide == ESideRule::MultiplePlusOne ? 1 : 0;
    const uint32_t uStep = target.uSideStep;
    const uint32_t uCount = std::max((uLeast - uMore + uStep / 2) / uStep, 1U);
    return std::max(uCount * uStep + uMore, MIN_SAMPLES);
}

uint32_t GetTileSide(const SExportTarget& target, uint32_t uSamples, uint32_t uTiles)
{
    const uint32_t uCells = (uSamples - 1 + uTiles / 2) / uTiles;
    return GetNearestSide(target, uCells + 1);
}

double GetNumber(const SExportForm& form, const SGroundFacts& facts, EExportNumber eNumber)
{
    const auto getLength = [](float fLength)
    {
        return std::fabs(static_cast<double>(fLength));
    };
    switch (eNumber)
    {
    case EExportNumber::White:
        return form.dUnit * (form.dFull > 0.0 ? form.dFull : 1.0);
    case EExportNumber::Count:
        return form.dUnit;
    case EExportNumber::Base:
        return form.dBase;
    case EExportNumber::Zero:
        return -form.dBase / form.dUnit;
    case EExportNumber::Width:
        return getLength(facts.size.x);
    case EExportNumber::Depth:
        return getLength(facts.size.z);
    case EExportNumber::SpacingX:
        return getLength(facts.size.x) / (form.uColumns - 1);
    case EExportNumber::SpacingZ:
        return getLength(facts.size.z) / (form.uRows - 1);
    case EExportNumber::Columns:
        return form.uTileColumns;
    case EExportNumber::Rows:
        return form.uTileRows;
    case EExportNumber::Highest:
        return getLength(facts.size.y);
    }
    return 0.0;
}

// What a number of a target that counts metres has to be multiplied by.
double
GetLengthFactor(const SExportTarget& target, const SGroundFacts& facts, EExportNumber eNumber)
{
    constexpr double CENTIMETRE = 0.01;
    const bool bLength = eNumber != EExportNumber::Zero && eNumber != EExportNumber::Columns &&
                         eNumber != EExportNumber::Rows;
    return target.bMetres && bLength && facts.eUnit == ELevelUnit::Centimetre ? CENTIMETRE : 1.0;
}

// False when the ground cannot have that scale.
bool ChooseScale(const SExportTarget& target, const SGroundFacts& facts, SExportForm& form)
{
    const auto dLow = static_cast<double>(facts.fLow);
    const auto dHigh = static_cast<double>(facts.fHigh);
    const double dFull = form.dFull > 0.0 ? form.dFull : 1.0;
    form.dUnit = target.dUnit;
    if (target.eHeights == EHeightCodes::Range)
    {
        form.dUnit = (dHigh > dLow ? dHigh - dLow : 1.0) / dFull; // flat ground is black
        form.dBase = dLow;
    }
    else
    {
        if (target.eHeights == EHeightCodes::Maximum)
        {
            // At least the highest height, so that nothing is cut above.
            const double dMost = std::max(std::fabs(static_cast<double>(facts.size.y)), dHigh);
            form.dUnit = dMost / (dFull - target.dZero);
        }
        form.dBase = target.dZero > 0.0 ? -target.dZero * form.dUnit : 0.0;
    }
    return std::isfinite(form.dUnit) && form.dUnit > 0.0;
}

} // namespace

SGroundFacts SGroundFacts::Measure(const SSampleView& heights, const SVec3& size)
{
    float fLow = INFINITY;
    float fHigh = -INFINITY;
    for (size_t i = 0; i < heights.GetCount(); ++i)
    {
        const float fHeight = heights.pSamples[i];
        const bool bCounts = std::isfinite(fHeight);
        fLow = bCounts ? std::min(fLow, fHeight) : fLow;
        fHigh = bCounts ? std::max(fHigh, fHeight) : fHigh;
    }
    const bool bAny = fLow <= fHigh;
    return {heights.uColumns, heights.uRows, size, bAny ? fLow : 0.0F, bAny ? fHigh : 0.0F};
}

bool SExportForm::Make(const SExportTarget& target,
                       const SGroundFacts& facts,
                       uint32_t uTilesAside,
                       std::string& strFault)
{
    const SElevationFormat* pFormat = FindFormatByName(("x." + target.strExtension).c_str());
    const uint32_t uColumnsAsked =
        target.bSquare ? std::max(facts.uColumns, facts.uRows) : facts.uColumns;
    const uint32_t uRowsAsked = target.bSquare ? uColumnsAsked : facts.uRows;
    if (!IsWritten(pFormat) || std::min(uColumnsAsked, uRowsAsked) < MIN_SAMPLES ||
        uTilesAside < 1 || uTilesAside > MOST_TILES)
    {
        strFault = uTilesAside > 1 ? "there are no such tiles of it" : "there are no heights";
        return false;
    }
    SExportForm made;
    made.uTiles = uTilesAside;
    made.uTileColumns = GetTileSide(target, uColumnsAsked, uTilesAside);
    made.uTileRows = GetTileSide(target, uRowsAsked, uTilesAside);
    made.uColumns = (made.uTileColumns - 1) * uTilesAside + 1;
    made.uRows = (made.uTileRows - 1) * uTilesAside + 1;
    if (std::max(made.uColumns, made.uRows) > MAX_SAMPLES)
    {
        strFault = MakeText("%u x %u samples are too many", made.uColumns, made.uRows);
        return false;
    }
    made.bRounded = pFormat->eSamples != ESampleType::Float;
    const bool bWhite = target.eHeights != EHeightCodes::Unit;
    made.dFull = made.bRounded ? 65535.0 : bWhite ? 1.0 : 0.0;
    if (!ChooseScale(target, facts, made))
    {
        strFault = "the level has no height above 0";
        return false;
    }
    for (const STargetNumber& number : target.numbers)
    {
        const double dNumber = GetNumber(made, facts, number.eNumber) * number.dFactor *
                               GetLengthFactor(target, facts, number.eNumber);
        made.numbers.emplace_back(number.strLabel, MakeNumber(dNumber));
    }
    *this = std::move(made);
    return true;
}

SExportOptions SExportForm::GetOptions(const SExportTarget& target) const
{
    SExportOptions options;
    options.eByteOrder = target.eByteOrder;
    options.uBits = target.uBits;
    options.bSouthFirst = target.bSouthFirst;
    options.dBase = dBase;
    // A float of 0 to 1 is a code; of others 1 is not said, because their spacing is in that unit.
    const bool bCode = !bRounded && dFull > 0.0;
    options.dWhite = bCode ? dBase + dUnit : 0.0;
    options.bLowWhite = bCode;
    options.dUnit = bCode || (!bRounded && dUnit == 1.0) ? 0.0 : dUnit;
    return options;
}

std::string SExportForm::GetSamplesText() const
{
    const std::string strTile = MakeText("%u x %u", uTileColumns, uTileRows);
    return uTiles > 1 ? MakeText("%u x %u tiles of %s", uTiles, uTiles, strTile.c_str()) : strTile;
}

std::string SExportForm::GetRangeText(const SGroundFacts& facts) const
{
    const auto getSample = [this](float fHeight)
    {
        const double dSample = (static_cast<double>(fHeight) - dBase) / dUnit;
        // As it is written, which may be less than the height.
        const double dStep = bRounded ? std::floor(dSample + 0.5) : dSample;
        return MakeNumber(dFull > 0.0 ? std::clamp(dStep, 0.0, dFull) : dStep);
    };
    return getSample(facts.fLow) + " to " + getSample(facts.fHigh);
}

std::string SExportForm::GetStepText() const
{
    return bRounded ? MakeNumber(dUnit) : "float";
}

std::string SExportForm::GetUnitText(const SGroundFacts& facts)
{
    return std::string("One unit of the level is taken for a ") +
           (facts.eUnit == ELevelUnit::Metre ? "metre." : "centimetre.");
}

std::string SExportForm::GetFitText(const SGroundFacts& facts) const
{
    return MakeText("The level's %u x %u vertices are interpolated to %u x %u samples.",
                    facts.uColumns,
                    facts.uRows,
                    uColumns,
                    uRows);
}

std::string SExportForm::GetText(const SExportTarget& target, const SGroundFacts& facts) const
{
    std::string strText = target.strName + "\n";
    strText += "Samples: " + GetSamplesText() + ", the first row is ";
    strText += std::string(target.bSouthFirst ? "south" : "north") + ", the first column is west\n";
    strText += "Numbers in the file: " + GetRangeText(facts) + "\n";
    strText += std::string("Height of one ") + (bRounded ? "step" : "unit") + ": " +
               MakeNumber(dUnit) + "\n";
    // What an import of the file reads again.
    strText += "Height of 0 in the file: " + MakeNumber(dBase) + "\n";
    const double dWidth = GetNumber(*this, facts, EExportNumber::Width);
    const double dDepth = GetNumber(*this, facts, EExportNumber::Depth);
    strText += "Size: " + MakeNumber(dWidth) + " x " + MakeNumber(dDepth) + "\n";
    strText += "Spacing: " + MakeNumber(GetNumber(*this, facts, EExportNumber::SpacingX)) + " x " +
               MakeNumber(GetNumber(*this, facts, EExportNumber::SpacingZ)) + "\n";
    strText +=
        "Maximum height: " + MakeNumber(GetNumber(*this, facts, EExportNumber::Highest)) + "\n";
    const SElevationFormat* pFormat = FindFormatByName(("x." + target.strExtension).c_str());
    if (pFormat != nullptr && pFormat->bRaw)
    {
        strText += std::string("Byte order: ") +
                   (target.eByteOrder == EByteOrder::Big ? "big" : "little") + "\n";
    }
    if (IsInterpolated(facts))
    {
        strText += GetFitText(facts) + "\n";
    }
    if (target.bMetres)
    {
        strText += GetUnitText(facts) + "\n";
    }
    for (const auto& [strLabel, strNumber] : numbers)
    {
        strText.append(strLabel).append(": ").append(strNumber).append("\n");
    }
    return strText;
}
