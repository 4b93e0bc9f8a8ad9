#pragma once

#include "host/Export.h"

#include <cstdint>

// Shows a colour chooser and waits for the answer. uColor (red | green << 8 | blue << 16) is what
// it starts with and then what was chosen. Answers false and keeps the colour when it is cancelled.
TELLUR_API bool ChooseColor(uint32_t& uColor);
