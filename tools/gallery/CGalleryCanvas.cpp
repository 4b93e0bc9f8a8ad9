#include "tools/gallery/CGalleryCanvas.h"

#include "framework/drawing/CBitmap.h"
#include "framework/drawing/CDrawContext.h"
#include "framework/drawing/SystemColors.h"
#include "tellur/resources/PluginResources.h"

#include <cmath>
#include <iterator>
#include <string>

namespace
{

constexpr uint32_t PICTURE = 2130;
constexpr int DEPTHS[] = {16, 24, 32};
constexpr ColorRef INK = MakeColor(40, 110, 200);

// One of the three drawings. Places and lengths are given at 100 % and scaled here.
struct SSheet
{
    CDrawContext& context;
    int iWidth;

    int Scale(int iLength) const
    {
        return static_cast<int>(std::lround(iLength * context.GetScale()));
    }

    SRect Place(int iTop, int iHeight) const
    {
        return {Scale(6), Scale(iTop), iWidth - Scale(6), Scale(iTop + iHeight)};
    }
};

void DrawLines(const SSheet& sheet)
{
    const SRect place = sheet.Place(28, 24);
    sheet.context.SetPen({EPenStyle::Solid, sheet.Scale(1), INK});
    sheet.context.DrawLine({place.left, place.top}, {place.right, place.bottom});
    sheet.context.SetPen({EPenStyle::Dotted, sheet.Scale(1), INK});
    sheet.context.DrawLine({place.left, place.bottom}, {place.right, place.top});
    sheet.context.SetPen({EPenStyle::Solid, sheet.Scale(3), INK});
    sheet.context.DrawLine({place.left, place.top}, {place.right, place.top});
}

void DrawShapes(const SSheet& sheet)
{
    CDrawContext& context = sheet.context;
    context.SetPen({EPenStyle::Solid, sheet.Scale(1), GetSystemColor(ESystemColor::WindowText)});
    context.SetBrush(MakeColor(220, 150, 60));
    context.Rectangle(sheet.Place(58, 16));
    context.DrawEdge(sheet.Place(80, 18), EEdge::Raised, EDGE_SOFT | EDGE_FILL_MIDDLE);
    context.DrawEdge(sheet.Place(102, 18), EEdge::Sunken, EDGE_SOFT | EDGE_FILL_MIDDLE);
    context.DrawFocusRect(context.DrawPushButtonFrame(sheet.Place(124, 20), false)
                              .Deflate(sheet.Scale(2), sheet.Scale(2)));
}

void DrawPictures(const SSheet& sheet)
{
    CDrawContext& context = sheet.context;
    CBitmap picture;
    if (!picture.LoadBitmap(PICTURE, context.GetScale(), &GetPluginResources()))
    {
        return;
    }
    CDrawContext memory = CDrawContext::CreateCompatible(context);
    memory.SelectBitmap(&picture);
    // The plug-in's pictures are made of these greys, which become those of the desktop.
    const SColorPair greys[] = {
        {MakeColor(0xC0, 0xC0, 0xC0), GetSystemColor(ESystemColor::ButtonFace)},
        {MakeColor(0x80, 0x80, 0x80), GetSystemColor(ESystemColor::ButtonShadow)},
        {MakeColor(0xDF, 0xDF, 0xDF), GetSystemColor(ESystemColor::Light3D)}};
    memory.MapColors(greys);
    const SRect place = sheet.Place(150, 24);
    const int iSide = picture.GetWidth();
    context.BitBlt({place.left, place.top, place.left + iSide, place.top + iSide}, memory, {0, 0});
    context.StretchBlt({place.left + iSide + sheet.Scale(4), place.top, place.right, place.bottom},
                       memory,
                       {0, 0, iSide, iSide});
}

void DrawSheet(CPixelBuffer& pixels, double fScale, int nBits)
{
    CDrawContext context(pixels, fScale);
    const SSheet sheet = {context, pixels.GetWidth()};
    context.FillRect(pixels.GetBounds(), GetSystemColor(ESystemColor::Window));
    context.FrameRect(pixels.GetBounds(), GetSystemColor(ESystemColor::ButtonShadow));
    const int iState = context.SaveState();
    context.SetTextColor(GetSystemColor(ESystemColor::HighlightText));
    context.SetBackColor(GetSystemColor(ESystemColor::Highlight));
    context.FillRect(sheet.Place(5, 18), GetSystemColor(ESystemColor::Highlight));
    context.DrawText(
        (std::to_string(nBits) + " bits").c_str(), sheet.Place(5, 18), TEXT_CENTER | TEXT_VCENTER);
    DrawLines(sheet);
    DrawShapes(sheet);
    DrawPictures(sheet);
    context.RestoreState(iState);
}

} // namespace

void CGalleryCanvas::OnPaint(CDrawContext& context)
{
    const SRect client = GetClientRect();
    const int iWidth = client.GetWidth() / static_cast<int>(std::size(DEPTHS));
    int iLeft = 0;
    for (const int nBits : DEPTHS)
    {
        if (m_Pixels.Create(iWidth - GetBorderWidth(GetScale()), client.GetHeight(), nBits))
        {
            DrawSheet(m_Pixels, GetScale(), nBits);
            const CDrawContext sheet(m_Pixels);
            context.BitBlt(m_Pixels.GetBounds().Offset(iLeft, 0), sheet, {0, 0});
        }
        iLeft += iWidth;
    }
}

void CGalleryButton::DrawItem(const SDrawItem& item)
{
    CDrawContext& context = *item.pContext;
    const bool bPushed = (item.uState & ITEM_SELECTED) != 0;
    const SRect inner = context.DrawPushButtonFrame(item.rect, bPushed);
    const bool bDisabled = (item.uState & ITEM_DISABLED) != 0;
    context.SetTextColor(
        GetSystemColor(bDisabled ? ESystemColor::GrayText : ESystemColor::ButtonText));
    const int iStep = bPushed ? GetBorderWidth(context.GetScale()) : 0;
    context.DrawText(GetWindowText().c_str(),
                     inner.Offset(iStep, iStep),
                     TEXT_CENTER | TEXT_VCENTER | TEXT_TRANSPARENT);
    if ((item.uState & ITEM_FOCUS) != 0)
    {
        const int iGap = GetBorderWidth(context.GetScale());
        context.DrawFocusRect(inner.Deflate(iGap, iGap));
    }
}
