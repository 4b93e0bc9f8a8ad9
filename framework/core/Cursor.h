#pragma once

#include "framework/core/Resources.h"
#include "host/Export.h"

// A mouse cursor is a resource of a module; a handle stays good as long as the module is loaded.
using CursorHandle = const SCursorResource*;

// Looks in the current module only, so that a plug-in never takes another's cursor or one of the
// system for its own. Answers null when it has none of that id, and without a current module.
TELLUR_API CursorHandle LoadCursorResource(uint32_t uId);

// Shows the cursor over the program's views; null shows the system's own arrow.
TELLUR_API void SetCursor(CursorHandle pCursor);

// The cursor that was set last; null again once its module is unregistered.
TELLUR_API CursorHandle GetCursor();
