#pragma once

#include "host/Export.h"

#include <cstdint>

// Sends all mouse input to the window (IViewWindow::GetWindowHandle) until ReleaseCapture. With 0
// it goes on to the window that the mouse is over.
TELLUR_API void SetCapture(uintptr_t uWindow);
TELLUR_API void ReleaseCapture();
