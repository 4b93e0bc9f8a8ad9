#pragma once

#include "tools/height/SHeightOptions.h"

// Draws options.inputs side by side into the image file options.strOutput, all with the height
// range of the first. False with one logged line that names the file and the fault.
bool DrawPicture(const SHeightOptions& options);
