#pragma once

#include "parser/CTCParseNameList.h"
#include "parser/CTCParseReader.h"

#include <cstdint>

// The constants that a file may name, and the reading of such names. A file has the constants of
// the file that includes it and of those that it has included.
class CTCParseConstants
{
public:
    using NameBuffer = CTCParseReader::NameBuffer;

    // Both are borrowed as long as this lives.
    CTCParseConstants(CTCParseReader& reader, ITCParseErrors& errors);

    // pConst: owned from now on; a lower-case name and one parameter, its value. It hides older
    // ones of its name.
    void Add(CTCPARSE_KEYWORD* pConst) { m_List.Add(pConst); }

    // Reads a constant's name and returns its value, owned by this. Null with the error flag set
    // when it has another type; null without when there is no such constant, and szName is then
    // what was read.
    const CTCPARSE_PARAM* Read(ETCParseType eType, NameBuffer& szName, int32_t* pError);

    // Says that there is no such constant. False, without a word, when nError tells of a failure.
    bool WarnUnknown(const NameBuffer& szName, int32_t nError);

    // An included file takes the constants of the file around it, which has none meanwhile, and
    // that file gets a copy of all of them when the included one has been read.
    void TakeFrom(CTCParseConstants& outer);
    void CopyTo(CTCParseConstants& outer) const;

private:
    CTCParseReader& m_Reader;
    ITCParseErrors& m_Errors;
    CTCParseNameList m_List;
};
