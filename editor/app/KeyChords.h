#pragma once

#include "editor/core/CKeyBindings.h"

#include <QKeySequence>

class QKeyEvent;

// Key chords of the bindings and of Qt.

// Ids of keys that work as long as they are held.
constexpr char FLY_COMMAND[] = "camera.fly.";
constexpr char STROKE_COMMAND[] = "stroke.";

QKeySequence GetSequence(const SKeyChord& chord); // empty for no key
SKeyChord GetChord(const QKeyEvent& event);
