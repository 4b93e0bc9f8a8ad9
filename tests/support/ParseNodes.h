#pragma once

#include "parser/CTCParseNodes.h"

#include <cstring>
#include <initializer_list>
#include <memory>

// Parse trees made by hand, for readers of blocks. Nodes and parameters belong to the node or chain
// they are given to; whoever holds the first node of a chain owns all of it.
using NodeOwner = std::unique_ptr<CTCPARSE_KEYWORD>;

inline CTCPARSE_PARAM* Int(int32_t iValue)
{
    return new CTCPARSE_INT(iValue);
}

inline CTCPARSE_PARAM* Float(float fValue)
{
    return new CTCPARSE_FLOAT(fValue);
}

inline CTCPARSE_PARAM* Text(const char* pszText)
{
    return new CTCPARSE_STRING(pszText);
}

// Links nodes or parameters to a chain and returns the first; null for none.
template <class TLink> TLink* Chain(std::initializer_list<TLink*> links)
{
    TLink* pFirst = nullptr;
    TLink** ppNext = &pFirst;
    for (TLink* pLink : links)
    {
        *ppNext = pLink;
        ppNext = &pLink->next;
    }
    return pFirst;
}

// Makes a node that owns its parameters and its block. The name keeps its upper and lower case.
inline CTCPARSE_KEYWORD* Node(const char* pszName,
                              std::initializer_list<CTCPARSE_PARAM*> params = {},
                              std::initializer_list<CTCPARSE_KEYWORD*> block = {})
{
    auto* pNode = new CTCPARSE_KEYWORD;
    std::strncpy(pNode->name, pszName, CTCPARSE_KEYWORD::NAME_BYTES - 1);
    pNode->params = Chain(params);
    pNode->block = Chain(block);
    return pNode;
}

inline NodeOwner Block(std::initializer_list<CTCPARSE_KEYWORD*> nodes)
{
    return NodeOwner(Chain(nodes));
}
