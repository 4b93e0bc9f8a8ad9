#pragma once

#include "engine/elevation/SImportOptions.h"

#include <string>
#include <vector>

// Which samples of a file become the vertices of a terrain, and how many vertices those are.
struct SFitWindow
{
    uint32_t uColumn = 0; // the window's first sample
    uint32_t uRow = 0;
    uint32_t uColumns = 0; // the window's samples
    uint32_t uRows = 0;
    uint32_t uSizeX = 0; // vertices over them
    uint32_t uSizeZ = 0;
};

// Chooses for a file of uColumns x uRows samples what the options ask for, and adds what is assumed
// and done to lines. False with the fault when the window that is asked for does not fit in.
bool ChooseFit(const SImportOptions& options,
               uint32_t uColumns,
               uint32_t uRows,
               SFitWindow& window,
               std::vector<std::string>& lines,
               std::string& strFault);
