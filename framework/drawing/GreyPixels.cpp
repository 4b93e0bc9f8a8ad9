#include "framework/drawing/GreyPixels.h"

#include "framework/drawing/CBitmap.h"
#include "framework/drawing/CDrawContext.h"
#include "host/Image.h"

#include <algorithm>

namespace
{

void MakePixels(const uint8_t* pGrey, size_t nPixels, int nBits, std::vector<uint8_t>& pixels)
{
    pixels.clear();
    if (pGrey == nullptr || (nBits != 16 && nBits != 24 && nBits != 32))
    {
        return;
    }
    const auto nBytes = static_cast<size_t>(nBits / 8);
    // At 32 bits the fourth byte stays as it is filled here.
    pixels.resize(nPixels * nBytes, 255);
    uint8_t* pPixel = pixels.data();
    for (size_t i = 0; i < nPixels; ++i, pPixel += nBytes)
    {
        const uint32_t g = pGrey[i];
        if (nBits == 16)
        {
            const uint32_t uPixel = (g >> 3U) + ((g & 0xF8U) << 8U) + ((g & 0xFCU) << 3U);
            pPixel[0] = static_cast<uint8_t>(uPixel);
            pPixel[1] = static_cast<uint8_t>(uPixel >> 8U);
        }
        else
        {
            std::fill_n(pPixel, 3, pGrey[i]);
        }
    }
}

} // namespace

bool DrawGreyPixels(CDrawContext& context,
                    const SRect& rect,
                    const IImage& picture,
                    SGreyPixels& kept)
{
    const int nBits = context.GetBitsPerPixel();
    if (kept.bytes.empty() || kept.nBits != nBits)
    {
        const size_t nPixels = size_t{picture.GetWidth()} * picture.GetHeight();
        MakePixels(picture.GetRawData(), nPixels, nBits, kept.bytes);
        kept.nBits = nBits;
    }
    const auto iWidth = static_cast<int>(picture.GetWidth());
    const auto iHeight = static_cast<int>(picture.GetHeight());
    CBitmap bitmap;
    if (kept.bytes.empty() ||
        !bitmap.CreateBitmap(iWidth, iHeight, context.GetPlanes(), nBits, kept.bytes.data()))
    {
        return false;
    }
    CDrawContext memory = CDrawContext::CreateCompatible(context);
    memory.SelectBitmap(&bitmap);
    context.StretchBlt(rect, memory, {0, 0, iWidth, iHeight});
    return true;
}

void DrawNoPicture(CDrawContext& context, const SRect& rect)
{
    context.SetPen({});
    context.SetBrush(0);
    context.Rectangle(rect);
}
