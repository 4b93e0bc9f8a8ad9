#include "parser/CTCParseNameList.h"

#include <cstring>
#include <iterator>
#include <utility>

static constexpr size_t FIRST_SLOTS = 64;

using NameBytes = char[CTCPARSE_KEYWORD::NAME_BYTES];

static size_t HashName(const NameBytes& szName)
{
    // Independent products: this runs for every call of a file.
    static constexpr uint64_t FACTORS[] = {0x9E3779B97F4A7C15U,
                                           0xD6E8FEB86659FD93U,
                                           0xA0761D6478BD642FU,
                                           0xE7037ED1A0B428DBU,
                                           0x8EBC6AF09C88C6E3U};
    // Names are zero behind their text, so the whole buffer can be hashed and compared as words.
    uint64_t uWords[std::size(FACTORS)];
    static_assert(sizeof(uWords) == sizeof(NameBytes));
    memcpy(uWords, szName, sizeof(uWords));
    uint64_t uHash = 0;
    for (size_t i = 0; i < std::size(FACTORS); ++i)
    {
        uHash += uWords[i] * FACTORS[i];
    }
    // The upper half of a product depends on all bits of the name, the lower half does not.
    return static_cast<size_t>(uHash >> 32);
}

CTCParseNameList::CTCParseNameList(const CTCParseNameList& source)
{
    // Copying the first node copies all that follow it, newest first.
    if (source.m_pFirst != nullptr)
    {
        m_pFirst = new CTCPARSE_KEYWORD(*source.m_pFirst);
    }
    for (const CTCPARSE_KEYWORD* pNode = m_pFirst; pNode != nullptr; pNode = pNode->next)
    {
        Index(pNode, EHiding::older);
    }
}

CTCParseNameList::CTCParseNameList(CTCParseNameList&& source) noexcept
    : m_pFirst(std::exchange(source.m_pFirst, nullptr))
    , m_Slots(std::move(source.m_Slots))
    , m_nNames(std::exchange(source.m_nNames, 0))
{
    // An index without slots says that there are no names; a vector that was moved promises
    // nothing.
    source.m_Slots.clear();
}

CTCParseNameList& CTCParseNameList::operator=(CTCParseNameList source) noexcept
{
    std::swap(m_pFirst, source.m_pFirst);
    std::swap(m_Slots, source.m_Slots);
    std::swap(m_nNames, source.m_nNames);
    return *this;
}

CTCParseNameList::~CTCParseNameList()
{
    delete m_pFirst;
}

void CTCParseNameList::Add(CTCPARSE_KEYWORD* pNode)
{
    pNode->next = m_pFirst;
    m_pFirst = pNode;
    Index(pNode, EHiding::newer);
}

const CTCPARSE_KEYWORD* CTCParseNameList::Find(const NameBytes& szName) const
{
    return m_Slots.empty() ? nullptr : m_Slots[FindSlot(szName)];
}

size_t CTCParseNameList::FindSlot(const NameBytes& szName) const
{
    const size_t nMask = m_Slots.size() - 1;
    size_t i = HashName(szName) & nMask;
    while (m_Slots[i] != nullptr && memcmp(m_Slots[i]->name, szName, sizeof(NameBytes)) != 0)
    {
        i = (i + 1) & nMask;
    }
    return i;
}

void CTCParseNameList::Index(const CTCPARSE_KEYWORD* pNode, EHiding eHiding)
{
    // At most half of the slots are taken, so that every search ends at a free one soon.
    if (m_Slots.size() <= 2 * m_nNames)
    {
        Grow();
    }
    const CTCPARSE_KEYWORD*& pSlot = m_Slots[FindSlot(pNode->name)];
    if (pSlot == nullptr)
    {
        ++m_nNames;
        pSlot = pNode;
    }
    else if (eHiding == EHiding::newer)
    {
        // The hidden node stays in the chain, which owns it, and only leaves the index.
        pSlot = pNode;
    }
}

void CTCParseNameList::Grow()
{
    const size_t nSlots = m_Slots.empty() ? FIRST_SLOTS : 2 * m_Slots.size();
    std::vector<const CTCPARSE_KEYWORD*> old(nSlots, nullptr);
    old.swap(m_Slots);
    for (const CTCPARSE_KEYWORD* pNode : old)
    {
        if (pNode != nullptr)
        {
            m_Slots[FindSlot(pNode->name)] = pNode;
        }
    }
}
