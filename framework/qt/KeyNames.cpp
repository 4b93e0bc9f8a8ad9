#include "framework/qt/KeyNames.h"

#include <QKeyEvent>

#include <utility>

namespace
{

constexpr std::pair<int, EVirtualKey> KEYS[] = {
    {Qt::Key_Tab, KEY_TAB},
    {Qt::Key_Backtab, KEY_TAB}, // Tab with Shift
    {Qt::Key_Return, KEY_ENTER},
    {Qt::Key_Enter, KEY_ENTER},
    {Qt::Key_Escape, KEY_ESCAPE},
    {Qt::Key_Space, KEY_SPACE},
    {Qt::Key_Left, KEY_LEFT},
    {Qt::Key_Up, KEY_UP},
    {Qt::Key_Right, KEY_RIGHT},
    {Qt::Key_Down, KEY_DOWN},
    {Qt::Key_Delete, KEY_DELETE},
    {Qt::Key_F2, KEY_F2},
};

uint32_t FindKey(int iQtKey)
{
    for (const auto& [iKey, eKey] : KEYS)
    {
        if (iKey == iQtKey)
        {
            return eKey;
        }
    }
    // Qt numbers these by their characters, as EVirtualKey does.
    const bool bPlain = (iQtKey >= Qt::Key_0 && iQtKey <= Qt::Key_9) ||
                        (iQtKey >= Qt::Key_A && iQtKey <= Qt::Key_Z);
    return bPlain ? static_cast<uint32_t>(iQtKey) : 0;
}

} // namespace

SKeyEvent MakeKeyEvent(const QKeyEvent& event)
{
    return {FindKey(event.key()),
            event.modifiers().testFlag(Qt::ControlModifier),
            event.modifiers().testFlag(Qt::ShiftModifier),
            event.modifiers().testFlag(Qt::AltModifier)};
}
