#pragma once

#include "engine/elevation/SSampleGrid.h"
#include "host/Export.h"

#include <string>

// Texts of reports. A floating number goes in as a string made by MakeNumber: printf would write
// the decimal point of the process's locale.
std::string MakeText(const char* pszFormat, ...) TELLUR_PRINTF(1, 2);

// Whole numbers whole, others in seven digits without zeros at the end.
TELLUR_API std::string MakeNumber(double dValue);

// The shortest text that reads back to the same number.
TELLUR_API std::string MakeExactText(double dValue);

// What a file says of its samples: "16 bits unsigned, big-endian".
TELLUR_API std::string GetSampleTypeText(const SSampleInfo& info);
