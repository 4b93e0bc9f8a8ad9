#pragma once

#include "tools/height/SHeightOptions.h"

// Draws options.inputs side by side into the image file options.strOutput, all with the height
// range of the first, or as a camera sees them. Answers false, with one logged line that names the
// file and the fault, when one cannot be read, drawn or written.
bool DrawPicture(const SHeightOptions& options);
