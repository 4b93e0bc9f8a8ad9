#pragma once

#include "parser/CTCParseNodes.h"
#include "parser/CTCParseReader.h"

#include <cstdint>
#include <memory>

// Reads what is written out in the text: the digits of numbers and quoted strings.
class CTCParseLiterals
{
public:
    // Both are borrowed as long as this lives.
    CTCParseLiterals(CTCParseReader& reader, ITCParseErrors& errors);

    // Whether a number follows at nChar, which was just read; then its digits are next, whatever
    // blanks stand behind a sign. Otherwise a name is, from nChar on.
    bool StartsNumber(int nChar);

    // Read the digits of a number, whose sign has been read, and check what follows it. False with
    // the error flag set when that is no number.
    bool ReadIntDigits(bool bNegative, int32_t* pValue, int32_t* pError);
    bool ReadFloatDigits(bool bNegative, float* pValue, int32_t* pError);

    // Reads a quoted text from behind its opening quote. Returns null with the error flag set when
    // there is no closing one; otherwise the caller owns the text.
    CTCPARSE_STRING* ReadQuoted(int32_t* pError);

private:
    bool CheckNumber(const char* pStart, const char* pszBadEnd, int32_t* pError);
    CTCPARSE_STRING* ReadEscaped(int32_t* pError);

    CTCParseReader& m_Reader;
    ITCParseErrors& m_Errors;

    // Strings with escapes are put together here. As long as the text; made for the first of them.
    std::unique_ptr<char[]> m_Scratch;
};
