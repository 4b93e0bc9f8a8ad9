#pragma once

#include "parser/CTCParseReader.h"
#include "parser/CTCParseValues.h"
#include "parser/STCParseOutline.h"

#include <cstdint>
#include <memory>
#include <vector>

// Reads the three directives that include a file, up to the name of the file. Opening that file is
// up to the caller.
class CTCParseIncludes
{
public:
    // All are borrowed as long as this lives.
    CTCParseIncludes(CTCParseReader& reader, CTCParseValues& values, ITCParseErrors& errors);

    // Read on behind the directive and the character after it; bOpened: that was a '('. They return
    // the name of the file to include. Null when there is none to include: with the error flag set,
    // when the condition does not hold, and for ReadInclude also when the name cannot be read.
    std::unique_ptr<CTCPARSE_STRING> ReadInclude(bool bOpened, int32_t* pError);
    std::unique_ptr<CTCPARSE_STRING> ReadIncludeIfInt(bool bOpened, int32_t* pError);
    std::unique_ptr<CTCPARSE_STRING> ReadIncludeIfFloat(bool bOpened, int32_t* pError);

    // All names that were read, in the order of the text, also of files that are not included.
    const std::vector<STCParseOutline::SInclude>& GetNames() const { return m_Names; }

    // Whether the text ended within the last name, which may lack its closing quote.
    bool IsCutOff() const { return m_bCutOff; }

private:
    // Reads the file's name and notes where it stands. Null with the error flag set.
    std::unique_ptr<CTCPARSE_STRING> ReadName(int32_t* pError);
    template <class TValue>
    std::unique_ptr<CTCPARSE_STRING> ReadIncludeIf(bool bOpened,
                                                   const char* pszDirective,
                                                   TValue* (CTCParseValues::*pReadValue)(int32_t*),
                                                   int32_t* pError);
    int ReadOperator();

    CTCParseReader& m_Reader;
    CTCParseValues& m_Values;
    ITCParseErrors& m_Errors;
    std::vector<STCParseOutline::SInclude> m_Names;
    bool m_bCutOff = false;
};
