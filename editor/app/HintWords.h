#pragma once

#include <QString>

class CKeyBindings;
class IPluginMark;
struct SHandState;

// What a person who has made no stroke yet can do with the mouse and the keys, with what is at hand
// now: one line. pMark: null for a plug-in without. bTop: the view at the cursor looks straight
// down.
QString
GetHintWords(IPluginMark* pMark, const SHandState& hand, const CKeyBindings& keys, bool bTop);
