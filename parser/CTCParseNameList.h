#pragma once

#include "parser/CTCParseNodes.h"

#include <vector>

// The declarations or the constants of a running parse: a chain of named nodes, newest first, which
// the list owns, and an index over their names. The newest node of a name hides the older ones.
class CTCParseNameList
{
public:
    CTCParseNameList() = default;
    CTCParseNameList(const CTCParseNameList& source); // copies every node
    CTCParseNameList(CTCParseNameList&& source) noexcept;
    CTCParseNameList& operator=(CTCParseNameList source) noexcept;
    ~CTCParseNameList();

    // pNode: owned from now on; it has no siblings and a lower-case name.
    void Add(CTCPARSE_KEYWORD* pNode);

    // szName: lower case, zero behind the text. Null when nothing has that name.
    const CTCPARSE_KEYWORD* Find(const char (&szName)[CTCPARSE_KEYWORD::NAME_BYTES]) const;

private:
    // Whether a node hides one of the same name that the index has already, or the other way round.
    enum class EHiding
    {
        newer,
        older,
    };

    size_t FindSlot(const char (&szName)[CTCPARSE_KEYWORD::NAME_BYTES]) const;
    void Index(const CTCPARSE_KEYWORD* pNode, EHiding eHiding);
    void Grow();

    CTCPARSE_KEYWORD* m_pFirst = nullptr;

    // Open addressing: a power of two, at most half full, null where free.
    std::vector<const CTCPARSE_KEYWORD*> m_Slots;
    size_t m_nNames = 0;
};
