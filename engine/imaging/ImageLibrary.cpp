#include "engine/imaging/CFileBytes.h"
#include "engine/imaging/ImageCodecs.h"
#include "host/Image.h"
#include "host/Log.h"

#include <algorithm>
#include <new>

namespace
{

// strLine on failure: the file and the fault, without a line feed.
bool LoadPicture(const char* pszPath, SPicture& Picture, std::string& strLine)
{
    CFileBytes File;
    if (!File.Read(pszPath, strLine))
    {
        return false;
    }
    std::string strFault;
    const EImageFile eFile = RecogniseImage(File.GetBytes(), pszPath);
    if (!DecodeImage(eFile, File.GetBytes(), Picture, strFault))
    {
        strLine = std::string(pszPath) + ": " + strFault;
        return false;
    }
    return true;
}

// Null when the pair can be written, else the fault.
const char* CheckPalette(const IImage& Image, const IPalette& Palette)
{
    const uint32_t uCount = Palette.GetCount();
    if (uCount == 0 || uCount > CPalette::MAX_ENTRIES)
    {
        return "the palette has none or too many entries";
    }
    const size_t nPixels = size_t{Image.GetWidth()} * Image.GetHeight();
    const uint8_t* pPixels = Image.GetRawData();
    if (*std::max_element(pPixels, pPixels + nPixels) >= uCount)
    {
        return "an index has no entry in the palette";
    }
    return nullptr;
}

// pszPath and pImage are not null.
bool SavePicture(const char* pszPath,
                 const IImage& Image,
                 const IPalette* pPalette,
                 std::string& strLine)
{
    std::string strFault;
    const char* pszFault = nullptr;
    if (Image.GetFormat() != EImageFormat::Indexed8)
    {
        pPalette = nullptr;
    }
    if (Image.GetRawData() == nullptr)
    {
        pszFault = "the image has no pixels";
    }
    else if (!CheckImageSize(Image.GetWidth(), Image.GetHeight(), strFault))
    {
        pszFault = strFault.c_str();
    }
    else if (pPalette != nullptr)
    {
        pszFault = CheckPalette(Image, *pPalette);
    }
    std::vector<uint8_t> Bytes;
    if (pszFault == nullptr &&
        !EncodeImage(GetImageFileOfExtension(pszPath), Image, pPalette, Bytes, strFault))
    {
        pszFault = strFault.c_str();
    }
    if (pszFault != nullptr)
    {
        strLine = std::string(pszPath) + ": " + pszFault;
        return false;
    }
    return WriteFileBytes(pszPath, Bytes, strLine);
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
        SPicture Picture;
        std::string strLine;
        if (LoadPicture(pszPath, Picture, strLine))
        {
            return Picture.Image.release();
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
        CFileBytes File;
        SPicture Picture;
        std::string strFault;
        if (File.Read(pszPath, strFault))
        {
            const EImageFile eFile = RecogniseImage(File.GetBytes(), pszPath);
            const bool bDecoded = MayHavePalette(eFile, File.GetBytes()) &&
                                  DecodeImage(eFile, File.GetBytes(), Picture, strFault);
            return bDecoded ? Picture.Palette.release() : nullptr;
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
