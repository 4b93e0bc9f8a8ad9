#pragma once

#include "framework/core/IFrontEnd.h"
#include "host/Export.h"

// Whether the key is held at this moment.
TELLUR_API bool IsKeyDown(EKey eKey);
