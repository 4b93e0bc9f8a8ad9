#pragma once

#include "host/Export.h"

#include <QStringList>

#include <cstdint>

class CWindow;
class QCursor;
class QWidget;
struct SCursorResource;

// For programs that are made of Qt widgets themselves and show the framework's windows among them.

// The widget behind a window, which is borrowed; null for an object without a window.
TELLUR_API QWidget* GetWidget(const CWindow& window);

// Titles of the groups of a form that are folded. Groups that are not named are opened.
TELLUR_API QStringList GetFoldedGroups(const CWindow& form);
TELLUR_API void FoldGroups(const CWindow& form, const QStringList& titles);

// Gives a view of the program a handle, by which the mouse can be captured for it. The cursor that
// is set shows over registered views alone. The handle ends with the widget.
TELLUR_API uintptr_t RegisterView(QWidget& view);

// Makes a cursor of the picture that fits the scale, and the system's arrow of null.
TELLUR_API QCursor MakeCursor(const SCursorResource* pCursor, double fScale);
