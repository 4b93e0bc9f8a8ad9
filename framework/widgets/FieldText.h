#pragma once

#include "host/Export.h"

#include <string>

// Numbers in the edit fields of a form.

// Writes a number as a person reads it, never with an exponent: at most six significant digits
// (3200, 0.35), every digit before the point of a large number (1000000), and nine decimals of a
// very small one.
std::string FormatFieldValue(float fValue);
// Reads the number that the text is; blanks around it and a comma for the point are allowed. A text
// that shows fValue already leaves it with all its digits. Answers false and keeps the value for
// anything else.
bool ReadFieldValue(const std::string& strText, float& fValue);
// Whether the text, however it is spelt, shows the value.
TELLUR_API bool ReadsAsValue(const std::string& strText, float fValue);
