#include "parser/CTCParseTree.h"

#include <utility>

CTCParseTree::~CTCParseTree()
{
    delete m_pFirst;
}

void CTCParseTree::Append(CTCPARSE_KEYWORD* pNodes)
{
    *m_ppLink = pNodes;
    // An included file comes as a whole chain: the next node goes behind its last one.
    while (*m_ppLink != nullptr)
    {
        m_ppLink = &(*m_ppLink)->next;
    }
}

void CTCParseTree::OpenBlock(CTCPARSE_KEYWORD& call)
{
    m_Around.push_back(m_ppLink);
    m_ppLink = &call.block;
}

bool CTCParseTree::CloseBlock()
{
    if (m_Around.empty())
    {
        return false;
    }
    m_ppLink = m_Around.back();
    m_Around.pop_back();
    return true;
}

CTCPARSE_KEYWORD* CTCParseTree::Release()
{
    m_ppLink = &m_pFirst;
    m_Around.clear();
    return std::exchange(m_pFirst, nullptr);
}
