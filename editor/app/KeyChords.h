#pragma once

#include "editor/core/CKeyBindings.h"

#include <QKeySequence>

class QKeyEvent;

// Key chords of the bindings and of Qt.

constexpr char FLY_COMMAND[] = "camera.fly."; // ids of keys that work as long as they are held

QKeySequence GetSequence(const SKeyChord& chord); // empty for no key
SKeyChord GetChord(const QKeySequence& sequence); // its first key
SKeyChord GetChord(const QKeyEvent& event);
