#include "engine/elevation/ExportWriters.h"
#include "engine/elevation/GeoTiffTags.h"

#include <tiffio.h>

#include <algorithm>
#include <cstdio>

namespace
{

constexpr size_t STRIP_BYTES = size_t{1} << 18;

// What libtiff calls back with.
struct STarget
{
    fs::file& file;
    std::string& strFault;
};

STarget& GetTarget(thandle_t pHandle)
{
    return *static_cast<STarget*>(pHandle);
}

// A file that is written from nothing is never read.
tmsize_t OnRead(thandle_t /*pHandle*/, void* /*pDest*/, tmsize_t /*nBytes*/)
{
    return 0;
}

tmsize_t OnWrite(thandle_t pHandle, void* pSource, tmsize_t nBytes)
{
    return static_cast<tmsize_t>(
        GetTarget(pHandle).file.write(pSource, static_cast<size_t>(nBytes)));
}

toff_t OnSeek(thandle_t pHandle, toff_t nOffset, int iFrom)
{
    fs::file& file = GetTarget(pHandle).file;
    const toff_t nBase = iFrom == SEEK_CUR ? file.tell() : (iFrom == SEEK_END ? file.length() : 0);
    return file.seek(nBase + nOffset) ? nBase + nOffset : static_cast<toff_t>(-1);
}

int OnClose(thandle_t /*pHandle*/)
{
    return 0; // the file belongs to the caller
}

toff_t OnSize(thandle_t pHandle)
{
    return GetTarget(pHandle).file.length();
}

// The first fault counts.
int OnError(TIFF* /*pTiff*/, void* pUser, const char*, const char* pszFormat, va_list arguments)
{
    auto& strFault = *static_cast<std::string*>(pUser);
    char aText[160];
    std::vsnprintf(aText, sizeof(aText), pszFormat, arguments);
    if (strFault.empty())
    {
        strFault = aText;
        std::replace(strFault.begin(), strFault.end(), '\n', ' ');
    }
    return 1;
}

TIFF* OpenTiff(STarget& target)
{
    TIFFOpenOptions* pOptions = TIFFOpenOptionsAlloc();
    if (pOptions == nullptr)
    {
        return nullptr;
    }
    TIFFOpenOptionsSetErrorHandlerExtR(pOptions, OnError, &target.strFault);
    // "l": little-endian on every processor.
    TIFF* pTiff = TIFFClientOpenExt("terrain",
                                    "wl",
                                    &target,
                                    OnRead,
                                    OnWrite,
                                    OnSeek,
                                    OnClose,
                                    OnSize,
                                    nullptr,
                                    nullptr,
                                    pOptions);
    TIFFOpenOptionsFree(pOptions);
    return pTiff;
}

bool WriteTags(TIFF* pTiff, const CExportRows& rows, const SExportPlan& plan, uint32_t uStripRows)
{
    return WriteGeoTags(pTiff,
                        plan.geo,
                        {plan.dSpacingX, plan.dSpacingZ},
                        rows.GetColumns(),
                        rows.GetRows()) &&
           TIFFSetField(pTiff, TIFFTAG_IMAGEWIDTH, rows.GetColumns()) == 1 &&
           TIFFSetField(pTiff, TIFFTAG_IMAGELENGTH, rows.GetRows()) == 1 &&
           TIFFSetField(pTiff, TIFFTAG_BITSPERSAMPLE, 32) == 1 &&
           TIFFSetField(pTiff, TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_IEEEFP) == 1 &&
           TIFFSetField(pTiff, TIFFTAG_SAMPLESPERPIXEL, 1) == 1 &&
           TIFFSetField(pTiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISBLACK) == 1 &&
           TIFFSetField(pTiff, TIFFTAG_COMPRESSION, COMPRESSION_NONE) == 1 &&
           TIFFSetField(pTiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT) == 1 &&
           TIFFSetField(pTiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG) == 1 &&
           TIFFSetField(pTiff, TIFFTAG_ROWSPERSTRIP, uStripRows) == 1;
}

} // namespace

bool WriteTiff(fs::file& file, CExportRows& rows, const SExportPlan& plan, std::string& strFault)
{
    STarget target{file, strFault};
    TIFF* pTiff = OpenTiff(target);
    if (pTiff == nullptr)
    {
        strFault = strFault.empty() ? "libtiff cannot start" : strFault;
        return false;
    }
    const size_t nRowBytes = size_t{rows.GetColumns()} * sizeof(float);
    // Strips of some rows each, written as soon as they are full, need little memory.
    const auto uStripRows = static_cast<uint32_t>(std::max<size_t>(STRIP_BYTES / nRowBytes, 1));
    bool bGood = WriteTags(pTiff, rows, plan, uStripRows);
    std::vector<float> strip;
    for (uint32_t z = 0; bGood && z < rows.GetRows(); z += uStripRows)
    {
        const uint32_t uRows = std::min(uStripRows, rows.GetRows() - z);
        strip.clear();
        for (uint32_t i = 0; bGood && i < uRows; ++i)
        {
            const float* pRow = rows.GetRow(z + i);
            if (pRow == nullptr)
            {
                strFault = "cancelled";
                bGood = false;
                break;
            }
            strip.insert(strip.end(), pRow, pRow + rows.GetColumns());
        }
        const auto nBytes = static_cast<tmsize_t>(strip.size() * sizeof(float));
        bGood =
            bGood && TIFFWriteEncodedStrip(pTiff, z / uStripRows, strip.data(), nBytes) == nBytes;
    }
    bGood = bGood && TIFFWriteDirectory(pTiff) == 1;
    TIFFClose(pTiff);
    strFault = !bGood && strFault.empty() ? "libtiff cannot write it" : strFault;
    return bGood && strFault.empty();
}
