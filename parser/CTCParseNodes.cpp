#include "parser/CTCParseNodes.h"

#include "parser/CTCParsePool.h"

#include <cstring>
#include <memory>
#include <utility>
#include <vector>

static char* KeepText(const char* pText, size_t nLength)
{
    auto* pCopy = static_cast<char*>(CTCParsePool::Allocate(nLength + 1));
    memcpy(pCopy, pText, nLength);
    pCopy[nLength] = '\0';
    return pCopy;
}

CTCPARSE_PARAM::CTCPARSE_PARAM(ETCParseType eType)
    : type(eType)
{
}

CTCPARSE_PARAM::CTCPARSE_PARAM(const CTCPARSE_PARAM& source)
    : type(source.type)
    , flag(source.flag)
{
    SetRefName(source.refName);
}

CTCPARSE_PARAM::~CTCPARSE_PARAM()
{
    if (refName != nullptr)
    {
        CTCParsePool::Free(refName);
    }
}

void* CTCPARSE_PARAM::operator new(size_t nBytes)
{
    return CTCParsePool::Allocate(nBytes);
}

void CTCPARSE_PARAM::operator delete(void* pMemory)
{
    CTCParsePool::Free(pMemory);
}

CTCPARSE_PARAM* CTCPARSE_PARAM::Duplicate(const CTCPARSE_PARAM& source)
{
    // By class and not by type: a parameter of a declaration has a type but no value.
    if (const auto* pInt = dynamic_cast<const CTCPARSE_INT*>(&source))
    {
        return new CTCPARSE_INT(*pInt);
    }
    if (const auto* pFloat = dynamic_cast<const CTCPARSE_FLOAT*>(&source))
    {
        return new CTCPARSE_FLOAT(*pFloat);
    }
    if (const auto* pString = dynamic_cast<const CTCPARSE_STRING*>(&source))
    {
        return new CTCPARSE_STRING(*pString);
    }
    if (const auto* pVec3 = dynamic_cast<const CTCPARSE_VEC3*>(&source))
    {
        return new CTCPARSE_VEC3(*pVec3);
    }
    if (const auto* pVec4 = dynamic_cast<const CTCPARSE_VEC4*>(&source))
    {
        return new CTCPARSE_VEC4(*pVec4);
    }
    return new CTCPARSE_PARAM(source);
}

void CTCPARSE_PARAM::SetRefName(const char* pszName)
{
    CTCParsePool::Free(refName);
    refName = pszName != nullptr ? KeepText(pszName, strlen(pszName)) : nullptr;
}

CTCPARSE_INT::CTCPARSE_INT(int32_t nValue)
    : CTCPARSE_PARAM(tcparse_int)
    , value(nValue)
{
}

CTCPARSE_FLOAT::CTCPARSE_FLOAT(float fValue)
    : CTCPARSE_PARAM(tcparse_float)
    , value(fValue)
{
}

CTCPARSE_STRING::CTCPARSE_STRING(const char* pText, size_t nLength)
    : CTCPARSE_PARAM(tcparse_string)
    , value(KeepText(pText, nLength))
{
}

CTCPARSE_STRING::CTCPARSE_STRING(const char* pszText)
    : CTCPARSE_STRING(pszText, strlen(pszText))
{
}

CTCPARSE_STRING::CTCPARSE_STRING(const CTCPARSE_STRING& source)
    : CTCPARSE_PARAM(source)
    , value(KeepText(source.value, strlen(source.value)))
{
}

CTCPARSE_STRING::~CTCPARSE_STRING()
{
    CTCParsePool::Free(value);
}

CTCPARSE_VEC3::CTCPARSE_VEC3()
    : CTCPARSE_PARAM(tcparse_vec3)
{
}

CTCPARSE_VEC3::CTCPARSE_VEC3(const float* pValues)
    : CTCPARSE_PARAM(tcparse_vec3)
    , x(pValues[0])
    , y(pValues[1])
    , z(pValues[2])
{
}

CTCPARSE_VEC4::CTCPARSE_VEC4()
    : CTCPARSE_PARAM(tcparse_vec4)
{
}

CTCPARSE_VEC4::CTCPARSE_VEC4(const float* pValues)
    : CTCPARSE_PARAM(tcparse_vec4)
    , x(pValues[0])
    , y(pValues[1])
    , z(pValues[2])
    , w(pValues[3])
{
}

CTCPARSE_KEYWORD::CTCPARSE_KEYWORD(const CTCPARSE_KEYWORD& source)
{
    // Chains that are still to be copied, and the link that takes the copy.
    std::vector<std::pair<const CTCPARSE_KEYWORD*, CTCPARSE_KEYWORD**>> chains;
    CopyNode(source);
    chains.emplace_back(source.next, &next);
    chains.emplace_back(source.block, &block);
    // A list of chains instead of recursion: blocks nest deeper than the stack could follow.
    while (!chains.empty())
    {
        auto [pSource, ppLink] = chains.back();
        chains.pop_back();
        for (; pSource != nullptr; pSource = pSource->next)
        {
            auto pCopy = std::make_unique<CTCPARSE_KEYWORD>();
            pCopy->CopyNode(*pSource);
            if (pSource->block != nullptr)
            {
                chains.emplace_back(pSource->block, &pCopy->block);
            }
            *ppLink = pCopy.release();
            ppLink = &(*ppLink)->next;
        }
    }
}

void CTCPARSE_KEYWORD::CopyNode(const CTCPARSE_KEYWORD& source)
{
    memcpy(name, source.name, sizeof(name));
    line = source.line;
    CTCPARSE_PARAM** ppLink = &params;
    for (const CTCPARSE_PARAM* pParam = source.params; pParam != nullptr; pParam = pParam->next)
    {
        *ppLink = CTCPARSE_PARAM::Duplicate(*pParam);
        ppLink = &(*ppLink)->next;
    }
}

CTCPARSE_KEYWORD::~CTCPARSE_KEYWORD()
{
    while (params != nullptr)
    {
        delete std::exchange(params, params->next);
    }
    // A node goes when its block is gone. Until then its own block link, which is not needed any
    // more, leads back to the node around it. This node is the outermost: its block comes first,
    // then its siblings.
    for (CTCPARSE_KEYWORD* pNode : {std::exchange(block, nullptr), std::exchange(next, nullptr)})
    {
        CTCPARSE_KEYWORD* pAround = nullptr;
        while (pNode != nullptr)
        {
            if (pNode->block != nullptr)
            {
                CTCPARSE_KEYWORD* pInner = std::exchange(pNode->block, pAround);
                pAround = pNode;
                pNode = pInner;
                continue;
            }
            // Its links are cleared first: a node that still has some would delete them inside its
            // own end.
            delete std::exchange(pNode, std::exchange(pNode->next, nullptr));
            while (pNode == nullptr && pAround != nullptr)
            {
                pNode = std::exchange(pAround->next, nullptr);
                delete std::exchange(pAround, std::exchange(pAround->block, nullptr));
            }
        }
    }
}

void* CTCPARSE_KEYWORD::operator new(size_t nBytes)
{
    return CTCParsePool::Allocate(nBytes);
}

void CTCPARSE_KEYWORD::operator delete(void* pMemory)
{
    CTCParsePool::Free(pMemory);
}
