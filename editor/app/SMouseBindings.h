#pragma once

#include <Qt>

#include <array>

// What the mouse can do to a camera beside what its right and middle button and its wheel do.
enum class ECameraMove
{
    None,
    Orbit,
    Pan,
    Zoom,
};

// A button with the modifiers that are held with it.
struct SMouseChord
{
    const char* pszText = ""; // a key of Words
    Qt::MouseButton eButton = Qt::NoButton;
    Qt::KeyboardModifiers modifiers = {};
};

// Whom two of three buttons are missing, or whose hand knows other ones, gives a camera's moves to
// these. The left button alone always sculpts.
struct SMouseBindings
{
    static constexpr int NOTHING = 0;
    static const std::array<SMouseChord, 8> CHORDS; // the first is nothing

    // Places in the table above; two of them may be alike only where they are nothing.
    int iOrbit = NOTHING;
    int iPan = NOTHING;
    int iZoom = NOTHING;
    // Two fingers on a touchpad move the view; with Ctrl they zoom. Otherwise they are a wheel.
    bool bFingersPan = true;

    ECameraMove Find(Qt::MouseButton eButton, Qt::KeyboardModifiers modifiers) const;
    bool HasClash() const;
};
