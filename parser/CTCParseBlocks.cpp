#include "parser/CTCParse.h"

#include <memory>
#include <vector>

CTCPARSE_KEYWORD* CTCParse::ReadBlock(SVocabulary& vocabulary, int32_t* pError)
{
    CTCPARSE_KEYWORD* pFirst = nullptr;
    SPlace place{&pFirst, {}};
    while (*pError == 0 && !SkipSpace())
    {
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
                ReadAfterCall(place, pError);
            }
            break;
        }
    }
    return pFirst;
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
    for (const CTCPARSE_PARAM* pType = declaration.params; pType != nullptr; pType = pType->next)
    {
        SkipSpace();
        *ppLink = ReadValue(pType->type, pError);
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
