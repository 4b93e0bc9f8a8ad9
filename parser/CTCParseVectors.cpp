#include "parser/CTCParse.h"

#include <memory>

// The two kinds of vectors differ in length and in the words of one message.
struct CTCParse::SVectorKind
{
    ETCParseType eType;
    size_t nValues;
    const char* pszName;
    const char* pszBracketMissed;
};

CTCPARSE_VEC3* CTCParse::ReadVec3(int32_t* pError)
{
    static constexpr SVectorKind KIND = {
        tcparse_vec3, 3, "vec3", "right closing bracket missed in vec3"};
    return ReadVector<CTCPARSE_VEC3>(KIND, m_Callbacks.pVec3, pError);
}

CTCPARSE_VEC4* CTCParse::ReadVec4(int32_t* pError)
{
    static constexpr SVectorKind KIND = {
        tcparse_vec4, 4, "vec4", "right closing bracket in vec4 missed"};
    return ReadVector<CTCPARSE_VEC4>(KIND, m_Callbacks.pVec4, pError);
}

template <class TVector>
TVector* CTCParse::ReadVector(const SVectorKind& kind,
                              bool (*pCallback)(float*, const char*),
                              int32_t* pError)
{
    float fValues[4] = {};
    NameBuffer szName;
    const int nChar = GetChar();
    if (nChar == '[')
    {
        return ReadComponents(kind, fValues, pError) ? new TVector(fValues) : nullptr;
    }
    if (nChar == '%')
    {
        if (!ReadVariable(pCallback != nullptr, szName, pError))
        {
            return nullptr;
        }
        // ReadVariable has made sure of the callback.
        const bool bFound =
            pCallback(fValues, szName); // NOLINT(clang-analyzer-core.CallAndMessage): see above
        if (!bFound)
        {
            Error("%s variable '%s' not found!\n", kind.pszName, szName);
        }
        auto* pValue = new TVector(fValues);
        pValue->SetRefName(bFound ? szName : nullptr);
        return pValue;
    }
    UngetChar(nChar);
    if (const CTCPARSE_PARAM* pConst = ReadConst(kind.eType, szName, pError))
    {
        auto* pValue = new TVector(*static_cast<const TVector*>(pConst));
        pValue->SetRefName(nullptr);
        return pValue;
    }
    if (*pError == 0)
    {
        // No failure, but no value either: the call has one parameter fewer.
        Error("%s wrong syntax or const name", kind.pszName);
    }
    return nullptr;
}

bool CTCParse::ReadComponents(const SVectorKind& kind, float* pValues, int32_t* pError)
{
    static constexpr const char* ORDINALS[] = {"1st", "2nd", "3rd", "4th"};
    for (size_t i = 0; i < kind.nValues; ++i)
    {
        SkipSpace();
        const std::unique_ptr<CTCPARSE_FLOAT> pFloat(ReadFloat(pError));
        if (pFloat == nullptr)
        {
            Error("invalid %s float in %s", ORDINALS[i], kind.pszName);
            return false;
        }
        pValues[i] = pFloat->value;
        if (i + 1 < kind.nValues && NextChar() != ',')
        {
            Error("comma after %s float missed in %s", ORDINALS[i], kind.pszName);
            *pError = 1;
            return false;
        }
    }
    if (NextChar() != ']')
    {
        Fail(pError, kind.pszBracketMissed);
        return false;
    }
    return true;
}
