#pragma once

#include "tools/height/SHeightOptions.h"

// Converts options.inputs[0] to options.strOutput; prints what is assumed and what comes of it
// before it writes. Answers false, with one logged line that names the file and the fault, when one
// cannot be read or written.
bool Convert(const SHeightOptions& options);
