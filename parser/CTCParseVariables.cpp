#include "parser/CTCParseVariables.h"

#include <cstring>

CTCParseVariables::CTCParseVariables(CTCParseReader& reader, ITCParseErrors& errors)
    : m_Reader(reader)
    , m_Errors(errors)
{
}

bool CTCParseVariables::ReadName(bool bHasCallback, NameBuffer& szName, int32_t* pError)
{
    if (const int nFailure = m_Reader.ReadWord(szName))
    {
        *pError = nFailure;
        return false;
    }
    // Looked at after the name, so that the message can tell it.
    if (!bHasCallback)
    {
        m_Errors.Error("variable callback not specified: unable to read '%s' variable!\n", szName);
        *pError = 1;
        return false;
    }
    return true;
}

CTCPARSE_INT* CTCParseVariables::ReadInt(int32_t* pError)
{
    NameBuffer szName;
    if (!ReadName(m_Callbacks.pInt != nullptr, szName, pError))
    {
        return nullptr;
    }
    int32_t nValue = 0;
    if (!m_Callbacks.pInt(&nValue, szName))
    {
        m_Errors.Error("int variable '%s' not found!\n", szName);
        *pError = 1;
        return nullptr;
    }
    auto* pValue = new CTCPARSE_INT(nValue);
    pValue->SetRefName(szName);
    return pValue;
}

CTCPARSE_FLOAT* CTCParseVariables::ReadFloat(int32_t* pError)
{
    NameBuffer szName;
    if (!ReadName(m_Callbacks.pFloat != nullptr, szName, pError))
    {
        return nullptr;
    }
    // Members of variables are refused, without a message.
    if (*m_Reader.GetCursor() == '.')
    {
        *pError = 1;
        return nullptr;
    }
    // An unknown variable is reported but no failure, so that old files keep loading: it is 0.
    auto* pValue = new CTCPARSE_FLOAT(0.0F);
    if (m_Callbacks.pFloat(&pValue->value, szName, ""))
    {
        pValue->SetRefName(szName);
    }
    else
    {
        m_Errors.Error("float variable '%s' not found!\n", szName);
    }
    return pValue;
}

CTCPARSE_STRING* CTCParseVariables::ReadString(int32_t* pError)
{
    NameBuffer szName;
    if (!ReadName(m_Callbacks.pString != nullptr, szName, pError))
    {
        return nullptr;
    }
    char szText[TCPARSE_STRING_VARIABLE_BYTES] = {};
    if (!m_Callbacks.pString(szText, szName))
    {
        m_Errors.Error("string variable '%s' not found!\n", szName);
        *pError = 1;
        return nullptr;
    }
    // A callback that has left no NUL is cut where it would have to be.
    auto* pValue = new CTCPARSE_STRING(szText, strnlen(szText, sizeof(szText) - 1));
    pValue->SetRefName(szName);
    return pValue;
}

CTCPARSE_VEC3* CTCParseVariables::ReadVec3(int32_t* pError)
{
    return ReadVector<CTCPARSE_VEC3>(m_Callbacks.pVec3, "vec3", pError);
}

CTCPARSE_VEC4* CTCParseVariables::ReadVec4(int32_t* pError)
{
    return ReadVector<CTCPARSE_VEC4>(m_Callbacks.pVec4, "vec4", pError);
}

template <class TVector>
TVector*
CTCParseVariables::ReadVector(VectorCallback pCallback, const char* pszType, int32_t* pError)
{
    NameBuffer szName;
    if (!ReadName(pCallback != nullptr, szName, pError))
    {
        return nullptr;
    }
    float fValues[4] = {};
    // ReadName has made sure of the callback.
    const bool bFound =
        pCallback(fValues, szName); // NOLINT(clang-analyzer-core.CallAndMessage): see above
    if (!bFound)
    {
        m_Errors.Error("%s variable '%s' not found!\n", pszType, szName);
    }
    auto* pValue = new TVector(fValues);
    pValue->SetRefName(bFound ? szName : nullptr);
    return pValue;
}
