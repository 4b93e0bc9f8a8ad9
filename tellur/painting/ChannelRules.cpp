#include "tellur/painting/ChannelRules.h"

#include "host/IPaintLayer.h"

namespace
{

constexpr uint32_t VISIBLE_COLORS = PAINT_RED_VISIBLE | PAINT_GREEN_VISIBLE | PAINT_BLUE_VISIBLE;
constexpr uint32_t EDITABLE_COLORS =
    PAINT_RED_EDITABLE | PAINT_GREEN_EDITABLE | PAINT_BLUE_EDITABLE;
constexpr uint32_t ALL_VISIBLE_COLORS = PAINT_RGB_VISIBLE | VISIBLE_COLORS;
constexpr uint32_t ALL_EDITABLE_COLORS = PAINT_RGB_EDITABLE | EDITABLE_COLORS;
constexpr uint32_t ALPHA = PAINT_ALPHA_VISIBLE | PAINT_ALPHA_EDITABLE;

uint32_t ClickRgbVisible(uint32_t uMask)
{
    if ((uMask & PAINT_RGB_VISIBLE) == 0)
    {
        return uMask | ALL_VISIBLE_COLORS;
    }
    // All colours hide together only while alpha is visible, so that something is left to see.
    const bool bAlphaRemains = (uMask & PAINT_ALPHA_VISIBLE) != 0;
    return bAlphaRemains ? uMask & ~(ALL_VISIBLE_COLORS | ALL_EDITABLE_COLORS) : uMask;
}

uint32_t ClickRgbEditable(uint32_t uMask)
{
    if ((uMask & PAINT_RGB_EDITABLE) != 0)
    {
        return uMask;
    }
    // Choosing the colours gives alpha up, and choosing alpha gives the colours up.
    return (uMask & ~ALPHA) | ALL_VISIBLE_COLORS | ALL_EDITABLE_COLORS;
}

uint32_t ClickColorVisible(uint32_t uMask, uint32_t uVisible, uint32_t uEditable)
{
    if ((uMask & uVisible) != 0)
    {
        return uMask & ~(PAINT_RGB_VISIBLE | PAINT_RGB_EDITABLE | uVisible | uEditable);
    }
    uMask |= uVisible;
    return (uMask & VISIBLE_COLORS) == VISIBLE_COLORS ? uMask | PAINT_RGB_VISIBLE : uMask;
}

uint32_t ClickColorEditable(uint32_t uMask, uint32_t uVisible, uint32_t uEditable)
{
    // A second click on the colour that alone is edited hides the others, and so does a click on a
    // colour that was hidden.
    const bool bAgain = (uMask & uEditable) != 0 && (uMask & PAINT_RGB_EDITABLE) == 0;
    if (bAgain || (uMask & uVisible) == 0)
    {
        uMask &= ~(ALL_VISIBLE_COLORS | PAINT_ALPHA_VISIBLE);
    }
    uMask &= ~(ALL_EDITABLE_COLORS | PAINT_ALPHA_EDITABLE);
    return uMask | uVisible | uEditable;
}

uint32_t ClickAlphaVisible(uint32_t uMask)
{
    if ((uMask & PAINT_ALPHA_VISIBLE) == 0)
    {
        return uMask | PAINT_ALPHA_VISIBLE;
    }
    // Alpha hides only while a colour stays visible.
    return (uMask & VISIBLE_COLORS) != 0 ? uMask & ~ALPHA : uMask;
}

uint32_t ClickAlphaEditable(uint32_t uMask)
{
    if ((uMask & PAINT_ALPHA_EDITABLE) == 0)
    {
        if ((uMask & PAINT_ALPHA_VISIBLE) == 0)
        {
            uMask &= ~ALL_VISIBLE_COLORS;
        }
        uMask |= ALPHA;
    }
    return uMask & ~ALL_EDITABLE_COLORS;
}

} // namespace

uint32_t GetClickedMask(uint32_t uMask, EChannelBox eBox)
{
    switch (eBox)
    {
    case EChannelBox::RgbVisible:
        return ClickRgbVisible(uMask);
    case EChannelBox::RgbEditable:
        return ClickRgbEditable(uMask);
    case EChannelBox::RedVisible:
        return ClickColorVisible(uMask, PAINT_RED_VISIBLE, PAINT_RED_EDITABLE);
    case EChannelBox::RedEditable:
        return ClickColorEditable(uMask, PAINT_RED_VISIBLE, PAINT_RED_EDITABLE);
    case EChannelBox::GreenVisible:
        return ClickColorVisible(uMask, PAINT_GREEN_VISIBLE, PAINT_GREEN_EDITABLE);
    case EChannelBox::GreenEditable:
        return ClickColorEditable(uMask, PAINT_GREEN_VISIBLE, PAINT_GREEN_EDITABLE);
    case EChannelBox::BlueVisible:
        return ClickColorVisible(uMask, PAINT_BLUE_VISIBLE, PAINT_BLUE_EDITABLE);
    case EChannelBox::BlueEditable:
        return ClickColorEditable(uMask, PAINT_BLUE_VISIBLE, PAINT_BLUE_EDITABLE);
    case EChannelBox::AlphaVisible:
        return ClickAlphaVisible(uMask);
    case EChannelBox::AlphaEditable:
        return ClickAlphaEditable(uMask);
    }
    return uMask;
}
