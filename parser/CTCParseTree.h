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

    // Opens the block of call, the node that was appended last: nodes go into it until CloseBlock.
    void OpenBlock(CTCPARSE_KEYWORD& call);

    // Goes back to the block around the one that is open. False, and nothing changes, when none is.
    bool CloseBlock();

    // How many blocks are open.
    size_t GetDepth() const { return m_Around.size(); }

    // Hands out the first node, and with it the whole tree, to the caller, who owns it from then
    // on. Null when nothing was appended. This object is then empty, with no block open.
    CTCPARSE_KEYWORD* Release();

private:
    CTCPARSE_KEYWORD* m_pFirst = nullptr;
    CTCPARSE_KEYWORD** m_ppLink = &m_pFirst;  // takes the next node
    std::vector<CTCPARSE_KEYWORD**> m_Around; // where the blocks around this one go on
};
