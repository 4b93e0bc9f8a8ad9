#pragma once

#include "engine/elevation/SExportPlan.h"
#include "engine/elevation/SSampleView.h"
#include "host/Export.h"
#include "host/HostTypes.h"

// Export of height maps, in two steps so that a user can see what the first says before the second
// writes. First row of a file is north (z = 0), first column west (x = 0).

// The format is that of the path's extension. size: the terrain's size vector. Nothing is written.
// False with one logged line.
TELLUR_API bool PlanExport(const char* pszPath,
                           const SSampleView& heights,
                           const SVec3& size,
                           const SExportOptions& options,
                           SExportPlan& plan);

// Writes heights as planned for them, through fs::file. Row by row, without a copy of the grid; a
// PNG takes two bytes a sample and its own length. False with one logged line; the old file then
// stays.
TELLUR_API bool ExportHeights(const char* pszPath,
                              const SSampleView& heights,
                              const SVec3& size,
                              const SExportPlan& plan);
