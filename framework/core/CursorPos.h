#pragma once

#include "framework/core/IFrontEnd.h"
#include "host/Export.h"

// Where the mouse cursor is, on the screen. Setting it to where it is makes no mouse event.
TELLUR_API SScreenPoint GetCursorPos();
TELLUR_API void SetCursorPos(SScreenPoint point);
TELLUR_API SScreenPoint GetScreenSize(); // of the screen that the cursor is on
