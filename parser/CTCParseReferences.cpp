#include "parser/CTCParse.h"

#include <cstring>

static const char* GetTypeName(ETCParseType eType)
{
    static constexpr const char* NAMES[] = {"int", "float", "string", "vec3", "vec4"};
    return NAMES[eType];
}

CTCPARSE_PARAM* CTCParse::ReadValue(ETCParseType eType, int32_t* pError)
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

bool CTCParse::ReadVariable(bool bHasCallback, NameBuffer& szName, int32_t* pError)
{
    if (const int nFailure = ReadWord(szName))
    {
        *pError = nFailure;
        return false;
    }
    if (!bHasCallback)
    {
        Error("variable callback not specified: unable to read '%s' variable!\n", szName);
        *pError = 1;
        return false;
    }
    return true;
}

const CTCPARSE_PARAM* CTCParse::ReadConst(ETCParseType eType, NameBuffer& szName, int32_t* pError)
{
    if (const int nFailure = ReadWord(szName))
    {
        *pError = nFailure;
        return nullptr;
    }
    NameBuffer szLower;
    memcpy(szLower, szName, sizeof(szLower));
    MakeLower(szLower);
    const CTCPARSE_KEYWORD* pConst = m_Constants.Find(szLower);
    if (pConst == nullptr)
    {
        return nullptr;
    }
    if (pConst->params->type != eType)
    {
        Error("'%s' const type != '%s'", szName, GetTypeName(eType));
        *pError = 1;
        return nullptr;
    }
    return pConst->params;
}

bool CTCParse::WarnUnknownConst(const NameBuffer& szName, int32_t nError)
{
    if (nError != 0)
    {
        return false;
    }
    Error("WARNING unknown const name '%s'", szName);
    return true;
}
