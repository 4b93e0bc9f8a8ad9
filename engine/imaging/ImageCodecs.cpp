#include "engine/imaging/ImageCodecs.h"

#include <cstring>
#include <new>

bool StartsWith(std::span<const uint8_t> data, std::string_view strMark)
{
    return data.size() >= strMark.size() &&
           std::memcmp(data.data(), strMark.data(), strMark.size()) == 0;
}

bool CheckImageSize(uint64_t uWidth, uint64_t uHeight, std::string& strFault)
{
    // The sides come first, because the product of any two numbers could wrap.
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
