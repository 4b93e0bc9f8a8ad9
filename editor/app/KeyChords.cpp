#include "editor/app/KeyChords.h"

#include <QKeyEvent>

namespace
{

constexpr std::pair<uint32_t, Qt::KeyboardModifier> MODIFIERS[] = {
    {KEY_SHIFT, Qt::ShiftModifier},
    {KEY_CONTROL, Qt::ControlModifier},
    {KEY_ALT, Qt::AltModifier},
};

SKeyChord MakeChord(int iKey, Qt::KeyboardModifiers modifiers)
{
    SKeyChord chord;
    chord.uKey = static_cast<uint32_t>(iKey);
    for (const auto& [uBit, eModifier] : MODIFIERS)
    {
        chord.uModifiers |= modifiers.testFlag(eModifier) ? uBit : 0U;
    }
    return chord;
}

} // namespace

QKeySequence GetSequence(const SKeyChord& chord)
{
    if (chord.uKey == 0)
    {
        return {};
    }
    Qt::KeyboardModifiers modifiers;
    for (const auto& [uBit, eModifier] : MODIFIERS)
    {
        modifiers.setFlag(eModifier, (chord.uModifiers & uBit) != 0);
    }
    return QKeySequence(QKeyCombination(modifiers, static_cast<Qt::Key>(chord.uKey)));
}

SKeyChord GetChord(const QKeyEvent& event)
{
    return MakeChord(event.key(), event.modifiers());
}
