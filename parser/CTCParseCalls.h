#pragma once

#include "parser/CTCParseNameList.h"
#include "parser/CTCParseReader.h"
#include "parser/CTCParseValues.h"
#include "parser/STCParseOutline.h"

#include <cstdint>
#include <vector>

// Reads calls: a declared name and, in brackets, the arguments that its declaration asks for.
class CTCParseCalls
{
public:
    // All are borrowed as long as this lives.
    CTCParseCalls(CTCParseReader& reader, CTCParseValues& values, ITCParseErrors& errors);

    // Returns the call, owned by the caller; null with the error flag set. pArguments: receives
    // where each argument stands, in the order of the declaration; null: not asked for.
    CTCPARSE_KEYWORD* ReadCall(const CTCParseNameList& declarations,
                               std::vector<STCParseOutline::SSpan>* pArguments,
                               int32_t* pError);

private:
    bool ReadArguments(const CTCPARSE_KEYWORD& declaration,
                       CTCPARSE_KEYWORD& call,
                       std::vector<STCParseOutline::SSpan>* pArguments,
                       int32_t* pError);

    CTCParseReader& m_Reader;
    CTCParseValues& m_Values;
    ITCParseErrors& m_Errors;
};
