#pragma once

#include <cstddef>
#include <cstdint>

// The channel boxes of the draw dialog, in the order of their ids.
enum class EChannelBox : uint32_t
{
    RgbVisible,
    RgbEditable,
    RedVisible,
    RedEditable,
    GreenVisible,
    GreenEditable,
    BlueVisible,
    BlueEditable,
    AlphaVisible,
    AlphaEditable,
};

inline constexpr size_t CHANNEL_BOXES = 10;

// The mask bit (EPaintChannel) that a box shows.
constexpr uint32_t GetChannelBit(EChannelBox eBox)
{
    return 0x002U << static_cast<uint32_t>(eBox);
}

// The channel mask after a click on a box. What is edited is made visible, and the box of all
// colours does not hide them while alpha is hidden.
uint32_t GetClickedMask(uint32_t uMask, EChannelBox eBox);
