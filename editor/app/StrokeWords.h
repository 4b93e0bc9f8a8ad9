#pragma once

#include <QString>

class IPluginTools;
struct SHandState;
struct SInputSettings;

// What the status line says of the next stroke beside its tool: its images, whether it builds up,
// the path that is being set. Empty for an ordinary stroke. pTools: null for a plug-in without.
QString
GetStrokeWords(const SInputSettings& settings, const SHandState& hand, IPluginTools* pTools);
