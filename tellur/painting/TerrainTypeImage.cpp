#include "tellur/painting/TerrainTypeImage.h"

#include "host/IPaintLayer.h"

#include <cstring>

namespace
{

constexpr uint8_t OPAQUE = 255;

size_t GetTexelCount(const IImage& image)
{
    return size_t{image.GetWidth()} * image.GetHeight();
}

} // namespace

// The palette's bytes are turned round here, and again when an index is looked up; the colours that
// the dialog paints with are not. Bitmaps depend on it.
std::unique_ptr<IImage> MakeWorkImage(const IImage& bitmap, const IPalette* pPalette)
{
    if (pPalette == nullptr || bitmap.GetFormat() != EImageFormat::Indexed8)
    {
        return std::unique_ptr<IImage>(IL_CreateImageFromImage(&bitmap, EImageFormat::Rgba32));
    }
    std::unique_ptr<IImage> pWork(IL_CreateImageFromBufferFormat(
        bitmap.GetWidth(), bitmap.GetHeight(), EImageFormat::Rgba32, nullptr));
    if (pWork == nullptr)
    {
        return nullptr;
    }
    uint8_t texels[256][PAINT_TEXEL_BYTES] = {};
    for (uint32_t i = 0; i < 256; ++i)
    {
        if (const uint8_t* pEntry = pPalette->GetEntry(i))
        {
            texels[i][0] = pEntry[2];
            texels[i][1] = pEntry[1];
            texels[i][2] = pEntry[0];
            texels[i][3] = OPAQUE;
        }
    }
    const uint8_t* pIndex = bitmap.GetRawData();
    uint8_t* pTexel = pWork->GetRawData();
    for (size_t nLeft = GetTexelCount(bitmap); nLeft > 0; --nLeft, pTexel += PAINT_TEXEL_BYTES)
    {
        std::memcpy(pTexel, texels[*pIndex++], PAINT_TEXEL_BYTES);
    }
    return pWork;
}

std::unique_ptr<IImage>
MakeImageToSave(const IImage& work, const IPalette* pPalette, EImageFormat eFormat)
{
    if (pPalette == nullptr)
    {
        return std::unique_ptr<IImage>(IL_CreateImageFromImage(&work, eFormat));
    }
    std::unique_ptr<IImage> pIndices(IL_CreateImageFromBufferFormat(
        work.GetWidth(), work.GetHeight(), EImageFormat::Indexed8, nullptr));
    if (pIndices == nullptr)
    {
        return nullptr;
    }
    const uint8_t* pTexel = work.GetRawData();
    uint8_t* pIndex = pIndices->GetRawData();
    const uint8_t* pLast = nullptr; // most texels are as the one before
    for (size_t nLeft = GetTexelCount(work); nLeft > 0;
         --nLeft, pTexel += PAINT_TEXEL_BYTES, ++pIndex)
    {
        const bool bSame = pLast != nullptr && std::memcmp(pLast, pTexel, 3) == 0;
        *pIndex = bSame ? pIndex[-1] : pPalette->FindIndex(pTexel[2], pTexel[1], pTexel[0]);
        pLast = pTexel;
    }
    return pIndices;
}
