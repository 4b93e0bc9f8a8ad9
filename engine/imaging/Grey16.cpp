#include "engine/imaging/Grey16.h"

#include "engine/imaging/CFileBytes.h"
#include "engine/imaging/CPngReader.h"
#include "engine/imaging/PngCodec.h"
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
                 std::vector<uint16_t>& samples,
                 std::string& strLine)
{
    CFileBytes file;
    if (!file.Read(pszPath, strLine))
    {
        return false;
    }
    std::string strFault;
    // Each step may leave a fault; the name of the file is put before it at one place below.
    CPngReader reader(file.GetBytes());
    std::vector<uint16_t> read;
    bool bGood = false;
    if (!IsPng(file.GetBytes()))
    {
        strFault = "not a PNG file";
    }
    else if (!reader.ReadHeader() || !reader.Prepare(CPngReader::ESamples::Words))
    {
        strFault = reader.GetFault();
    }
    else if (!reader.IsGrey())
    {
        strFault = "not a PNG file of plain grey";
    }
    else if (CheckImageSize(reader.GetWidth(), reader.GetHeight(), strFault))
    {
        read.resize(size_t{reader.GetWidth()} * reader.GetHeight());
        bGood = reader.ReadPixels(reinterpret_cast<uint8_t*>(read.data()));
        strFault = reader.GetFault();
    }
    if (!bGood)
    {
        strLine = std::string(pszPath) + ": " + strFault;
        return false;
    }
    uWidth = reader.GetWidth();
    uHeight = reader.GetHeight();
    samples = std::move(read);
    return true;
}

bool SaveSamples(const char* pszPath,
                 uint32_t uWidth,
                 uint32_t uHeight,
                 const uint16_t* pSamples,
                 std::string& strLine)
{
    SPngPixels pixels;
    pixels.uWidth = uWidth;
    pixels.uHeight = uHeight;
    pixels.iBitDepth = 16;
    pixels.nRowBytes = size_t{uWidth} * SAMPLE_BYTES;
    pixels.pRows = reinterpret_cast<const uint8_t*>(pSamples);
    std::vector<uint8_t> bytes;
    std::string strFault;
    if (!CheckImageSize(uWidth, uHeight, strFault) || !WritePng(pixels, bytes, strFault))
    {
        strLine = std::string(pszPath) + ": " + strFault;
        return false;
    }
    return WriteFileBytes(pszPath, bytes, strLine);
}

} // namespace

bool LoadGrey16(const char* pszPath,
                uint32_t& uWidth,
                uint32_t& uHeight,
                std::vector<uint16_t>& samples)
{
    if (pszPath == nullptr)
    {
        CrashLog("[LoadGrey16] pszPath == NULL\n");
        return false;
    }
    try
    {
        std::string strLine;
        if (LoadSamples(pszPath, uWidth, uHeight, samples, strLine))
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
