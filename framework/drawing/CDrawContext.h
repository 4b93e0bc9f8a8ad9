#pragma once

#include "framework/drawing/CDrawSurface.h"
#include "framework/drawing/DrawTypes.h"

#include <optional>
#include <span>
#include <vector>

// A surface with what is needed to draw on it. A local object of whoever paints. Coordinates are
// device pixels; the scale widens only edges, push-button frames and focus rectangles, and chooses
// the size of the font. Whatever lies outside the pixels or the clip is not drawn, rectangles may
// lie anywhere (beyond 2^29 pixels they are cut). Source and target may have different depths.
// Everything drawn is opaque unless it says otherwise. UI thread.
class TELLUR_API CDrawContext : public CDrawSurface
{
public:
    explicit CDrawContext(CPixelBuffer& buffer, double fScale = 1.0); // 1 is 100 %
    ~CDrawContext();
    CDrawContext(const CDrawContext&) = delete;
    CDrawContext& operator=(const CDrawContext&) = delete;

    // Makes a memory context of the same depth and scale. Nothing is selected, so it draws nothing
    // until a bitmap is.
    static CDrawContext CreateCompatible(const CDrawContext& context);

    // Keeps colours, pen, brush and clip, but not the selected bitmap. Returns the number of the
    // state, from 1 on.
    int SaveState();
    // Goes back to a state, with -1 to the last one, and drops it together with the later ones.
    // Answers false for a number that is not kept.
    bool RestoreState(int iState);

    // Each returns what was set before. As made: black text on white, a black solid pen one pixel
    // wide, a white brush, no clip.
    ColorRef SetTextColor(ColorRef uColor);
    ColorRef SetBackColor(ColorRef uColor);
    SPen SetPen(const SPen& pen);
    std::optional<ColorRef> SetBrush(std::optional<ColorRef> brush); // none: nothing is filled

    // Draws with the pen, all but the last pixel. A pen of width n covers n pixels across the
    // longer direction: (n - 1) / 2 before the line, the rest on and after it.
    void DrawLine(SPoint from, SPoint to);
    // Draws the outline with the pen, inside the rectangle; the brush fills what the pen leaves.
    void Rectangle(const SRect& rect);
    void FrameRect(const SRect& rect, ColorRef uColor); // one pixel, inside the rectangle

    // Draws two lines of the system colours inside the rectangle, each round(scale) pixels wide.
    // uFlags: EEdgeFlag. Returns what is inside the lines.
    SRect DrawEdge(const SRect& rect, EEdge eEdge, uint32_t uFlags);
    // Draws a soft edge with the inside filled, sunken when pushed. Returns what is inside the
    // lines.
    SRect DrawPushButtonFrame(const SRect& rect, bool bPushed);
    // Draws dots of round(scale) pixels along the inside of the rectangle, every second one from
    // the top-left corner on. Each channel changes by half its range, so the dots show on every
    // colour and a second call takes them away.
    void DrawFocusRect(const SRect& rect);

    // Draws one line of UTF-8 in the application's font at the context's scale; line breaks and
    // tabs become blanks. uFlags: ETextFlag. Text and background end at the rectangle. Answers
    // false, with one logged line, when pszUtf8 is null, there is no application or memory is
    // short, and where there is no window system, which is logged the first time only.
    bool DrawText(const char* pszUtf8, const SRect& rect, uint32_t uFlags);
    SSize GetTextSize(const char* pszUtf8) const; // device pixels; nothing where DrawText fails

    // These copy without blending; target pixels whose source lies outside the source's pixels stay
    // as they are. A context may be its own source. An empty rectangle copies nothing. Stretching
    // takes the nearest pixel.
    void BitBlt(const SRect& target, const CDrawContext& source, SPoint sourceAt);
    void StretchBlt(const SRect& target, const CDrawContext& source, const SRect& sourceRect);
    // Copies as StretchBlt does, and leaves out what has the key colour, as far as the source's
    // depth can tell.
    void TransparentBlt(const SRect& target,
                        const CDrawContext& source,
                        const SRect& sourceRect,
                        ColorRef uKey);
    // Blends a bitmap that has transparency, copies another; the second form stretches as above.
    void DrawBitmap(SPoint at, const CBitmap& bitmap);
    void DrawBitmap(const SRect& target, const CBitmap& bitmap, const SRect& sourceRect);

    // These turn pixels of one colour into another, as far as the depth can tell them apart.
    // Transparency stays. MapColors takes all pixels inside the clip and each at most once: the
    // first pair that fits counts, and what it gave is not looked at again.
    void ReplaceColor(const SRect& rect, ColorRef uFrom, ColorRef uTo);
    void MapColors(std::span<const SColorPair> pairs);

private:
    struct STools
    {
        ColorRef uText = 0;
        ColorRef uBack = 0xFFFFFF;
        SPen pen;
        std::optional<ColorRef> brush = 0xFFFFFF;
    };

    struct SState
    {
        STools tools;
        std::optional<SRect> clip;
    };

    CDrawContext(int nBitsPerPixel, double fScale);

    STools m_Tools;
    std::vector<SState> m_Saved;
};
