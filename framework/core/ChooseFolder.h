#pragma once

#include "host/Export.h"

#include <string>

// Shows a folder chooser and waits for the answer. strFolder is where it starts, a path of the
// operating system or empty, and then what was chosen. Answers false and keeps the folder when it
// is cancelled.
TELLUR_API bool ChooseFolder(std::string& strFolder);
