#pragma once

#include <string>

class CTCPARSE_PARAM;

// Writing values so that a reader of the declarative syntax gets the very same back.

// Puts the text in quotes. What would end the string or start an escape is escaped.
std::string QuoteText(const std::string& strText);
// Writes the fewest digits that give the same float back, without an exponent, which the syntax
// lacks. What is no finite number is written as 0.
std::string MakeExactNumber(float fValue);
// Writes a value of any type: a string as QuoteText does, a float as MakeExactNumber does, a vector
// as such numbers in brackets.
std::string MakeValueText(const CTCPARSE_PARAM& param);
// Writes a whole file in one step and makes the folders that it needs. pszOperation: names the
// caller in the log. False after one logged line; the old file then stays.
bool WriteTextFile(const char* pszOperation,
                   const std::string& strPath,
                   const std::string& strText);
