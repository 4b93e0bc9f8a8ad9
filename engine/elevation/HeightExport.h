#pragma once

#include "engine/elevation/SExportPlan.h"
#include "engine/elevation/SSampleView.h"
#include "host/Export.h"
#include "host/HostTypes.h"

// Export of height maps, in two steps so that a user can see what the first says before the second
// writes. First row of a file is north (z = 0), first column west (x = 0).

// Plans the export into the format of the path's extension; nothing is written yet. size: the
// terrain's size vector. False with one logged line; plan is then as it was.
TELLUR_API bool PlanExport(const char* pszPath,
                           const SSampleView& heights,
                           const SVec3& size,
                           const SExportOptions& options,
                           SExportPlan& plan);

// Writes the heights that the plan was made for, through fs::file, row by row and without a copy of
// the grid; only a PNG takes memory, two bytes a sample and its own length. False with one logged
// line; the old file then stays.
TELLUR_API bool ExportHeights(const char* pszPath,
                              const SSampleView& heights,
                              const SVec3& size,
                              const SExportPlan& plan);
