#pragma once

#include "tools/height/SHeightOptions.h"

// Prints what each of options.inputs is. Answers false when one of them cannot be read, with a
// logged line that names it and the fault; the others are still told about.
bool PrintInfo(const SHeightOptions& options);
