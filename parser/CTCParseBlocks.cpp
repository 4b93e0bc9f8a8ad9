#include "parser/CTCParse.h"

#include <memory>
#include <utility>
#include <vector>

namespace
{

// Deletes what was read when there is no memory for the rest.
struct SChain
{
    CTCPARSE_KEYWORD* pFirst = nullptr;

    ~SChain() { delete pFirst; }
};

} // namespace

CTCPARSE_KEYWORD* CTCParse::ReadBlock(SVocabulary& vocabulary, int32_t* pError)
{
    SChain chain;
    SPlace place{&chain.pFirst, {}};
    size_t iStart = 0; // of the statement
    while (*pError == 0 && !SkipSpace())
    {
        iStart = GetPosition();
        const int nChar = GetChar();
        switch (nChar)
        {
        case '$':
            ReadConstDef(pError);
            break;
        case '!':
            ReadDeclaration(vocabulary, pError, place.ppLink);
            while (*place.ppLink != nullptr)
            {
                place.ppLink = &(*place.ppLink)->next;
            }
            break;
        case '}':
            CloseBlock(place, pError);
            break;
        default:
            UngetChar(nChar);
            *place.ppLink = ReadCall(vocabulary, pError);
            if (*place.ppLink != nullptr)
            {
                NoteCall(*place.ppLink, place);
                ReadAfterCall(place, pError);
            }
            break;
        }
    }
    if (m_pOutline != nullptr)
    {
        // The name of an included file may lack its closing quote up to the end of the text.
        m_pOutline->iEnd = m_bCutInclude ? iStart : GetPosition();
        m_pOutline->bOpenComment = m_bOpenComment && !m_bCutInclude;
        m_pOutline->nOpenBlocks = place.around.size();
    }
    return std::exchange(chain.pFirst, nullptr);
}

void CTCParse::NoteCall(const CTCPARSE_KEYWORD* pCall, const SPlace& place)
{
    if (m_pOutline != nullptr && place.around.empty())
    {
        m_pOutline->calls.push_back({pCall, m_Arguments});
    }
}

void CTCParse::ReadAfterCall(SPlace& place, int32_t* pError)
{
    CTCPARSE_KEYWORD* pCall = *place.ppLink;
    place.ppLink = &pCall->next;
    const int nChar = NextChar();
    switch (nChar)
    {
    case '{':
        if (place.around.size() == BLOCK_DEPTH_LIMIT)
        {
            Fail(pError, "block depth limit exceeded");
            break;
        }
        place.around.push_back(place.ppLink);
        place.ppLink = &pCall->block;
        break;
    case ';':
        // No failure: files written by hand have it.
        Error("its not c!");
        break;
    default:
        UngetChar(nChar);
        break;
    }
}

void CTCParse::CloseBlock(SPlace& place, int32_t* pError)
{
    if (place.around.empty())
    {
        Fail(pError, "unexpected closing curly bracket");
        return;
    }
    place.ppLink = place.around.back();
    place.around.pop_back();
}

CTCPARSE_KEYWORD* CTCParse::ReadCall(const SVocabulary& vocabulary, int32_t* pError)
{
    auto pCall = std::make_unique<CTCPARSE_KEYWORD>();
    pCall->line = GetLine();
    if (ReadWord(pCall->name) != 0)
    {
        Fail(pError, "error in call");
        return nullptr;
    }
    MakeLower(pCall->name);
    const CTCPARSE_KEYWORD* pDeclaration = vocabulary.declarations.Find(pCall->name);
    if (pDeclaration == nullptr)
    {
        Error("unknown keyword %s", pCall->name);
        *pError = 1;
        return nullptr;
    }
    if (NextChar() != '(')
    {
        Fail(pError, "opening bracket expected");
        return nullptr;
    }
    return ReadArguments(*pDeclaration, *pCall, pError) ? pCall.release() : nullptr;
}

bool CTCParse::ReadArguments(const CTCPARSE_KEYWORD& declaration,
                             CTCPARSE_KEYWORD& call,
                             int32_t* pError)
{
    CTCPARSE_PARAM** ppLink = &call.params;
    m_Arguments.clear();
    for (const CTCPARSE_PARAM* pType = declaration.params; pType != nullptr; pType = pType->next)
    {
        SkipSpace();
        const size_t iStart = GetPosition();
        *ppLink = ReadValue(pType->type, pError);
        if (m_pOutline != nullptr)
        {
            m_Arguments.push_back({iStart, GetPosition()});
        }
        if (*pError != 0)
        {
            return false;
        }
        if (*ppLink != nullptr) // a vector of an unknown constant is left out
        {
            ppLink = &(*ppLink)->next;
        }
        if (pType->next != nullptr && NextChar() != ',')
        {
            Fail(pError, "comma expected");
            return false;
        }
    }
    if (NextChar() != ')')
    {
        Fail(pError, "closing bracket expected");
        return false;
    }
    return true;
}
