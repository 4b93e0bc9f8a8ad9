#pragma once

#include <string>

class CTCPARSE_PARAM;

// Writing values so that a reader of the declarative syntax gets the very same back.

// In quotes, what would end the string or start an escape is escaped.
std::string QuoteText(const std::string& strText);
// The fewest digits that give the same float back, without an exponent, which the syntax lacks.
// What is no finite number is written as 0.
std::string MakeExactNumber(float fValue);
// A value with either of them, a vector in brackets.
std::string MakeValueText(const CTCPARSE_PARAM& param);
// Writes a whole file in one step. False after one logged line; the old file then stays.
bool WriteTextFile(const char* pszOperation,
                   const std::string& strPath,
                   const std::string& strText);
