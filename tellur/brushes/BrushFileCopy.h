#pragma once

#include <string>

// The library of predefined brushes.
constexpr const char* PREDEFINED_BRUSHES = ".\\PredefinedBrushes.ini";

// The copy beside a brush file that stands in for it while it is saved: "__Copy" before the
// extension.
std::string GetBrushFileCopy(const std::string& strPath);

// When the file is missing and its copy is there, saving was cut short: the copy becomes the file
// again.
void RecoverBrushFile(const std::string& strPath);
