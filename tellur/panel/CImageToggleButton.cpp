#include "tellur/panel/CImageToggleButton.h"

#include "framework/drawing/CBitmap.h"
#include "framework/drawing/CDrawContext.h"
#include "framework/drawing/SystemColors.h"

#include <algorithm>

// Where the image goes, device pixels.
struct CImageToggleButton::SPlace
{
    SSize border;  // of the system
    SSize room;    // inside the frame
    SSize image;   // of the bitmap
    SPoint corner; // of the image's frame
    SPoint at;     // of the image
    SPoint from;   // the part of the image that is shown begins there
    SSize drawn;   // what the image is drawn to
    SPoint moved;  // by being pressed
};

namespace
{

// The greys in which the images are painted.
constexpr ColorRef SHADE = MakeColor(0x80, 0x80, 0x80);
constexpr ColorRef FACE = MakeColor(0xC0, 0xC0, 0xC0);
constexpr ColorRef LIGHT = MakeColor(0xDF, 0xDF, 0xDF);

// One direction of the placement: the corner of the frame and the offset into the image.
struct SLine
{
    int iCorner = 0;
    int iFrom = 0;
};

SLine PlaceLine(int iRoom, int iImage, int iBorder, bool bFirst, bool bLast)
{
    const int iLeast = 2 * iBorder;
    if (bFirst)
    {
        return {iLeast, 0};
    }
    const int iCorner = bLast ? iRoom - iImage : (iRoom - iImage) / 2 + iBorder;
    if (iCorner >= iLeast)
    {
        return {iCorner, 0};
    }
    // Its middle, or its end; an image that all but fits is shown from outside its first pixel.
    return {iLeast, bLast ? iImage - iRoom : (iImage - iRoom) / 2};
}

void PaintDots(CDrawContext& memory, const SSize& image, ColorRef uColor)
{
    for (int y = 0; y < image.cy; ++y)
    {
        for (int x = y & 1; x < image.cx; x += 2)
        {
            memory.SetPixel(x, y, uColor);
        }
    }
}

} // namespace

void CImageToggleButton::SetImages(const SResourceModule* pModule,
                                   uint32_t uImage,
                                   uint32_t uPressed,
                                   uint32_t uDisabled)
{
    m_Module = pModule;
    m_ImageId = uImage;
    m_PressedImageId = uPressed;
    m_DisabledImageId = uDisabled;
}

void CImageToggleButton::SetChecked(bool bChecked)
{
    m_bChecked = bChecked;
    Invalidate();
}

bool CImageToggleButton::OnLButtonDown(const SMouseEvent& /*event*/)
{
    m_bChecked = !m_bChecked;
    Invalidate();
    return false; // and then the usual, which sends the click
}

uint32_t CImageToggleButton::ChooseImage(uint32_t uState, bool& bDotted) const
{
    bDotted = false;
    if ((uState & ITEM_SELECTED) != 0)
    {
        return m_PressedImageId != 0 ? m_PressedImageId : m_ImageId;
    }
    if ((uState & (ITEM_GRAYED | ITEM_DISABLED)) != 0)
    {
        bDotted = m_DisabledImageId == 0;
        return bDotted ? m_ImageId : m_DisabledImageId;
    }
    return m_ImageId;
}

CImageToggleButton::SPlace
CImageToggleButton::PlaceImage(const SRect& item, const SSize& border, const SSize& image) const
{
    SPlace place;
    place.border = border;
    const SRect inner = item.Deflate(2 * border.cx, 2 * border.cy);
    place.room = {inner.GetWidth(), inner.GetHeight()};
    place.image = image;
    if (m_bStretch)
    {
        place.drawn = {place.room.cx - border.cx, place.room.cy - border.cy};
        place.corner = {2 * border.cx, 2 * border.cy};
        place.at = {3 * border.cx, 3 * border.cy};
        return place;
    }
    const uint32_t uStyle = GetStyle();
    const SLine across = PlaceLine(place.room.cx,
                                   image.cx,
                                   border.cx,
                                   (uStyle & CONTROL_ALIGN_LEFT) != 0,
                                   (uStyle & CONTROL_ALIGN_RIGHT) != 0);
    const SLine down = PlaceLine(place.room.cy,
                                 image.cy,
                                 border.cy,
                                 (uStyle & CONTROL_ALIGN_TOP) != 0,
                                 (uStyle & CONTROL_ALIGN_BOTTOM) != 0);
    place.drawn = image;
    place.corner = {across.iCorner, down.iCorner};
    place.at = {across.iCorner + border.cx, down.iCorner + border.cy};
    place.from = {across.iFrom, down.iFrom};
    return place;
}

void CImageToggleButton::DrawImage(CDrawContext& context,
                                   const SPlace& place,
                                   CBitmap& bitmap,
                                   bool bDotted) const
{
    CDrawContext memory = CDrawContext::CreateCompatible(context);
    memory.SelectBitmap(&bitmap);
    // The images are painted in three greys that stand for colours of the desktop.
    const SColorPair greys[] = {{SHADE, GetSystemColor(ESystemColor::ButtonShadow)},
                                {FACE, GetSystemColor(ESystemColor::ButtonFace)},
                                {LIGHT, GetSystemColor(ESystemColor::Light3D)}};
    memory.MapColors(greys);
    const bool bDown = m_bToggle && m_bChecked;
    const ColorRef uFace = GetSystemColor(ESystemColor::ButtonFace);
    const ColorRef uHighlight = GetSystemColor(ESystemColor::ButtonHighlight);
    if (bDotted)
    {
        PaintDots(memory, place.image, bDown ? uHighlight : uFace);
    }
    const SPoint at = {place.at.x + place.moved.x, place.at.y + place.moved.y};
    if (m_bStretch)
    {
        context.StretchBlt({at.x, at.y, at.x + place.drawn.cx, at.y + place.drawn.cy},
                           memory,
                           {place.from.x, place.from.y, place.image.cx, place.image.cy});
        return;
    }
    if (bDown)
    {
        // A button that is down has a lighter face, inside the image as well as around it.
        memory.ReplaceColor({0, 0, place.image.cx, place.image.cy}, uFace, uHighlight);
        context.FillRect({3 * place.border.cx,
                          3 * place.border.cy,
                          place.room.cx + 2 * place.border.cx,
                          place.room.cy + 2 * place.border.cy},
                         uHighlight);
    }
    const int iWidth = std::min(place.image.cx, place.room.cx - place.at.x - place.moved.x);
    const int iHeight = std::min(place.image.cy, place.room.cy - place.at.y - place.moved.y);
    context.BitBlt({at.x, at.y, at.x + iWidth, at.y + iHeight}, memory, place.from);
}

void CImageToggleButton::DrawItem(const SDrawItem& item)
{
    CDrawContext& context = *item.pContext;
    const int iState = context.SaveState();
    bool bDotted = false;
    CBitmap bitmap;
    const bool bImage =
        m_Module != nullptr &&
        bitmap.LoadBitmap(ChooseImage(item.uState, bDotted), context.GetScale(), m_Module);
    const SSize border = {GetBorderWidth(context.GetScale()), GetBorderHeight(context.GetScale())};
    SPlace place = PlaceImage(item.rect, border, {bitmap.GetWidth(), bitmap.GetHeight()});
    const bool bSunken = (m_bToggle && m_bChecked) || (item.uState & ITEM_SELECTED) != 0;
    place.moved = bSunken ? SPoint{border.cx, border.cy} : SPoint{};
    context.DrawEdge(
        item.rect, bSunken ? EEdge::Sunken : EEdge::Raised, EDGE_SOFT | EDGE_FILL_MIDDLE);
    if (bImage)
    {
        DrawImage(context, place, bitmap, bDotted);
    }
    if ((item.uState & ITEM_FOCUS) != 0)
    {
        const SPoint corner = {place.corner.x + place.moved.x, place.corner.y + place.moved.y};
        context.DrawFocusRect({corner.x,
                               corner.y,
                               corner.x + place.drawn.cx + 2 * border.cx,
                               corner.y + place.drawn.cy + 2 * border.cy});
    }
    context.RestoreState(iState);
}
