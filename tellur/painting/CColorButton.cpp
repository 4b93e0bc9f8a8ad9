#include "tellur/painting/CColorButton.h"

#include "framework/drawing/CDrawContext.h"

#include <algorithm>
#include <cstdio>

namespace
{

constexpr ColorRef UNDEFINED = 0x808080;
constexpr ColorRef WHITE = 0xFFFFFF;
constexpr float FULL = 255.0F;
constexpr uint32_t ALL_CHANNELS = 7;
constexpr int CROSS_WIDTH = 3;

int ToByte(float fShare)
{
    constexpr float LIMIT = 1.0e6F; // colours of scripts may be anything
    return static_cast<int>(std::clamp(fShare * FULL, -LIMIT, LIMIT));
}

} // namespace

ColorRef CColorButton::GetColorRef() const
{
    if (!IsDefined())
    {
        return UNDEFINED;
    }
    return MakeColor(static_cast<uint8_t>(ToByte(m_Color[0])),
                     static_cast<uint8_t>(ToByte(m_Color[1])),
                     static_cast<uint8_t>(ToByte(m_Color[2])));
}

void CColorButton::SetColorBytes(uint8_t uRed, uint8_t uGreen, uint8_t uBlue)
{
    const float color[] = {static_cast<float>(uRed) / FULL,
                           static_cast<float>(uGreen) / FULL,
                           static_cast<float>(uBlue) / FULL,
                           1.0F};
    SetColor(color);
}

void CColorButton::SetColor(const float* pColor)
{
    std::copy_n(pColor, 4, m_Color);
    Invalidate();
}

void CColorButton::SetUndefined()
{
    m_Color[0] = -1.0F;
    Invalidate();
}

void CColorButton::SetDisplayChannels(uint32_t uChannels)
{
    m_Channels = uChannels;
    Invalidate();
}

void CColorButton::DrawItem(const SDrawItem& item)
{
    CDrawContext& context = *item.pContext;
    context.DrawPushButtonFrame(item.rect, (item.uState & ITEM_SELECTED) != 0);
    const uint32_t uShown = ((m_Channels & 1U) != 0 ? 0x0000FFU : 0U) |
                            ((m_Channels & 2U) != 0 ? 0x00FF00U : 0U) |
                            ((m_Channels & 4U) != 0 ? 0xFF0000U : 0U);
    const ColorRef uSwatch = GetColorRef() & uShown;
    context.FillRect(item.rect, uSwatch);
    if (!IsDefined())
    {
        const SPen before = context.SetPen({EPenStyle::Solid, CROSS_WIDTH, 0});
        context.DrawLine({item.rect.left, item.rect.top}, {item.rect.right, item.rect.bottom});
        context.DrawLine({item.rect.right, item.rect.top}, {item.rect.left, item.rect.bottom});
        context.SetPen(before);
    }
    if (m_bShowText && m_Channels == ALL_CHANNELS)
    {
        DrawNumbers(context, item.rect, uSwatch);
    }
}

void CColorButton::DrawNumbers(CDrawContext& context, const SRect& rect, ColorRef uSwatch) const
{
    char szText[64] = "undefined";
    if (IsDefined())
    {
        std::snprintf(szText,
                      sizeof(szText),
                      "%d, %d, %d",
                      ToByte(m_Color[0]),
                      ToByte(m_Color[1]),
                      ToByte(m_Color[2]));
    }
    const ColorRef uBack = context.SetBackColor(uSwatch);
    const ColorRef uText = context.SetTextColor(IsDefined() ? WHITE - uSwatch : 0);
    context.DrawText(szText, rect, TEXT_CENTER | TEXT_VCENTER);
    context.SetTextColor(uText);
    context.SetBackColor(uBack);
}
