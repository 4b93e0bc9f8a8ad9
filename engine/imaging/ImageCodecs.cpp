#include "engine/imaging/ImageCodecs.h"

#include <strings.h>

#include <cstring>
#include <new>
#include <string_view>

namespace
{

bool StartsWith(std::span<const uint8_t> data, std::string_view strMark)
{
    return data.size() >= strMark.size() &&
           std::memcmp(data.data(), strMark.data(), strMark.size()) == 0;
}

bool HasTgaFooter(std::span<const uint8_t> data)
{
    constexpr std::string_view MARK("TRUEVISION-XFILE.\0", 18);
    return data.size() >= MARK.size() && StartsWith(data.last(MARK.size()), MARK);
}

struct SExtension
{
    const char* pszText;
    EImageFile eFile;
};

constexpr SExtension EXTENSIONS[] = {
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
    for (const SExtension& extension : EXTENSIONS)
    {
        if (pszDot != nullptr && strcasecmp(pszDot + 1, extension.pszText) == 0)
        {
            return extension.eFile;
        }
    }
    return EImageFile::Unknown;
}

EImageFile RecogniseImage(std::span<const uint8_t> data, const char* pszPath)
{
    if (StartsWith(data, "\x89PNG\r\n\x1a\n"))
    {
        return EImageFile::Png;
    }
    if (StartsWith(data, "\xff\xd8\xff"))
    {
        return EImageFile::Jpeg;
    }
    if (StartsWith(data, "DDS "))
    {
        return EImageFile::Dds;
    }
    // "BM" may also begin a TGA: an identification of 66 bytes and colour map type 77. That type
    // does not exist, so it is a BMP.
    if (StartsWith(data, "BM"))
    {
        return EImageFile::Bmp;
    }
    const bool bTga = HasTgaFooter(data) || GetImageFileOfExtension(pszPath) == EImageFile::Tga;
    return bTga ? EImageFile::Tga : EImageFile::Unknown;
}

bool MayHavePalette(EImageFile eFile, std::span<const uint8_t> data)
{
    constexpr size_t PNG_COLOR_TYPE_AT = 25;
    switch (eFile)
    {
    case EImageFile::Png:
        return data.size() > PNG_COLOR_TYPE_AT && data[PNG_COLOR_TYPE_AT] == 3;
    case EImageFile::Tga:
        return data.size() > 1 && data[1] == 1;
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
                 std::span<const uint8_t> data,
                 SPicture& picture,
                 std::string& strFault)
{
    switch (eFile)
    {
    case EImageFile::Png:
        return DecodePng(data, picture, strFault);
    case EImageFile::Jpeg:
        return DecodeJpeg(data, picture, strFault);
    case EImageFile::Tga:
        return DecodeTga(data, picture, strFault);
    case EImageFile::Bmp:
        return DecodeBmp(data, picture, strFault);
    case EImageFile::Dds:
        return DecodeDds(data, picture, strFault);
    case EImageFile::Unknown:
        break;
    }
    strFault = "not a PNG, JPEG, TGA, BMP or DDS file";
    return false;
}

bool EncodeImage(EImageFile eFile,
                 const IImage& image,
                 const IPalette* pPalette,
                 std::vector<uint8_t>& out,
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
        return EncodePng(image, pPalette, out, strFault);
    case EImageFile::Jpeg:
        return EncodeJpeg(image, out, strFault);
    case EImageFile::Tga:
        EncodeTga(image, pPalette, out);
        return true;
    case EImageFile::Bmp:
        EncodeBmp(image, pPalette, out);
        return true;
    case EImageFile::Dds:
        EncodeDds(image, out);
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

bool MakeImage(SPicture& picture,
               uint32_t uWidth,
               uint32_t uHeight,
               EImageFormat eFormat,
               std::string& strFault)
{
    if (!CheckImageSize(uWidth, uHeight, strFault))
    {
        return false;
    }
    picture.pImage = CImage::Create(uWidth, uHeight, eFormat);
    if (!picture.pImage)
    {
        strFault = "not enough memory";
        return false;
    }
    return true;
}

bool AppendBytes(std::vector<uint8_t>& out, const uint8_t* pData, size_t nBytes)
{
    try
    {
        out.insert(out.end(), pData, pData + nBytes);
        return true;
    }
    catch (const std::bad_alloc&)
    {
        return false;
    }
}
