#include "engine/imaging/PixelOrder.h"

#include <cstring>

namespace
{

template <size_t TPixelBytes>
void CopySwappedPixels(const uint8_t* pSource, uint8_t* pDest, size_t nPixels)
{
    for (size_t i = 0; i < nPixels; ++i, pSource += TPixelBytes, pDest += TPixelBytes)
    {
        pDest[0] = pSource[2];
        pDest[1] = pSource[1];
        pDest[2] = pSource[0];
        if constexpr (TPixelBytes == 4)
        {
            pDest[3] = pSource[3];
        }
    }
}

} // namespace

void CopySwapped(const uint8_t* pSource, uint8_t* pDest, size_t nPixels, uint32_t uPixelBytes)
{
    switch (uPixelBytes)
    {
    case 3:
        CopySwappedPixels<3>(pSource, pDest, nPixels);
        break;
    case 4:
        CopySwappedPixels<4>(pSource, pDest, nPixels);
        break;
    default:
        std::memcpy(pDest, pSource, nPixels);
        break;
    }
}

void UnpackIndices(const uint8_t* pSource, uint8_t* pDest, size_t nPixels, uint32_t uBits)
{
    if (uBits == 8)
    {
        std::memcpy(pDest, pSource, nPixels);
        return;
    }
    const size_t nPerByte = 8 / uBits;
    const uint32_t uMask = (1U << uBits) - 1;
    for (size_t i = 0; i < nPixels; ++i)
    {
        const uint32_t uShift = static_cast<uint32_t>(nPerByte - 1 - i % nPerByte) * uBits;
        pDest[i] = static_cast<uint8_t>(pSource[i / nPerByte] >> uShift & uMask);
    }
}
