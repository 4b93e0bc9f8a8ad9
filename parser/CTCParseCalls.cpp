#include "parser/CTCParseCalls.h"

#include <memory>

CTCParseCalls::CTCParseCalls(CTCParseReader& reader, CTCParseValues& values, ITCParseErrors& errors)
    : m_Reader(reader)
    , m_Values(values)
    , m_Errors(errors)
{
}

CTCPARSE_KEYWORD* CTCParseCalls::ReadCall(const CTCParseNameList& declarations,
                                          std::vector<STCParseOutline::SSpan>* pArguments,
                                          int32_t* pError)
{
    auto pCall = std::make_unique<CTCPARSE_KEYWORD>();
    pCall->line = m_Reader.GetLine();
    if (m_Reader.ReadWord(pCall->name) != 0)
    {
        m_Errors.Fail(pError, "error in call");
        return nullptr;
    }
    CTCParseReader::MakeLower(pCall->name);
    const CTCPARSE_KEYWORD* pDeclaration = declarations.Find(pCall->name);
    // Only the declaration says how many arguments there are and of which types.
    if (pDeclaration == nullptr)
    {
        m_Errors.Error("unknown keyword %s", pCall->name);
        *pError = 1;
        return nullptr;
    }
    if (m_Reader.NextChar() != '(')
    {
        m_Errors.Fail(pError, "opening bracket expected");
        return nullptr;
    }
    return ReadArguments(*pDeclaration, *pCall, pArguments, pError) ? pCall.release() : nullptr;
}

bool CTCParseCalls::ReadArguments(const CTCPARSE_KEYWORD& declaration,
                                  CTCPARSE_KEYWORD& call,
                                  std::vector<STCParseOutline::SSpan>* pArguments,
                                  int32_t* pError)
{
    CTCPARSE_PARAM** ppLink = &call.params;
    for (const CTCPARSE_PARAM* pType = declaration.params; pType != nullptr; pType = pType->next)
    {
        m_Reader.SkipSpace();
        const size_t iStart = m_Reader.GetPosition();
        // Linked at once: the call owns the value when a later one fails.
        *ppLink = m_Values.ReadValue(pType->type, pError);
        if (*pError != 0)
        {
            return false;
        }
        if (pArguments != nullptr)
        {
            pArguments->push_back({iStart, m_Reader.GetPosition()});
        }
        if (*ppLink != nullptr) // a vector of an unknown constant is left out
        {
            ppLink = &(*ppLink)->next;
        }
        // The comma stands there whether the argument before it gave a value or not.
        if (pType->next != nullptr && m_Reader.NextChar() != ',')
        {
            m_Errors.Fail(pError, "comma expected");
            return false;
        }
    }
    if (m_Reader.NextChar() != ')')
    {
        m_Errors.Fail(pError, "closing bracket expected");
        return false;
    }
    return true;
}
