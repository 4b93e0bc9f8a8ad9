#include "tellur/painting/CPaletteColorWnd.h"

#include "framework/drawing/CDrawContext.h"
#include "host/Image.h"

namespace
{

constexpr int COLUMNS = 16;
constexpr int LINES = 18;
constexpr uint32_t MOST_ENTRIES = 256;

} // namespace

void CPaletteColorWnd::SetSelection(uint16_t uIndex)
{
    m_Selection = uIndex;
    Invalidate();
}

SSize CPaletteColorWnd::GetCell() const
{
    const SRect client = GetClientRect();
    return {(client.GetWidth() - COLUMNS - 1) / COLUMNS,
            (client.GetHeight() - COLUMNS - 1) / COLUMNS};
}

void CPaletteColorWnd::OnPaint(CDrawContext& context)
{
    const SRect client = GetClientRect();
    const SSize cell = GetCell();
    context.SetPen({EPenStyle::Dotted, 1, 0});
    for (int k = 0; k < LINES; ++k)
    {
        const int x = k * (cell.cx + 1);
        const int y = k * (cell.cy + 1);
        context.DrawLine({x, 0}, {x, client.GetHeight()});
        context.DrawLine({0, y}, {client.GetWidth(), y});
    }
    const uint32_t uCount = m_Palette != nullptr ? m_Palette->GetCount() : 0;
    if (uCount > MOST_ENTRIES)
    {
        return;
    }
    for (uint32_t i = 0; i < uCount; ++i)
    {
        DrawEntry(context, i, 0);
    }
    if (m_Selection < uCount)
    {
        DrawEntry(context, m_Selection, 1);
    }
}

void CPaletteColorWnd::DrawEntry(CDrawContext& context, uint32_t uIndex, int iGrown) const
{
    const uint8_t* pEntry = m_Palette->GetEntry(uIndex);
    const SSize cell = GetCell();
    const int x = static_cast<int>(uIndex % COLUMNS) * (cell.cx + 1) + 1;
    const int y = static_cast<int>(uIndex / COLUMNS) * (cell.cy + 1) + 1;
    context.FillRect({x - iGrown, y - iGrown, x + cell.cx + iGrown, y + cell.cy + iGrown},
                     MakeColor(pEntry[0], pEntry[1], pEntry[2]));
}

// Kept as it always was: a click right of the last column counts for the next row.
bool CPaletteColorWnd::OnLButtonDown(const SMouseEvent& event)
{
    const SSize cell = GetCell();
    if (m_Palette == nullptr || cell.cx < 0 || cell.cy < 0)
    {
        return true;
    }
    const int iIndex =
        (event.point.y - 1) / (cell.cy + 1) * COLUMNS + (event.point.x - 1) / (cell.cx + 1);
    if (iIndex >= 0 && static_cast<uint32_t>(iIndex) < m_Palette->GetCount())
    {
        SetSelection(static_cast<uint16_t>(iIndex));
    }
    return true;
}
