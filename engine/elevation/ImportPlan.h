#pragma once

#include "engine/elevation/Fit.h"
#include "engine/elevation/HeightImport.h"

#include <string>
#include <vector>

// What becomes of a file that was read. Made of what the file says and not of its samples, so that
// a person sees at once what every choice leads to; the terrain is then made by it.
struct SImportPlan
{
    SFitWindow window; // of the samples as they are turned
    double dOffset = 0.0;
    double dScale = 1.0; // a height is (sample - dOffset) * dScale
    float fLow = 0.0F;   // of the heights of the whole file
    float fHigh = 0.0F;
    SVec3 size;   // of the terrain
    SGeoTags geo; // of its vertices

    // Metres between samples of a file in degrees, along x and z of the terrain; 0 when its
    // latitude is not known, and for others.
    double dMetresX = 0.0;
    double dMetresZ = 0.0;
    double dLatitude = 0.0; // of the middle, when they are not 0

    std::vector<std::string> lines; // as those of SImportReport: what is assumed and done
};

// How a file is taken that nobody turns, as a line of the report.
TELLUR_API std::string GetOrderLine(bool bTerrain);

// Plans an import. info, report: of the file, as ReadElevation gives them. False with the fault, a
// phrase without the file's name; plan is then as it was.
TELLUR_API bool PlanImport(const SSampleInfo& info,
                           const SImportReport& report,
                           const SImportOptions& options,
                           SImportPlan& plan,
                           std::string& strFault);
