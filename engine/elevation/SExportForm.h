#pragma once

#include "engine/elevation/SExportTarget.h"
#include "engine/elevation/SSampleView.h"
#include "host/Export.h"
#include "host/HostTypes.h"

#include <cstdint>
#include <string>
#include <vector>

constexpr uint32_t MOST_TILES = 64; // a side

// What of a level its files follow from.
struct SGroundFacts
{
    uint32_t uColumns = 0;
    uint32_t uRows = 0;
    SVec3 size;
    float fLow = 0.0F; // of the finite heights
    float fHigh = 0.0F;
    ELevelUnit eUnit = ELevelUnit::Metre;

    TELLUR_API static SGroundFacts Measure(const SSampleView& heights, const SVec3& size);
};

// What a target makes of a level. Made of its facts alone, so that a person sees at once what each
// target would write.
struct SExportForm
{
    uint32_t uTiles = 1;   // a side
    uint32_t uColumns = 0; // samples of the whole
    uint32_t uRows = 0;
    uint32_t uTileColumns = 0; // of one tile, which shares its edges with its neighbours
    uint32_t uTileRows = 0;
    double dUnit = 1.0; // height of one step, or of 1.0
    double dBase = 0.0; // height of 0
    double dFull = 0.0; // the number of full white; 0 where the file has none
    bool bRounded = false;
    std::vector<std::pair<std::string, std::string>> numbers; // a field and what to type there

    // False with the fault, a phrase without a name.
    TELLUR_API bool Make(const SExportTarget& target,
                         const SGroundFacts& facts,
                         uint32_t uTilesAside,
                         std::string& strFault);

    // Samples in other places than the vertices.
    bool IsInterpolated(const SGroundFacts& facts) const
    {
        return uColumns != facts.uColumns || uRows != facts.uRows;
    }

    TELLUR_API SExportOptions GetOptions(const SExportTarget& target) const;

    // One phrase each for a person: how many samples, from which number to which, height of a step.
    TELLUR_API std::string GetSamplesText() const;
    TELLUR_API std::string GetRangeText(const SGroundFacts& facts) const;
    TELLUR_API std::string GetStepText() const;

    // What the numbers of a target that counts metres go by.
    TELLUR_API static std::string GetUnitText(const SGroundFacts& facts);

    // What becomes of a level whose sides the program does not take.
    TELLUR_API std::string GetFitText(const SGroundFacts& facts) const;

    // All of it in lines, as SExportNotes reads them, for the file beside the height map.
    TELLUR_API std::string GetText(const SExportTarget& target, const SGroundFacts& facts) const;
};
