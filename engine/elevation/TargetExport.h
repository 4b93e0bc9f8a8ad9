#pragma once

#include "engine/elevation/SExportForm.h"
#include "host/Export.h"

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

    SSampleView GetSamples(const SSampleView& heights) const
    {
        return samples.empty() ? heights : SSampleView{samples.data(), form.uColumns, form.uRows};
    }
};

// Plans what is written: strPath, or its tiles, uTiles a side, and a text beside it. geo: where
// the ground lies on a map. Takes the memory of a second grid where samples have to be
// interpolated. False with one logged line; made is then as it was.
TELLUR_API bool PlanTargetExport(const std::string& strPath,
                                 const SExportTarget& target,
                                 uint32_t uTiles,
                                 const SSampleView& heights,
                                 const SVec3& size,
                                 const SGeoTags& geo,
                                 STargetExport& made);

// Writes the heights that it was planned for. All files take their places together: false with one
// logged line, and every old file is as it was.
TELLUR_API bool WriteTargetExport(const std::string& strPath,
                                  const SSampleView& heights,
                                  const SVec3& size,
                                  const STargetExport& made);

// The text beside the height map, with the numbers to type in the other program.
TELLUR_API std::string GetTargetTextPath(const std::string& strPath);
