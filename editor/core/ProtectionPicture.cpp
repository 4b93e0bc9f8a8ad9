#include "editor/core/ProtectionPicture.h"

#include "engine/terrain/CProtectionEdit.h"
#include "host/Image.h"
#include "host/Log.h"

#include <algorithm>
#include <array>
#include <memory>

namespace
{

constexpr uint32_t SIDE = CVertexProtection::SIDE;
constexpr uint8_t WHITE = 255;
constexpr uint8_t MIDDLE = 128;

// The pixel of a row or column of nPixels that is nearest to a vertex of one of nVertices.
size_t GetNearest(uint32_t uVertex, uint32_t nVertices, uint32_t nPixels)
{
    const uint64_t uCells = nVertices - 1;
    return (uint64_t{uVertex} * (nPixels - 1) * 2 + uCells) / (uCells * 2);
}

// The grey that each byte stands for.
std::array<uint8_t, 256> GetGreys(const std::string& strPath, const IImage& image)
{
    std::array<uint8_t, 256> greys = {};
    for (size_t i = 0; i < greys.size(); ++i)
    {
        greys[i] = static_cast<uint8_t>(i);
    }
    const bool bIndexed = image.GetFormat() == EImageFormat::Indexed8;
    const std::unique_ptr<IPalette> pPalette(bIndexed ? IL_LoadPalette(strPath.c_str()) : nullptr);
    for (uint32_t i = 0; pPalette != nullptr && i < pPalette->GetCount(); ++i)
    {
        greys[i] = pPalette->GetEntry(i)[0];
    }
    return greys;
}

// Whether the picture can be for another resolution of the ground.
bool HasShape(const IImage& image, const CVertexProtection& protection)
{
    return image.GetWidth() > 1 && image.GetHeight() > 1 &&
           uint64_t{image.GetWidth() - 1} * (protection.GetSizeZ() - 1) ==
               uint64_t{image.GetHeight() - 1} * (protection.GetSizeX() - 1);
}

} // namespace

bool ReadProtection(const std::string& strPath, CProtectionEdit& edit, bool bResampled)
{
    const CVertexProtection& protection = edit.GetProtection();
    const std::unique_ptr<IImage> pImage(IL_LoadImage(strPath.c_str()));
    if (pImage == nullptr)
    {
        return false; // which was logged
    }
    const bool bSame =
        pImage->GetWidth() == protection.GetSizeX() && pImage->GetHeight() == protection.GetSizeZ();
    if (!bSame && !(bResampled && HasShape(*pImage, protection)))
    {
        CrashLog("[ReadProtection] %s: a picture of %u x %u pixels for a terrain of %u x %u "
                 "vertices\n",
                 strPath.c_str(),
                 pImage->GetWidth(),
                 pImage->GetHeight(),
                 protection.GetSizeX(),
                 protection.GetSizeZ());
        return false;
    }
    const size_t nPixel = pImage->GetBitsPerPixel() / 8;
    const uint8_t* pPixels = pImage->GetRawData();
    const std::array<uint8_t, 256> greys = GetGreys(strPath, *pImage);
    edit.ChangeAll(
        [&](uint32_t uSquareX, uint32_t uSquareZ, CVertexProtection::Square& bits)
        {
            bits.fill(0);
            const uint32_t uEndX = std::min((uSquareX + 1) * SIDE, protection.GetSizeX());
            const uint32_t uEndZ = std::min((uSquareZ + 1) * SIDE, protection.GetSizeZ());
            for (uint32_t z = uSquareZ * SIDE; z < uEndZ; ++z)
            {
                const size_t nRow = GetNearest(z, protection.GetSizeZ(), pImage->GetHeight());
                for (uint32_t x = uSquareX * SIDE; x < uEndX; ++x)
                {
                    const size_t nColumn = GetNearest(x, protection.GetSizeX(), pImage->GetWidth());
                    const uint8_t uGrey =
                        greys[pPixels[(nRow * pImage->GetWidth() + nColumn) * nPixel]];
                    bits[z % SIDE] |= uint64_t{uGrey >= MIDDLE} << (x % SIDE);
                }
            }
        });
    return true;
}

bool WriteProtection(const std::string& strPath, const CVertexProtection& protection)
{
    const uint32_t uSizeX = protection.GetSizeX();
    const uint32_t uSizeZ = protection.GetSizeZ();
    const std::unique_ptr<IImage> pImage(
        IL_CreateImageFromBufferFormat(uSizeX, uSizeZ, EImageFormat::Indexed8, nullptr));
    if (pImage == nullptr)
    {
        CrashLog("[WriteProtection] %s: no memory for %u x %u pixels\n",
                 strPath.c_str(),
                 uSizeX,
                 uSizeZ);
        return false;
    }
    for (uint32_t z = 0; z < uSizeZ; ++z)
    {
        uint8_t* pRow = pImage->GetRawData() + size_t{z} * uSizeX;
        for (uint32_t x = 0; x < uSizeX; ++x)
        {
            const uint64_t uBits = protection.GetRow(x / SIDE, z);
            pRow[x] = ((uBits >> (x % SIDE)) & 1U) != 0 ? WHITE : 0;
        }
    }
    return IL_SaveImage(strPath.c_str(), pImage.get(), nullptr);
}
