#include "engine/imaging/CFileBytes.h"
#include "engine/imaging/CodecTable.h"
#include "engine/imaging/ImageCodecs.h"
#include "host/Image.h"
#include "host/Log.h"

#include <algorithm>
#include <new>

namespace
{

// strLine on failure: the file and the fault, without a line feed.
bool LoadPicture(const char* pszPath, SPicture& picture, std::string& strLine)
{
    CFileBytes file;
    if (!file.Read(pszPath, strLine))
    {
        return false;
    }
    std::string strFault;
    const SImageCodec* pCodec = RecogniseImage(file.GetBytes(), pszPath);
    if (pCodec == nullptr)
    {
        strFault = "not a " + ListImageNames(false) + " file";
    }
    if (pCodec == nullptr || !pCodec->pDecode(file.GetBytes(), picture, strFault))
    {
        strLine = std::string(pszPath) + ": " + strFault;
        return false;
    }
    return true;
}

// Null when the pair can be written, else the fault.
const char* CheckPalette(const IImage& image, const IPalette& palette)
{
    const uint32_t uCount = palette.GetCount();
    if (uCount == 0 || uCount > CPalette::MAX_ENTRIES)
    {
        return "the palette has none or too many entries";
    }
    const size_t nPixels = size_t{image.GetWidth()} * image.GetHeight();
    const uint8_t* pPixels = image.GetRawData();
    if (*std::max_element(pPixels, pPixels + nPixels) >= uCount)
    {
        return "an index has no entry in the palette";
    }
    return nullptr;
}

bool Encode(const char* pszPath,
            const IImage& image,
            const IPalette* pPalette,
            std::vector<uint8_t>& out,
            std::string& strFault)
{
    const SImageCodec* pCodec = FindEncoder(pszPath);
    if (pCodec == nullptr)
    {
        strFault = "the extension is none of " + ListImageExtensions("", ", ", true);
        return false;
    }
    if (pPalette != nullptr && pCodec->pMayHavePalette == nullptr)
    {
        strFault = "this file format holds no palette";
        return false;
    }
    return pCodec->pEncode(image, pPalette, out, strFault);
}

// pszPath and pImage are not null.
bool SavePicture(const char* pszPath,
                 const IImage& image,
                 const IPalette* pPalette,
                 std::string& strLine)
{
    std::string strFault;
    const char* pszFault = nullptr;
    // Only indices have a use for a palette.
    if (image.GetFormat() != EImageFormat::Indexed8)
    {
        pPalette = nullptr;
    }
    if (image.GetRawData() == nullptr)
    {
        pszFault = "the image has no pixels";
    }
    else if (!CheckImageSize(image.GetWidth(), image.GetHeight(), strFault))
    {
        pszFault = strFault.c_str();
    }
    else if (pPalette != nullptr)
    {
        pszFault = CheckPalette(image, *pPalette);
    }
    // The file is made in memory as a whole, so a fault of the codec leaves the old file alone.
    std::vector<uint8_t> bytes;
    if (pszFault == nullptr && !Encode(pszPath, image, pPalette, bytes, strFault))
    {
        pszFault = strFault.c_str();
    }
    if (pszFault != nullptr)
    {
        strLine = std::string(pszPath) + ": " + pszFault;
        return false;
    }
    return WriteFileBytes(pszPath, bytes, strLine);
}

} // namespace

IImage* IL_LoadImage(const char* pszPath)
{
    if (pszPath == nullptr)
    {
        CrashLog("[IL_LoadImage] pszPath == NULL\n");
        return nullptr;
    }
    try
    {
        SPicture picture;
        std::string strLine;
        if (LoadPicture(pszPath, picture, strLine))
        {
            return picture.pImage.release();
        }
        CrashLog("[IL_LoadImage] %s\n", strLine.c_str());
    }
    catch (const std::bad_alloc&)
    {
        CrashLog("[IL_LoadImage] %s: not enough memory\n", pszPath);
    }
    return nullptr;
}

IPalette* IL_LoadPalette(const char* pszPath)
{
    if (pszPath == nullptr)
    {
        return nullptr;
    }
    try
    {
        CFileBytes file;
        SPicture picture;
        std::string strFault;
        if (file.Read(pszPath, strFault))
        {
            const SImageCodec* pCodec = RecogniseImage(file.GetBytes(), pszPath);
            // A look at the header saves decoding the many pictures that have none.
            const bool bMay = pCodec != nullptr && pCodec->pMayHavePalette != nullptr &&
                              pCodec->pMayHavePalette(file.GetBytes());
            const bool bDecoded = bMay && pCodec->pDecode(file.GetBytes(), picture, strFault);
            return bDecoded ? picture.pPalette.release() : nullptr;
        }
    }
    catch (const std::bad_alloc&)
    {
        return nullptr; // as for a file that cannot be read, IL_LoadImage names the reason
    }
    return nullptr;
}

bool IL_SaveImage(const char* pszPath, const IImage* pImage, const IPalette* pPalette)
{
    if (pszPath == nullptr || pImage == nullptr)
    {
        CrashLog("[IL_SaveImage] %s == NULL\n", pszPath == nullptr ? "pszPath" : "pImage");
        return false;
    }
    try
    {
        std::string strLine;
        if (SavePicture(pszPath, *pImage, pPalette, strLine))
        {
            return true;
        }
        CrashLog("[IL_SaveImage] %s\n", strLine.c_str());
    }
    catch (const std::bad_alloc&)
    {
        CrashLog("[IL_SaveImage] %s: not enough memory\n", pszPath);
    }
    return false;
}
