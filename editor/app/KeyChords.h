#pragma once

#include "editor/core/CKeyBindings.h"

#include <QKeySequence>

class QKeyEvent;

// Key chords of the bindings and of Qt.

// Ids of keys that work as long as they are held.
constexpr char FLY_COMMAND[] = "camera.fly.";
constexpr char STROKE_COMMAND[] = "stroke.";

constexpr SKeyChord NO_KEY = {};

constexpr SKeyChord Key(uint32_t uKey)
{
    return {uKey, 0};
}

constexpr SKeyChord Shift(uint32_t uKey)
{
    return {uKey, KEY_SHIFT};
}

constexpr SKeyChord Ctrl(uint32_t uKey)
{
    return {uKey, KEY_CONTROL};
}

constexpr SKeyChord CtrlShift(uint32_t uKey)
{
    return {uKey, KEY_CONTROL | KEY_SHIFT};
}

constexpr SKeyChord Alt(uint32_t uKey)
{
    return {uKey, KEY_ALT};
}

constexpr SKeyChord CtrlAlt(uint32_t uKey)
{
    return {uKey, KEY_CONTROL | KEY_ALT};
}

QKeySequence GetSequence(const SKeyChord& chord); // empty for no key
SKeyChord GetChord(const QKeyEvent& event);
