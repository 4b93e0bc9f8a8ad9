#include "editor/app/SMouseBindings.h"

#include "editor/core/Words.h"

#include <utility>

const std::array<SMouseChord, 8> SMouseBindings::CHORDS = {{
    {TextKey("Nothing else"), Qt::NoButton, Qt::NoModifier},
    {TextKey("Alt and left button"), Qt::LeftButton, Qt::AltModifier},
    {TextKey("Ctrl, Alt and left button"), Qt::LeftButton, Qt::ControlModifier | Qt::AltModifier},
    {TextKey("Shift, Alt and left button"), Qt::LeftButton, Qt::ShiftModifier | Qt::AltModifier},
    {TextKey("Alt and right button"), Qt::RightButton, Qt::AltModifier},
    {TextKey("Shift and right button"), Qt::RightButton, Qt::ShiftModifier},
    {TextKey("Alt and middle button"), Qt::MiddleButton, Qt::AltModifier},
    {TextKey("Shift and middle button"), Qt::MiddleButton, Qt::ShiftModifier},
}};

ECameraMove SMouseBindings::Find(Qt::MouseButton eButton, Qt::KeyboardModifiers modifiers) const
{
    constexpr Qt::KeyboardModifiers HEEDED =
        Qt::ShiftModifier | Qt::ControlModifier | Qt::AltModifier;
    const std::pair<int, ECameraMove> moves[] = {
        {iOrbit, ECameraMove::Orbit}, {iPan, ECameraMove::Pan}, {iZoom, ECameraMove::Zoom}};
    for (const auto& [iChord, eMove] : moves)
    {
        const SMouseChord& chord = CHORDS[static_cast<size_t>(iChord)];
        if (iChord != NOTHING && chord.eButton == eButton &&
            chord.modifiers == (modifiers & HEEDED))
        {
            return eMove;
        }
    }
    return ECameraMove::None;
}

bool SMouseBindings::HasClash() const
{
    return (iOrbit != NOTHING && (iOrbit == iPan || iOrbit == iZoom)) ||
           (iPan != NOTHING && iPan == iZoom);
}
