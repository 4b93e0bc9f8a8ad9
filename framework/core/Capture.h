#pragma once

#include "host/Export.h"

#include <cstdint>

// Sends all mouse input to the window (IViewWindow::GetWindowHandle) until ReleaseCapture. 0 is
// allowed: no window in particular.
TELLUR_API void SetCapture(uintptr_t uWindow);
TELLUR_API void ReleaseCapture();
