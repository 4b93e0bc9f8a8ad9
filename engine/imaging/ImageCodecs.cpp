#include "engine/imaging/ImageCodecs.h"

#include <strings.h>

#include <cstring>
#include <new>
#include <string_view>

namespace
{

bool StartsWith(std::span<const uint8_t> Data, std::string_view strMark)
{
    return Data.size() >= strMark.size() &&
           std::memcmp(Data.data(), strMark.data(), strMark.size()) == 0;
}

bool HasTgaFooter(std::span<const uint8_t> Data)
{
    constexpr std::string_view strMark("TRUEVISION-XFILE.\0", 18);
    return Data.size() >= strMark.size() && StartsWith(Data.last(strMark.size()), strMark);
}

struct SExtension
{
    const char* Text;
    EImageFile File;
};

constexpr SExtension Extensions[] = {
    {"png", EImageFile::Png},
    {"jpg", EImageFile::Jpeg},
    {"jpeg", EImageFile::Jpeg},
    {"tga", EImageFile::Tga},
    {"bmp", EImageFile::Bmp},
    {"dds", EImageFile::Dds},
};

} // namespace

EImageFile GetImageFileOfExtension(const char* pszPath)
{
    const char* pszDot = std::strrchr(pszPath, '.');
    for (const SExtension& Extension : Extensions)
    {
        if (pszDot != nullptr && strcasecmp(pszDot + 1, Extension.Text) == 0)
        {
            return Extension.File;
        }
    }
    return EImageFile::Unknown;
}

EImageFile RecogniseImage(std::span<const uint8_t> Data, const char* pszPath)
{
    if (StartsWith(Data, "\x89PNG\r\n\x1a\n"))
    {
        return EImageFile::Png;
    }
    if (StartsWith(Data, "\xff\xd8\xff"))
    {
        return EImageFile::Jpeg;
    }
    if (StartsWith(Data, "DDS "))
    {
        return EImageFile::Dds;
    }
    // "BM" may also begin a TGA: an identification of 66 bytes and colour map type 77. That type
    // does not exist, so it is a BMP.
    if (StartsWith(Data, "BM"))
    {
        return EImageFile::Bmp;
    }
    const bool bTga = HasTgaFooter(Data) || GetImageFileOfExtension(pszPath) == EImageFile::Tga;
    return bTga ? EImageFile::Tga : EImageFile::Unknown;
}

bool MayHavePalette(EImageFile eFile, std::span<const uint8_t> Data)
{
    constexpr size_t nPngColorType = 25;
    switch (eFile)
    {
    case EImageFile::Png:
        return Data.size() > nPngColorType && Data[nPngColorType] == 3;
    case EImageFile::Tga:
        return Data.size() > 1 && Data[1] == 1;
    case EImageFile::Bmp:
        return true;
    case EImageFile::Jpeg:
    case EImageFile::Dds:
    case EImageFile::Unknown:
        break;
    }
    return false;
}

bool DecodeImage(EImageFile eFile,
                 std::span<const uint8_t> Data,
                 SPicture& Picture,
                 std::string& strFault)
{
    switch (eFile)
    {
    case EImageFile::Png:
        return DecodePng(Data, Picture, strFault);
    case EImageFile::Jpeg:
        return DecodeJpeg(Data, Picture, strFault);
    case EImageFile::Tga:
        return DecodeTga(Data, Picture, strFault);
    case EImageFile::Bmp:
        return DecodeBmp(Data, Picture, strFault);
    case EImageFile::Dds:
        return DecodeDds(Data, Picture, strFault);
    case EImageFile::Unknown:
        break;
    }
    strFault = "not a PNG, JPEG, TGA, BMP or DDS file";
    return false;
}

bool EncodeImage(EImageFile eFile,
                 const IImage& Image,
                 const IPalette* pPalette,
                 std::vector<uint8_t>& Out,
                 std::string& strFault)
{
    const bool bNoPalette = eFile == EImageFile::Jpeg || eFile == EImageFile::Dds;
    if (bNoPalette && pPalette != nullptr)
    {
        strFault = "this file format holds no palette";
        return false;
    }
    switch (eFile)
    {
    case EImageFile::Png:
        return EncodePng(Image, pPalette, Out, strFault);
    case EImageFile::Jpeg:
        return EncodeJpeg(Image, Out, strFault);
    case EImageFile::Tga:
        EncodeTga(Image, pPalette, Out);
        return true;
    case EImageFile::Bmp:
        EncodeBmp(Image, pPalette, Out);
        return true;
    case EImageFile::Dds:
        EncodeDds(Image, Out);
        return true;
    case EImageFile::Unknown:
        break;
    }
    strFault = "the extension is none of png, jpg, jpeg, tga, bmp, dds";
    return false;
}

bool CheckImageSize(uint64_t uWidth, uint64_t uHeight, std::string& strFault)
{
    const bool bSides =
        uWidth >= 1 && uHeight >= 1 && uWidth <= CImage::MAX_SIDE && uHeight <= CImage::MAX_SIDE;
    if (!bSides || uWidth * uHeight > MAX_PIXELS)
    {
        strFault = "a size of " + std::to_string(uWidth) + " x " + std::to_string(uHeight) +
                   " pixels is not supported, the limit is " + std::to_string(MAX_PIXELS) +
                   " pixels (16385 x 16385) and " + std::to_string(CImage::MAX_SIDE) + " a side";
        return false;
    }
    return true;
}

bool MakeImage(SPicture& Picture,
               uint32_t uWidth,
               uint32_t uHeight,
               EImageFormat eFormat,
               std::string& strFault)
{
    if (!CheckImageSize(uWidth, uHeight, strFault))
    {
        return false;
    }
    Picture.Image = CImage::Create(uWidth, uHeight, eFormat);
    if (!Picture.Image)
    {
        strFault = "not enough memory";
        return false;
    }
    return true;
}

bool AppendBytes(std::vector<uint8_t>& Out, const uint8_t* pData, size_t nBytes)
{
    try
    {
        Out.insert(Out.end(), pData, pData + nBytes);
        return true;
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
}
