#pragma once

#include "tools/height/SSampleGrid.h"

#include <string>

// Reads a file of elevations: ".npy" by its content, ".hgt" by its name. False with one logged line
// that names the file and the fault; grid is then as it was.
bool ReadSamples(const std::string& strPath, SSampleGrid& grid);
