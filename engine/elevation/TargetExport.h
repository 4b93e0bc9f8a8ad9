#pragma once

#include "engine/elevation/SExportForm.h"
#include "host/Export.h"

#include <optional>
#include <string>
#include <vector>

// Export for a program that asks for a certain form, in two steps like HeightExport.h.

struct STargetExport
{
    SExportTarget target;
    SGroundFacts facts;
    SExportForm form;
    SExportPlan plan;           // of the whole; its lines say all that is to be said
    std::vector<float> samples; // of the whole where they are not the vertices

    // What is there already: files whose contents are replaced, and tiles of a larger set, which
    // would be read with the new ones and are removed when those are in place.
    std::vector<std::string> replaced;
    std::vector<std::string> removed;

    SSampleView GetSamples(const SSampleView& heights) const
    {
        return samples.empty() ? heights : SSampleView{samples.data(), form.uColumns, form.uRows};
    }
};

// What a person says of such an export.
struct STargetChoice
{
    uint32_t uTiles = 1;                 // a side
    std::optional<ELevelUnit> unit = {}; // none: GuessLevelUnit
};

// By the length that the ground has on its map: metres where one unit is about one. Ground that
// lies nowhere has the unit of the editor's texts. size: the terrain's size vector.
TELLUR_API ELevelUnit GuessLevelUnit(const SGeoTags& geo, const SVec3& size);

// Plans what is written: strPath, or its tiles, and a text beside it. geo: where the ground lies on
// a map. Takes the memory of a second grid where samples have to be
// interpolated. False with one logged line; made is then as it was.
TELLUR_API bool PlanTargetExport(const std::string& strPath,
                                 const SExportTarget& target,
                                 const STargetChoice& choice,
                                 const SSampleView& heights,
                                 const SVec3& size,
                                 const SGeoTags& geo,
                                 STargetExport& made);

// Writes the heights that it was planned for. All files take their places together: false with one
// logged line, and every old file is as it was; only when a tile cannot be removed, the new ones
// are there.
TELLUR_API bool WriteTargetExport(const std::string& strPath,
                                  const SSampleView& heights,
                                  const SVec3& size,
                                  const STargetExport& made);

// Removes the text that such an export has left beside a file which is another one now, since an
// import would go by it. A text of somebody else stays. True when one is gone.
TELLUR_API bool DropOldText(const std::string& strPath);

// The text beside the height map, with the numbers to type in the other program.
TELLUR_API std::string GetTargetTextPath(const std::string& strPath);
