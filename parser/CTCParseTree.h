#pragma once

#include "parser/CTCParseNodes.h"

#include <cstddef>
#include <vector>

// The tree of a file while it is being read: its nodes, and where the next one goes. Owns the nodes
// until Release, so nothing is lost when reading ends early.
class CTCParseTree
{
public:
    CTCParseTree() = default;
    CTCParseTree(const CTCParseTree&) = delete;
    CTCParseTree& operator=(const CTCParseTree&) = delete;
    ~CTCParseTree();

    // Adds a chain of nodes to the block that is open. pNodes: owned from now on; null: none.
    void Append(CTCPARSE_KEYWORD* pNodes);

    // Nodes go into the block of call from now on, until CloseBlock. call: appended last.
    void OpenBlock(CTCPARSE_KEYWORD& call);

    // False when no block is open.
    bool CloseBlock();

    // How many blocks are open.
    size_t GetDepth() const { return m_Around.size(); }

    // The first node, which the caller owns; null when there is none.
    CTCPARSE_KEYWORD* Release();

private:
    CTCPARSE_KEYWORD* m_pFirst = nullptr;
    CTCPARSE_KEYWORD** m_ppLink = &m_pFirst;  // takes the next node
    std::vector<CTCPARSE_KEYWORD**> m_Around; // where the blocks around this one go on
};
