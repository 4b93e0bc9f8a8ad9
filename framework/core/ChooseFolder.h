#pragma once

#include "host/Export.h"

#include <string>

// The system's folder chooser. strFolder: where it starts, a path of the operating system or empty,
// and what was chosen. False, with the folder kept, when it is cancelled.
TELLUR_API bool ChooseFolder(std::string& strFolder);
