#pragma once

#include "host/Image.h"

#include <array>
#include <memory>

// The colours of one indexed image, in the order of its file; owned by whoever made it. Exact
// look-ups go through a small hash table, because saving a painted bitmap asks once per texel.
class CPalette final : public IPalette
{
public:
    static constexpr uint32_t MAX_ENTRIES = 256;

    // Makes a palette of uCount colours, cut to 256. pColors: red, green, blue of each, borrowed
    // for the call. Null when uCount is 0, and when there is no memory.
    static std::unique_ptr<CPalette> Create(const uint8_t* pColors, uint32_t uCount);

    uint32_t GetCount() const override { return m_Count; }

    const uint8_t* GetEntry(uint32_t uIndex) const override;
    uint8_t FindIndex(uint8_t u0, uint8_t u1, uint8_t u2) const override;
    IPalette* Clone() const override;

private:
    // Four slots an entry keep the probe runs short.
    static constexpr uint32_t SLOT_COUNT = 4 * MAX_ENTRIES;
    static constexpr uint16_t EMPTY_SLOT = 0xFFFF;

    CPalette() = default;
    static uint32_t GetFirstSlot(const uint8_t* pColor);
    void BuildSlots();

    uint32_t m_Count = 0;
    std::array<std::array<uint8_t, 3>, MAX_ENTRIES> m_Entries{};
    std::array<uint16_t, SLOT_COUNT> m_Slots{};
};
