#pragma once

#include "host/Export.h"

#include <cstdint>

class CWindow;
class QCursor;
class QWidget;
struct SCursorResource;

// For programs that are made of Qt widgets themselves and show the framework's windows among them.

// The widget behind a window, which is borrowed; null for an object without a window.
TELLUR_API QWidget* GetWidget(const CWindow& window);

// Gives a view of the program a handle, by which the mouse can be captured for it. The cursor that
// is set shows over registered views alone. The handle ends with the widget.
TELLUR_API uintptr_t RegisterView(QWidget& view);

// Makes a cursor of the picture that fits the scale, and the system's arrow of null.
TELLUR_API QCursor MakeCursor(const SCursorResource* pCursor, double fScale);
