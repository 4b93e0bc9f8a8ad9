#include "engine/imaging/CPalette.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <new>

std::unique_ptr<CPalette> CPalette::Create(const uint8_t* pColors, uint32_t uCount)
{
    std::unique_ptr<CPalette> pPalette(uCount == 0 ? nullptr : new (std::nothrow) CPalette);
    if (pPalette)
    {
        pPalette->m_Count = std::min(uCount, MAX_ENTRIES);
        std::memcpy(pPalette->m_Entries.data(), pColors, size_t{pPalette->m_Count} * 3);
        pPalette->BuildSlots();
    }
    return pPalette;
}

const uint8_t* CPalette::GetEntry(uint32_t uIndex) const
{
    return uIndex < m_Count ? m_Entries[uIndex].data() : nullptr;
}

uint32_t CPalette::GetFirstSlot(const uint8_t* pColor)
{
    const uint32_t uKey = pColor[0] | uint32_t{pColor[1]} << 8 | uint32_t{pColor[2]} << 16;
    return (uKey * 2654435761U >> 16) % SLOT_COUNT;
}

void CPalette::BuildSlots()
{
    m_Slots.fill(EMPTY_SLOT);
    for (uint32_t uEntry = 0; uEntry < m_Count; ++uEntry)
    {
        // A colour that stands twice keeps its first entry: equal colours probe the same slots, and
        // the earlier one came first.
        uint32_t uSlot = GetFirstSlot(m_Entries[uEntry].data());
        while (m_Slots[uSlot] != EMPTY_SLOT)
        {
            uSlot = (uSlot + 1) % SLOT_COUNT;
        }
        m_Slots[uSlot] = static_cast<uint16_t>(uEntry);
    }
}

uint8_t CPalette::FindIndex(uint8_t u0, uint8_t u1, uint8_t u2) const
{
    const std::array<uint8_t, 3> color{u0, u1, u2};
    for (uint32_t uSlot = GetFirstSlot(color.data()); m_Slots[uSlot] != EMPTY_SLOT;
         uSlot = (uSlot + 1) % SLOT_COUNT)
    {
        if (m_Entries[m_Slots[uSlot]] == color)
        {
            return static_cast<uint8_t>(m_Slots[uSlot]);
        }
    }
    // A colour that the palette lacks gets the nearest entry, by the sum of the squares.
    uint32_t uBest = 0;
    int iBestDistance = std::numeric_limits<int>::max();
    for (uint32_t uEntry = 0; uEntry < m_Count; ++uEntry)
    {
        int iDistance = 0;
        for (size_t k = 0; k < color.size(); ++k)
        {
            const int iDifference = int{m_Entries[uEntry][k]} - int{color[k]};
            iDistance += iDifference * iDifference;
        }
        if (iDistance < iBestDistance)
        {
            iBestDistance = iDistance;
            uBest = uEntry;
        }
    }
    return static_cast<uint8_t>(uBest);
}

IPalette* CPalette::Clone() const
{
    return new (std::nothrow) CPalette(*this);
}
