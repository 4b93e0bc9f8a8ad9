#pragma once

#include "engine/elevation/SExportTarget.h"

#include <string>
#include <vector>

// The table of what other programs ask of a height map: the file that comes along, and after it
// the user's own, whose rows take the place of those with their names.

constexpr char READY_EXPORTS[] = "data/exports/ready.exports"; // in the data root

constexpr char OWN_EXPORTS[] = "ExportTargets.ini"; // in the folder of the settings

// Reads both. What is wrong with a row is one logged line, and the row is left out; so is what
// cannot be read as a whole. The user's own need not be there.
std::vector<SExportTarget> ReadExportTargets(const std::string& strReadyFile,
                                             const std::string& strOwnFile);

// Null for none of that name.
const SExportTarget* FindExportTarget(const std::vector<SExportTarget>& targets,
                                      const std::string& strName);
