#pragma once

#include "parser/CTCParseNodes.h"
#include "parser/CTCParseReader.h"
#include "parser/STCParseCallbacks.h"

#include <cstdint>

// Values that a file takes from the host (%name). What the host does not know is an error for ints
// and strings; for floats and vectors it is a message and zeros, so that old files keep loading.
class CTCParseVariables
{
public:
    // Both are borrowed as long as this lives. Nobody answers until SetCallbacks.
    CTCParseVariables(CTCParseReader& reader, ITCParseErrors& errors);

    void SetCallbacks(const STCParseCallbacks& callbacks) { m_Callbacks = callbacks; }

    const STCParseCallbacks& GetCallbacks() const { return m_Callbacks; }

    // Read a name behind a '%' and ask the host for its value, which the caller owns. Null with the
    // error flag set.
    CTCPARSE_INT* ReadInt(int32_t* pError);
    CTCPARSE_FLOAT* ReadFloat(int32_t* pError);
    CTCPARSE_STRING* ReadString(int32_t* pError);
    CTCPARSE_VEC3* ReadVec3(int32_t* pError);
    CTCPARSE_VEC4* ReadVec4(int32_t* pError);

private:
    using NameBuffer = CTCParseReader::NameBuffer;
    using VectorCallback = bool (*)(float* pValues, const char* pszName);

    // False, with the flag set, when the name cannot be read or nobody answers.
    bool ReadName(bool bHasCallback, NameBuffer& szName, int32_t* pError);
    template <class TVector>
    TVector* ReadVector(VectorCallback pCallback, const char* pszType, int32_t* pError);

    CTCParseReader& m_Reader;
    ITCParseErrors& m_Errors;
    STCParseCallbacks m_Callbacks;
};
