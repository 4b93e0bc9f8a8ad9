#include "editor/app/HintWords.h"

#include "editor/app/KeyChords.h"
#include "editor/app/SHandState.h"
#include "editor/core/CKeyBindings.h"
#include "editor/core/Words.h"
#include "host/IPluginMark.h"

#include <QStringList>

namespace
{

constexpr char TOOL_COMMAND[] = "tool.";
constexpr char TOGGLE_COMMAND[] = "tool.toggle";
constexpr char GUIDE_COMMAND[] = "help.guide";

QString GetKeyText(const SKeyChord& key)
{
    return GetSequence(key).toString(QKeySequence::NativeText);
}

// "1 to 6", as long as the keys of the tools follow one another.
QString GetToolKeys(const CKeyBindings& keys)
{
    SKeyChord first;
    SKeyChord last;
    for (const SKeyCommand& command : keys.GetCommands())
    {
        const bool bTool =
            command.strId.starts_with(TOOL_COMMAND) && command.strId != TOGGLE_COMMAND;
        if (!bTool)
        {
            continue;
        }
        const bool bNext = last.uKey == 0 || (command.key.uKey == last.uKey + 1 &&
                                              command.key.uModifiers == last.uModifiers);
        if (command.key.uKey == 0 || !bNext)
        {
            return {};
        }
        first = last.uKey == 0 ? command.key : first;
        last = command.key;
    }
    return last.uKey != 0 ? GetKeyText(first) + Words(" to ") + GetKeyText(last) : QString();
}

// What takes a tool where none is at hand.
QString GetNoToolWords(const CKeyBindings& keys)
{
    QStringList takes = {GetToolKeys(keys)};
    const SKeyCommand* pToggle = keys.FindById(TOGGLE_COMMAND);
    if (pToggle != nullptr && pToggle->key.uKey != 0)
    {
        takes << GetKeyText(pToggle->key);
    }
    takes.removeAll(QString());
    return takes.isEmpty() ? QString(Words("no tool: the Brush menu has them"))
                           : Words("no tool: press ") + takes.join(Words(" or "));
}

// What the left button does; empty: nothing.
QString GetLeftWords(IPluginMark* pMark, const SHandState& hand)
{
    if (hand.ruler.IsOn())
    {
        return Words("left drag measures");
    }
    if (hand.bProtect)
    {
        return Words("left drag protects the ground");
    }
    if (hand.path.IsOn())
    {
        return Words("left click sets a point of the path");
    }
    SToolMark mark;
    if (pMark == nullptr || !pMark->GetMark(false, mark))
    {
        return {};
    }
    switch (mark.eKind)
    {
    case EToolKind::Add:
        return mark.eSign == EToolSign::Lower ? Words("left drag lowers")
                                              : Words("left drag raises");
    case EToolKind::Smooth:
        return Words("left drag smooths");
    case EToolKind::Level:
        return Words("left drag sets the height");
    case EToolKind::Terrace:
        return Words("left drag makes terraces");
    case EToolKind::Point:
        return Words("left drag pulls the ground up and down");
    case EToolKind::Ramp:
        return Words("left drag lays a ramp");
    case EToolKind::Paint:
        return Words("left drag paints");
    default:
        return {};
    }
}

} // namespace

bool IsHandEmpty(const SHandState& hand, bool bMode)
{
    return !bMode && !hand.ruler.IsOn() && !hand.bProtect && !hand.path.IsOn();
}

QString GetHintWords(
    IPluginMark* pMark, const SHandState& hand, const CKeyBindings& keys, bool bMode, bool bTop)
{
    const bool bEmpty = IsHandEmpty(hand, bMode);
    QStringList parts = {bEmpty ? GetNoToolWords(keys) : GetLeftWords(pMark, hand),
                         bTop ? Words("middle drag moves") : Words("right drag turns"),
                         Words("wheel zooms")};
    if (!bEmpty)
    {
        const QString strTools = GetToolKeys(keys);
        parts << (strTools.isEmpty() ? QString(Words("tools in the Brush menu"))
                                     : strTools + Words(" tools"));
    }
    const SKeyCommand* pGuide = keys.FindById(GUIDE_COMMAND);
    if (pGuide != nullptr && pGuide->key.uKey != 0)
    {
        parts << GetKeyText(pGuide->key) + Words(" help");
    }
    parts.removeAll(QString());
    QString strWords = parts.join(", ");
    strWords[0] = strWords[0].toUpper();
    return strWords;
}
