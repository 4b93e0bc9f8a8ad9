#include "framework/drawing/PixelCopies.h"

#include "framework/drawing/PixelFormat.h"
#include "host/Log.h"

#include <cstdint>
#include <cstring>

namespace
{

// Walks along one side of a stretched copy without a division per pixel. The source position of
// target i is the one that the centre of i falls on, (2 i + 1) * nFrom / (2 nTo): kept as a whole
// number and a rest, to which each step adds those of nFrom / nTo.
class CStretch
{
public:
    // iAhead: how many target pixels the walk starts behind the edge of the rectangle.
    CStretch(int iFrom, int64_t nFrom, int64_t nTo, int64_t iAhead)
        : m_Divisor(2 * nTo)
        , m_Whole(2 * nFrom / m_Divisor)
        , m_Part(2 * nFrom % m_Divisor)
        , m_At(iFrom + (2 * iAhead + 1) * nFrom / m_Divisor)
        , m_Rest((2 * iAhead + 1) * nFrom % m_Divisor)
    {
    }

    int64_t GetAt() const { return m_At; }

    void Step()
    {
        m_At += m_Whole;
        m_Rest += m_Part;
        if (m_Rest >= m_Divisor)
        {
            m_Rest -= m_Divisor;
            ++m_At;
        }
    }

private:
    int64_t m_Divisor;
    int64_t m_Whole;
    int64_t m_Part;
    int64_t m_At;
    int64_t m_Rest;
};

// Calls copy(target pixel, source pixel) for each pixel of box whose source is there.
template <class TCopy>
void WalkPixels(CPixelBuffer& target,
                const SRect& box,
                const SRect& rect,
                const CPixelBuffer& source,
                const SRect& sourceRect,
                TCopy&& copy)
{
    const int nTargetBytes = target.GetBitsPerPixel() / 8;
    const int nSourceBytes = source.GetBitsPerPixel() / 8;
    const int64_t iAhead = static_cast<int64_t>(box.left) - rect.left;
    const CStretch left(sourceRect.left, sourceRect.GetWidth(), rect.GetWidth(), iAhead);
    CStretch down(sourceRect.top,
                  sourceRect.GetHeight(),
                  rect.GetHeight(),
                  static_cast<int64_t>(box.top) - rect.top);
    for (int y = box.top; y < box.bottom; ++y, down.Step())
    {
        const uint8_t* pSource = source.GetRow(static_cast<int>(down.GetAt()));
        uint8_t* pRow = target.GetRow(y);
        if (pSource == nullptr || pRow == nullptr)
        {
            continue;
        }
        uint8_t* pTarget = GetPixelOf(pRow, box.left, target.GetBitsPerPixel());
        CStretch across = left;
        for (int x = box.left; x < box.right; ++x, across.Step(), pTarget += nTargetBytes)
        {
            if (across.GetAt() >= 0 && across.GetAt() < source.GetWidth())
            {
                copy(pTarget, pSource + across.GetAt() * nSourceBytes);
            }
        }
    }
}

// Between depths by way of the colour; the fourth byte is 255 then.
uint32_t ConvertPixel(uint32_t uPixel, int nFromBits, int nToBits)
{
    return nFromBits == nToBits ? uPixel | OPAQUE_BYTE
                                : EncodePixel(DecodePixel(uPixel, nFromBits), nToBits);
}

// At the same depth and size; box and what it takes from the source are inside both.
void CopyRows(CPixelBuffer& target, const SRect& box, const CPixelBuffer& source, SPoint from)
{
    const int nBits = target.GetBitsPerPixel();
    const int nRowBytes = box.GetWidth() * (nBits / 8);
    for (int y = 0; y < box.GetHeight(); ++y)
    {
        uint8_t* pTarget = GetPixelOf(target.GetRow(box.top + y), box.left, nBits);
        const uint8_t* pSource = GetPixelOf(source.GetRow(from.y + y), from.x, nBits);
        std::memcpy(pTarget, pSource, static_cast<size_t>(nRowBytes));
        for (int i = 3; nBits == 32 && i < nRowBytes; i += 4)
        {
            pTarget[i] = 255;
        }
    }
}

// The source is not the target.
void CopyOther(CDrawSurface& surface, const SRect& target, const SPixelSource& source)
{
    const SRect box = target.Intersect(surface.GetClipBox());
    if (box.IsEmpty())
    {
        return;
    }
    CPixelBuffer& pixels = *surface.GetTarget();
    const int nBits = pixels.GetBitsPerPixel();
    const int nFromBits = source.pPixels->GetBitsPerPixel();
    if (source.eCopy == EPixelCopy::Blended)
    {
        WalkPixels(pixels,
                   box,
                   target,
                   *source.pPixels,
                   source.rect,
                   [nBits](uint8_t* pTarget, const uint8_t* pSource)
                   {
                       const ColorRef uColor = MakeColor(pSource[2], pSource[1], pSource[0]);
                       BlendPixel(pTarget, uColor, pSource[3], nBits);
                   });
        return;
    }
    const int dx = source.rect.left - target.left;
    const int dy = source.rect.top - target.top;
    // Whole rows where neither size nor depth changes, which needs no step a pixel.
    if (source.eCopy == EPixelCopy::Opaque && nBits == nFromBits &&
        target.Offset(dx, dy) == source.rect)
    {
        const SRect from = box.Offset(dx, dy).Intersect(source.pPixels->GetBounds());
        if (!from.IsEmpty())
        {
            CopyRows(pixels, from.Offset(-dx, -dy), *source.pPixels, {from.left, from.top});
        }
        return;
    }
    const uint32_t uMask = GetColorMask(nFromBits);
    // No pixel equals this when there is no key.
    const uint32_t uKey = source.eCopy == EPixelCopy::Keyed
                              ? EncodePixel(source.uKey, nFromBits) & uMask
                              : OPAQUE_BYTE;
    WalkPixels(pixels,
               box,
               target,
               *source.pPixels,
               source.rect,
               [=](uint8_t* pTarget, const uint8_t* pSource)
               {
                   const uint32_t uPixel = LoadPixel(pSource, nFromBits);
                   if ((uPixel & uMask) != uKey)
                   {
                       StorePixel(pTarget, ConvertPixel(uPixel, nFromBits, nBits), nBits);
                   }
               });
}

} // namespace

void CopyPixels(CDrawSurface& surface, const SRect& target, const SPixelSource& source)
{
    if (source.pPixels == nullptr || source.pPixels->IsEmpty() || source.rect.IsEmpty())
    {
        return;
    }
    if (source.pPixels != surface.GetTarget())
    {
        CopyOther(surface, target, source);
        return;
    }
    // The source is the target itself: what is written must not be read again as source.
    CPixelBuffer before;
    if (!before.CopyFrom(*source.pPixels))
    {
        CrashLog("[CDrawContext::CopyFromSource] no memory for a copy within one bitmap\n");
        return;
    }
    SPixelSource kept = source;
    kept.pPixels = &before;
    CopyOther(surface, target, kept);
}

void MapPixels(CDrawSurface& surface, const SRect& rect, std::span<const SColorPair> pairs)
{
    const SRect box = rect.Intersect(surface.GetClipBox());
    if (box.IsEmpty())
    {
        return;
    }
    CPixelBuffer& target = *surface.GetTarget();
    const int nBits = target.GetBitsPerPixel();
    const uint32_t uMask = GetColorMask(nBits);
    const auto map = [&](uint32_t uPixel)
    {
        for (const SColorPair& pair : pairs)
        {
            if ((uPixel & uMask) == (EncodePixel(pair.uFrom, nBits) & uMask))
            {
                return (uPixel & ~uMask) | (EncodePixel(pair.uTo, nBits) & uMask);
            }
        }
        return uPixel;
    };
    for (int y = box.top; y < box.bottom; ++y)
    {
        uint8_t* pPixel = GetPixelOf(target.GetRow(y), box.left, nBits);
        for (int x = box.left; x < box.right; ++x, pPixel += nBits / 8)
        {
            StorePixel(pPixel, map(LoadPixel(pPixel, nBits)), nBits);
        }
    }
}
