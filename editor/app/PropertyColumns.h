#pragma once

#include <string>

class QFont;

// Writes the first widths of the columns of the panel's property list into the registry, below the
// host's root there: the names of all fields fit in that font. Widths that are there already stay.
// To be called when the plug-in's classes are there and its panel is not.
void FitPropertyColumns(const std::string& strRegistryRoot, const QFont& font);
