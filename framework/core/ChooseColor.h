#pragma once

#include "host/Export.h"

#include <cstdint>

// The system's colour chooser, any colour allowed. uColor: red | green << 8 | blue << 16, where it
// starts and what was chosen. False, with the colour kept, when it is cancelled.
TELLUR_API bool ChooseColor(uint32_t& uColor);
