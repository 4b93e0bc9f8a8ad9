#include "parser/CTCParseValues.h"

#include <memory>

// The two kinds of vectors differ in length and in the words of one message.
struct CTCParseValues::SVectorKind
{
    ETCParseType eType;
    size_t nValues;
    const char* pszName;
    const char* pszBracketMissed;
};

CTCParseValues::CTCParseValues(CTCParseReader& reader,
                               CTCParseConstants& constants,
                               CTCParseVariables& variables,
                               ITCParseErrors& errors)
    : m_Reader(reader)
    , m_Constants(constants)
    , m_Variables(variables)
    , m_Errors(errors)
    , m_Literals(reader, errors)
{
}

CTCPARSE_PARAM* CTCParseValues::ReadValue(ETCParseType eType, int32_t* pError)
{
    switch (eType)
    {
    case tcparse_int:
        return ReadInt(pError);
    case tcparse_float:
        return ReadFloat(pError);
    case tcparse_string:
        return ReadString(pError);
    case tcparse_vec3:
        return ReadVec3(pError);
    case tcparse_vec4:
        return ReadVec4(pError);
    }
    return nullptr;
}

CTCPARSE_INT* CTCParseValues::ReadInt(int32_t* pError)
{
    // One character tells the three forms apart: a variable, a number, or the name of a constant.
    const int nChar = m_Reader.GetChar();
    if (nChar == '%')
    {
        return m_Variables.ReadInt(pError);
    }
    if (m_Literals.StartsNumber(nChar))
    {
        int32_t nValue = 0;
        const bool bRead = m_Literals.ReadIntDigits(nChar == '-', &nValue, pError);
        return bRead ? new CTCPARSE_INT(nValue) : nullptr;
    }
    NameBuffer szName;
    if (const CTCPARSE_PARAM* pConst = m_Constants.Read(tcparse_int, szName, pError))
    {
        return new CTCPARSE_INT(static_cast<const CTCPARSE_INT*>(pConst)->value);
    }
    return m_Constants.WarnUnknown(szName, *pError) ? new CTCPARSE_INT(0) : nullptr;
}

CTCPARSE_FLOAT* CTCParseValues::ReadFloat(int32_t* pError)
{
    const int nChar = m_Reader.GetChar();
    if (nChar == '%')
    {
        return m_Variables.ReadFloat(pError);
    }
    if (m_Literals.StartsNumber(nChar))
    {
        float fValue = 0.0F;
        const bool bRead = m_Literals.ReadFloatDigits(nChar == '-', &fValue, pError);
        return bRead ? new CTCPARSE_FLOAT(fValue) : nullptr;
    }
    NameBuffer szName;
    if (const CTCPARSE_PARAM* pConst = m_Constants.Read(tcparse_float, szName, pError))
    {
        return new CTCPARSE_FLOAT(static_cast<const CTCPARSE_FLOAT*>(pConst)->value);
    }
    return m_Constants.WarnUnknown(szName, *pError) ? new CTCPARSE_FLOAT(0.0F) : nullptr;
}

CTCPARSE_STRING* CTCParseValues::ReadString(int32_t* pError)
{
    const int nChar = m_Reader.GetChar();
    if (nChar == '"')
    {
        return m_Literals.ReadQuoted(pError);
    }
    if (nChar == '%')
    {
        return m_Variables.ReadString(pError);
    }
    // What is no quote and no variable begins the name of a constant.
    m_Reader.UngetChar(nChar);
    NameBuffer szName;
    if (const CTCPARSE_PARAM* pConst = m_Constants.Read(tcparse_string, szName, pError))
    {
        return new CTCPARSE_STRING(static_cast<const CTCPARSE_STRING*>(pConst)->value);
    }
    return m_Constants.WarnUnknown(szName, *pError) ? new CTCPARSE_STRING("???parser error???")
                                                    : nullptr;
}

CTCPARSE_VEC3* CTCParseValues::ReadVec3(int32_t* pError)
{
    static constexpr SVectorKind KIND = {
        tcparse_vec3, 3, "vec3", "right closing bracket missed in vec3"};
    return ReadVector<CTCPARSE_VEC3>(KIND, &CTCParseVariables::ReadVec3, pError);
}

CTCPARSE_VEC4* CTCParseValues::ReadVec4(int32_t* pError)
{
    static constexpr SVectorKind KIND = {
        tcparse_vec4, 4, "vec4", "right closing bracket in vec4 missed"};
    return ReadVector<CTCPARSE_VEC4>(KIND, &CTCParseVariables::ReadVec4, pError);
}

template <class TVector>
TVector* CTCParseValues::ReadVector(const SVectorKind& kind,
                                    TVector* (CTCParseVariables::*pReadVariable)(int32_t*),
                                    int32_t* pError)
{
    const int nChar = m_Reader.GetChar();
    if (nChar == '[')
    {
        float fValues[4] = {};
        return ReadComponents(kind, fValues, pError) ? new TVector(fValues) : nullptr;
    }
    if (nChar == '%')
    {
        return (m_Variables.*pReadVariable)(pError);
    }
    m_Reader.UngetChar(nChar);
    NameBuffer szName;
    if (const CTCPARSE_PARAM* pConst = m_Constants.Read(kind.eType, szName, pError))
    {
        auto* pValue = new TVector(*static_cast<const TVector*>(pConst));
        // The value comes from a constant now, whatever variable that was made of.
        pValue->SetRefName(nullptr);
        return pValue;
    }
    if (*pError == 0)
    {
        // No failure, but no value either: the call has one parameter fewer.
        m_Errors.Error("%s wrong syntax or const name", kind.pszName);
    }
    return nullptr;
}

bool CTCParseValues::ReadComponents(const SVectorKind& kind, float* pValues, int32_t* pError)
{
    static constexpr const char* ORDINALS[] = {"1st", "2nd", "3rd", "4th"};
    for (size_t i = 0; i < kind.nValues; ++i)
    {
        // Each number of a vector may be a variable or a constant, too.
        m_Reader.SkipSpace();
        const std::unique_ptr<CTCPARSE_FLOAT> pFloat(ReadFloat(pError));
        if (pFloat == nullptr)
        {
            m_Errors.Error("invalid %s float in %s", ORDINALS[i], kind.pszName);
            return false;
        }
        pValues[i] = pFloat->value;
        if (i + 1 < kind.nValues && m_Reader.NextChar() != ',')
        {
            m_Errors.Error("comma after %s float missed in %s", ORDINALS[i], kind.pszName);
            *pError = 1;
            return false;
        }
    }
    if (m_Reader.NextChar() != ']')
    {
        m_Errors.Fail(pError, kind.pszBracketMissed);
        return false;
    }
    return true;
}
