#pragma once

#include "parser/CTCParseConstants.h"
#include "parser/CTCParseIncludes.h"
#include "parser/CTCParseNameList.h"
#include "parser/CTCParseReader.h"
#include "parser/CTCParseValues.h"

#include <cstdint>
#include <memory>

// Reads the statements that begin with '!' or '$': declarations of keywords, includes, and
// definitions of constants.
class CTCParseDirectives
{
public:
    // All are borrowed as long as this lives.
    CTCParseDirectives(CTCParseReader& reader,
                       CTCParseConstants& constants,
                       CTCParseValues& values,
                       ITCParseErrors& errors);

    // Reads on behind a '!'. Adds a declaration to the list, or returns the name of the file to
    // include here, which is not empty. Returns null otherwise, and when the error flag is set.
    std::unique_ptr<CTCPARSE_STRING> ReadDeclaration(CTCParseNameList& declarations,
                                                     int32_t* pError);

    // Reads on behind a '$' and adds a constant, unless it sets the error flag.
    void ReadConstDef(int32_t* pError);

    // What the include directives have read so far.
    const CTCParseIncludes& GetIncludes() const { return m_Includes; }

private:
    bool ReadType(int nChar, ETCParseType* pType);
    bool ReadTypes(CTCPARSE_KEYWORD& declaration, int32_t* pError);

    CTCParseReader& m_Reader;
    CTCParseConstants& m_Constants;
    CTCParseValues& m_Values;
    ITCParseErrors& m_Errors;
    CTCParseIncludes m_Includes;
};
