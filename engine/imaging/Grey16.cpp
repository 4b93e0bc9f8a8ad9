#include "engine/imaging/Grey16.h"

#include "engine/imaging/CFileBytes.h"
#include "engine/imaging/CPngReader.h"
#include "engine/imaging/ImageCodecs.h"
#include "engine/imaging/PngWriter.h"
#include "host/Log.h"

#include <new>

namespace
{

constexpr uint32_t SAMPLE_BYTES = 2;

// strLine on failure: the file and the fault, without a line feed.
bool LoadSamples(const char* pszPath,
                 uint32_t& uWidth,
                 uint32_t& uHeight,
                 std::vector<uint16_t>& Samples,
                 std::string& strLine)
{
    CFileBytes File;
    if (!File.Read(pszPath, strLine))
    {
        return false;
    }
    std::string strFault;
    CPngReader Reader(File.GetBytes());
    std::vector<uint16_t> Read;
    bool bGood = false;
    if (RecogniseImage(File.GetBytes(), pszPath) != EImageFile::Png)
    {
        strFault = "not a PNG file";
    }
    else if (!Reader.ReadHeader() || !Reader.Prepare(CPngReader::ESamples::Words))
    {
        strFault = Reader.GetFault();
    }
    else if (!Reader.IsGrey())
    {
        strFault = "not a PNG file of plain grey";
    }
    else if (CheckImageSize(Reader.GetWidth(), Reader.GetHeight(), strFault))
    {
        Read.resize(size_t{Reader.GetWidth()} * Reader.GetHeight());
        bGood = Reader.ReadPixels(reinterpret_cast<uint8_t*>(Read.data()));
        strFault = Reader.GetFault();
    }
    if (!bGood)
    {
        strLine = std::string(pszPath) + ": " + strFault;
        return false;
    }
    uWidth = Reader.GetWidth();
    uHeight = Reader.GetHeight();
    Samples = std::move(Read);
    return true;
}

bool SaveSamples(const char* pszPath,
                 uint32_t uWidth,
                 uint32_t uHeight,
                 const uint16_t* pSamples,
                 std::string& strLine)
{
    SPngPixels Pixels;
    Pixels.Width = uWidth;
    Pixels.Height = uHeight;
    Pixels.BitDepth = 16;
    Pixels.RowBytes = size_t{uWidth} * SAMPLE_BYTES;
    Pixels.Rows = reinterpret_cast<const uint8_t*>(pSamples);
    std::vector<uint8_t> Bytes;
    std::string strFault;
    if (!CheckImageSize(uWidth, uHeight, strFault) || !WritePng(Pixels, Bytes, strFault))
    {
        strLine = std::string(pszPath) + ": " + strFault;
        return false;
    }
    return WriteFileBytes(pszPath, Bytes, strLine);
}

} // namespace

bool LoadGrey16(const char* pszPath,
                uint32_t& uWidth,
                uint32_t& uHeight,
                std::vector<uint16_t>& Samples)
{
    if (pszPath == nullptr)
    {
        CrashLog("[LoadGrey16] pszPath == NULL\n");
        return false;
    }
    try
    {
        std::string strLine;
        if (LoadSamples(pszPath, uWidth, uHeight, Samples, strLine))
        {
            return true;
        }
        CrashLog("[LoadGrey16] %s\n", strLine.c_str());
    }
    catch (const std::bad_alloc&)
    {
        CrashLog("[LoadGrey16] %s: not enough memory\n", pszPath);
    }
    return false;
}

bool SaveGrey16(const char* pszPath, uint32_t uWidth, uint32_t uHeight, const uint16_t* pSamples)
{
    if (pszPath == nullptr || pSamples == nullptr)
    {
        CrashLog("[SaveGrey16] %s == NULL\n", pszPath == nullptr ? "pszPath" : "pSamples");
        return false;
    }
    try
    {
        std::string strLine;
        if (SaveSamples(pszPath, uWidth, uHeight, pSamples, strLine))
        {
            return true;
        }
        CrashLog("[SaveGrey16] %s\n", strLine.c_str());
    }
    catch (const std::bad_alloc&)
    {
        CrashLog("[SaveGrey16] %s: not enough memory\n", pszPath);
    }
    return false;
}
