#pragma once

#include "parser/CTCParseConstants.h"
#include "parser/CTCParseLiterals.h"
#include "parser/CTCParseVariables.h"

// Reads one value of the type that is asked for: written out, as the name of a constant, or taken
// from the host. The text does not choose the type.
//
// The readers return null when they set the error flag; the two of vectors also, without setting
// it, for an unknown constant, and the call then has one parameter fewer. Otherwise the caller owns
// the value.
class CTCParseValues
{
public:
    // All are borrowed as long as this lives.
    CTCParseValues(CTCParseReader& reader,
                   CTCParseConstants& constants,
                   CTCParseVariables& variables,
                   ITCParseErrors& errors);

    CTCPARSE_PARAM* ReadValue(ETCParseType eType, int32_t* pError);
    CTCPARSE_INT* ReadInt(int32_t* pError);
    CTCPARSE_FLOAT* ReadFloat(int32_t* pError);
    CTCPARSE_STRING* ReadString(int32_t* pError);
    CTCPARSE_VEC3* ReadVec3(int32_t* pError);
    CTCPARSE_VEC4* ReadVec4(int32_t* pError);

private:
    using NameBuffer = CTCParseReader::NameBuffer;

    struct SVectorKind;

    template <class TVector>
    TVector* ReadVector(const SVectorKind& kind,
                        TVector* (CTCParseVariables::*pReadVariable)(int32_t*),
                        int32_t* pError);
    bool ReadComponents(const SVectorKind& kind, float* pValues, int32_t* pError);

    CTCParseReader& m_Reader;
    CTCParseConstants& m_Constants;
    CTCParseVariables& m_Variables;
    ITCParseErrors& m_Errors;
    CTCParseLiterals m_Literals;
};
