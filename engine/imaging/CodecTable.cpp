#include "engine/imaging/CodecTable.h"

#include "engine/imaging/BmpCodec.h"
#include "engine/imaging/DdsCodec.h"
#include "engine/imaging/JpegCodec.h"
#include "engine/imaging/PngCodec.h"
#include "engine/imaging/TgaCodec.h"

#include <strings.h>

#include <algorithm>
#include <cstring>

namespace
{

// A row for each format, in the order in which texts list them.
constexpr SImageCodec CODECS[] = {
    {.pszName = "PNG",
     .extensions = {"png"},
     .pRecognise = IsPng,
     .pMayHavePalette = MayPngHavePalette,
     .pPeekSize = PeekPngSize,
     .pDecode = DecodePng,
     .pEncode = EncodePng},
    {.pszName = "JPEG",
     .extensions = {"jpg", "jpeg"},
     .pRecognise = IsJpeg,
     .pPeekSize = PeekJpegSize,
     .pDecode = DecodeJpeg,
     .pEncode = EncodeJpeg},
    {.pszName = "TGA",
     .extensions = {"tga"},
     .pRecognise = HasTgaFooter,
     .bMarkIsOptional = true,
     .pMayHavePalette = MayTgaHavePalette,
     .pPeekSize = PeekTgaSize,
     .pDecode = DecodeTga,
     .pEncode = EncodeTga},
    {.pszName = "BMP",
     .extensions = {"bmp"},
     .pRecognise = IsBmp,
     .pMayHavePalette = MayBmpHavePalette,
     .pPeekSize = PeekBmpSize,
     .pDecode = DecodeBmp,
     .pEncode = EncodeBmp},
    {.pszName = "DDS",
     .extensions = {"dds"},
     .pRecognise = IsDds,
     .pPeekSize = PeekDdsSize,
     .pDecode = DecodeDds,
     .pEncode = EncodeDds},
};

bool HasExtension(const SImageCodec& codec, const char* pszPath)
{
    const char* pszDot = std::strrchr(pszPath, '.');
    return pszDot != nullptr && std::any_of(codec.extensions.begin(),
                                            codec.extensions.end(),
                                            [pszDot](const char* pszExtension) {
                                                return pszExtension != nullptr &&
                                                       strcasecmp(pszDot + 1, pszExtension) == 0;
                                            });
}

} // namespace

std::span<const SImageCodec> GetImageCodecs()
{
    return CODECS;
}

const SImageCodec* RecogniseImage(std::span<const uint8_t> data, const char* pszPath)
{
    // Formats that always carry a mark come first: an extension counts only where no mark was
    // found.
    for (const bool bMarkIsOptional : {false, true})
    {
        for (const SImageCodec& codec : CODECS)
        {
            const bool bIts =
                codec.pRecognise(data) || (codec.bMarkIsOptional && HasExtension(codec, pszPath));
            if (codec.bMarkIsOptional == bMarkIsOptional && bIts)
            {
                return &codec;
            }
        }
    }
    return nullptr;
}

const SImageCodec* FindEncoder(const char* pszPath)
{
    const auto* pFound =
        std::find_if(std::begin(CODECS),
                     std::end(CODECS),
                     [pszPath](const SImageCodec& codec)
                     { return codec.pEncode != nullptr && HasExtension(codec, pszPath); });
    return pFound != std::end(CODECS) ? pFound : nullptr;
}

std::string ListImageNames(bool bWritten)
{
    std::string strNames;
    const char* pszLast = nullptr;
    for (const SImageCodec& codec : CODECS)
    {
        if (codec.pEncode != nullptr || !bWritten)
        {
            // Each name is added one turn late, so that the last one can stand behind the "or".
            strNames +=
                pszLast == nullptr ? "" : (strNames.empty() ? "" : ", ") + std::string(pszLast);
            pszLast = codec.pszName;
        }
    }
    return strNames + " or " + pszLast;
}

std::string ListImageExtensions(const char* pszBefore, const char* pszBetween, bool bWritten)
{
    std::string strList;
    for (const SImageCodec& codec : CODECS)
    {
        for (const char* pszExtension : codec.extensions)
        {
            if (pszExtension != nullptr && (codec.pEncode != nullptr || !bWritten))
            {
                strList += strList.empty() ? "" : pszBetween;
                strList += std::string(pszBefore) + pszExtension;
            }
        }
    }
    return strList;
}
