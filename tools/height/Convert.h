#pragma once

#include "tools/height/SHeightOptions.h"

// Converts options.inputs[0] to options.strOutput and prints what came of it. False with one logged
// line that names the file and the fault.
bool Convert(const SHeightOptions& options);

// The first of 1, 2, 5, 10, 20, 50 ... that is above the highest sample; 1000 when no sample is
// above 0.
float GetDefaultMaxHeight(float fHighest);
