#pragma once

#include <cstddef>
#include <cstdint>

// How a file reads variables of the host (%name). Each callback says whether it knows the variable
// and then writes its value; outputs arrive as zeros. Names are as written in the file and borrowed
// for the call. The parser owns nothing of what it gets.

// Bytes that a string callback may write, its NUL included.
constexpr size_t TCPARSE_STRING_VARIABLE_BYTES = 256;

using TCParseIntVarCallback = bool (*)(int32_t* pValue, const char* pszName);

// pszMember is always empty: a file cannot ask for a member of a variable.
using TCParseFloatVarCallback = bool (*)(float* pValue, const char* pszName, const char* pszMember);

using TCParseVec3VarCallback = bool (*)(float* pValues, const char* pszName); // 3 values
using TCParseVec4VarCallback = bool (*)(float* pValues, const char* pszName); // 4 values

// pBuffer: TCPARSE_STRING_VARIABLE_BYTES, not checked by the parser; a missing NUL is supplied.
using TCParseStringVarCallback = bool (*)(char* pBuffer, const char* pszName);

// The callbacks of a parse; null where there is none.
struct STCParseCallbacks
{
    TCParseIntVarCallback pInt = nullptr;
    TCParseFloatVarCallback pFloat = nullptr;
    TCParseVec3VarCallback pVec3 = nullptr;
    TCParseVec4VarCallback pVec4 = nullptr;
    TCParseStringVarCallback pString = nullptr;
};
