#pragma once

#include <QString>

class CKeyBindings;
class IPluginMark;
struct SHandState;

// Whether the left button does nothing. bMode: a mode of the plug-in is current.
bool IsHandEmpty(const SHandState& hand, bool bMode);

// What a person can do with the mouse and the keys, with what is at hand now: one line; with an
// empty hand what takes a tool. pMark: null for a plug-in without. bTop: the view at the cursor
// does not turn.
QString GetHintWords(
    IPluginMark* pMark, const SHandState& hand, const CKeyBindings& keys, bool bMode, bool bTop);
