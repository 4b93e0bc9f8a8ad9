#include "framework/drawing/GreyPixels.h"

#include <algorithm>

bool MakeGreyPixels(const uint8_t* pGrey, size_t nPixels, int nBits, std::vector<uint8_t>& pixels)
{
    pixels.clear();
    if (nBits != 16 && nBits != 24 && nBits != 32)
    {
        return false;
    }
    const auto nBytes = static_cast<size_t>(nBits / 8);
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
    return true;
}
