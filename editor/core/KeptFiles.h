#pragma once

#include <string>

class IPluginBrushes;

// Keeps a file that is about to be replaced though it was not understood: a copy beside it,
// "FILE.bak", "FILE.bak2" and so on, the first name that is free. A copy that is there is never
// overwritten; one with the same bytes serves again, so a fault that stays makes one copy and not
// one each start. Returns the copy's path; empty after a logged line when there can be none.
std::string KeepFile(const std::string& strFile);

// Logs what the plug-in could not use of its library of brushes, with brush and line, and keeps the
// file then: the next save of the library holds only what was loaded. Nothing without a fault.
void KeepFaultyBrushes(IPluginBrushes& brushes);
