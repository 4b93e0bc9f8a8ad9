#pragma once

#include "host/Export.h"

#include <cstdarg>
#include <string>

// Replaces strText with the printf-style text of any length. Numbers have a decimal point whatever
// the process's locale says: files and messages must read the same everywhere. False when the
// format cannot be expanded; strText is then untouched.
bool FormatText(std::string& strText, const char* pszFormat, va_list arguments) TELLUR_PRINTF(2, 0);
