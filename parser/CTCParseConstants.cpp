#include "parser/CTCParseConstants.h"

#include <cstring>
#include <utility>

static const char* GetTypeName(ETCParseType eType)
{
    static constexpr const char* NAMES[] = {"int", "float", "string", "vec3", "vec4"};
    return NAMES[eType];
}

CTCParseConstants::CTCParseConstants(CTCParseReader& reader, ITCParseErrors& errors)
    : m_Reader(reader)
    , m_Errors(errors)
{
}

const CTCPARSE_PARAM*
CTCParseConstants::Read(ETCParseType eType, NameBuffer& szName, int32_t* pError)
{
    if (const int nFailure = m_Reader.ReadWord(szName))
    {
        *pError = nFailure;
        return nullptr;
    }
    NameBuffer szLower;
    // The caller's name stays as it was written, for messages.
    memcpy(szLower, szName, sizeof(szLower));
    CTCParseReader::MakeLower(szLower);
    const CTCPARSE_KEYWORD* pConst = m_List.Find(szLower);
    if (pConst == nullptr)
    {
        return nullptr;
    }
    if (pConst->params->type != eType)
    {
        m_Errors.Error("'%s' const type != '%s'", szName, GetTypeName(eType));
        *pError = 1;
        return nullptr;
    }
    return pConst->params;
}

bool CTCParseConstants::WarnUnknown(const NameBuffer& szName, int32_t nError)
{
    if (nError != 0)
    {
        return false;
    }
    m_Errors.Error("WARNING unknown const name '%s'", szName);
    return true;
}

void CTCParseConstants::TakeFrom(CTCParseConstants& outer)
{
    m_List = std::move(outer.m_List);
}

void CTCParseConstants::CopyTo(CTCParseConstants& outer) const
{
    outer.m_List = m_List;
}
