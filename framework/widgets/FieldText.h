#pragma once

#include <string>

// Numbers in the edit fields of a form.

// At most six significant digits and never an exponent: 3200, 0.35, 1000000.
std::string FormatFieldValue(float fValue);
// Takes the number that the text is, blanks around it and a comma for the point allowed. A text
// that shows fValue already leaves all its digits. False, with the value kept, for anything else.
bool ReadFieldValue(const std::string& strText, float& fValue);
// Whether the text, however it is spelt, shows the value.
bool ReadsAsValue(const std::string& strText, float fValue);
