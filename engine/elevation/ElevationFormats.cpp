#include "engine/elevation/ElevationFormats.h"

#include "engine/elevation/AsciiGridReader.h"
#include "engine/elevation/ExportWriters.h"
#include "engine/elevation/ExrReader.h"
#include "engine/elevation/GeoTiffReader.h"
#include "engine/elevation/GreyPngReader.h"
#include "engine/elevation/HgtReader.h"
#include "engine/elevation/NpyReader.h"
#include "engine/elevation/RawReader.h"
#include "engine/imaging/PngCodec.h"
#include "engine/terrain/HeightFile.h"
#include "host/FileSystem.h"

#include <strings.h>

#include <algorithm>
#include <cstring>

namespace
{

// A decoder that needs to be told nothing.
template <bool (*DECODE)(std::span<const uint8_t>, SSampleGrid&, std::string&)>
bool Decode(std::span<const uint8_t> bytes,
            const SImportOptions& /*options*/,
            SSampleGrid& grid,
            std::string& strFault)
{
    return DECODE(bytes, grid, strFault);
}

bool IsHeightFile(std::span<const uint8_t> bytes)
{
    constexpr char SIGNATURE[] = {'H', 'E', 'I', 'G', 'H', 'T', 'F', '1'};
    return bytes.size() >= sizeof(SIGNATURE) &&
           std::memcmp(bytes.data(), SIGNATURE, sizeof(SIGNATURE)) == 0;
}

bool SaveHeightFile(const char* pszPath,
                    const SSampleView& heights,
                    const SVec3& size,
                    const SExportPlan& /*plan*/)
{
    return WriteHeightFile(pszPath, heights.pSamples, heights.uColumns, heights.uRows, size);
}

// A row for each format, in the order in which texts list them.
constexpr SElevationFormat ELEVATION_FORMATS[] = {
    {.pszName = "height file",
     .extensions = {"height"},
     .pRecognise = IsHeightFile,
     .pSave = SaveHeightFile,
     .bTerrain = true},
    {.pszName = "grey PNG",
     .extensions = {"png"},
     .pRecognise = IsPng,
     .pDecode = Decode<DecodeGreyPng>,
     .pSave = SaveGreyPng,
     .eSamples = ESampleType::Unsigned,
     .eCodes = ECodes::Always,
     .eByteOrder = EByteOrder::Big},
    {.pszName = "raw 16-bit",
     .extensions = {"r16"},
     .pDecode = DecodeRaw16,
     .pWrite = WriteRaw,
     .eSamples = ESampleType::Unsigned,
     .eCodes = ECodes::Always,
     .bRaw = true},
    {.pszName = "raw 32-bit float",
     .extensions = {"r32"},
     .pDecode = DecodeRaw32,
     .pWrite = WriteRaw,
     .eCodes = ECodes::WhenWhiteIsSaid,
     .bRaw = true},
    {.pszName = "NumPy array",
     .extensions = {"npy"},
     .pRecognise = IsNpy,
     .pDecode = Decode<DecodeNpy>,
     .pWrite = WriteNpy},
    {.pszName = "HGT tile",
     .extensions = {"hgt"},
     .pDecode = Decode<DecodeHgt>,
     .pWrite = WriteRaw,
     .pszSquareFile = "an HGT tile",
     .eSamples = ESampleType::Signed,
     .eByteOrder = EByteOrder::Big,
     .bDegreeTile = true},
    {.pszName = "GeoTIFF",
     .extensions = {"tif", "tiff"},
     .pRecognise = IsTiff,
     .pDecode = Decode<DecodeGeoTiff>,
     .pWrite = WriteTiff,
     .bKeepsSpacing = true},
    {.pszName = "ASCII grid",
     .extensions = {"asc"},
     .pRecognise = IsAsciiGrid,
     .pDecode = Decode<DecodeAsciiGrid>,
     .pWrite = WriteAsciiGrid,
     .eByteOrder = EByteOrder::None,
     .bKeepsSpacing = true,
     .bNorthUp = true},
    {.pszName = "OpenEXR",
     .extensions = {"exr"},
     .pRecognise = IsExr,
     .pDecode = Decode<DecodeExr>,
     .pWrite = WriteExr,
     .eCodes = ECodes::WhenWhiteIsSaid,
     .bHalves = true},
};

// A name that is nothing but the extension is none.
bool EndsIn(const char* pszPath, const char* pszExtension)
{
    const size_t nPath = std::strlen(pszPath);
    const size_t nExtension = std::strlen(pszExtension);
    return nPath > nExtension + 1 && pszPath[nPath - nExtension - 1] == '.' &&
           strcasecmp(pszPath + nPath - nExtension, pszExtension) == 0;
}

} // namespace

std::span<const SElevationFormat> GetElevationFormats()
{
    return ELEVATION_FORMATS;
}

const SElevationFormat* FindFormatByName(const char* pszPath)
{
    for (const SElevationFormat& format : ELEVATION_FORMATS)
    {
        for (const char* pszExtension : format.extensions)
        {
            if (pszExtension != nullptr && EndsIn(pszPath, pszExtension))
            {
                return &format;
            }
        }
    }
    return nullptr;
}

const SElevationFormat* RecogniseElevation(std::span<const uint8_t> bytes, const char* pszPath)
{
    const auto* pFound =
        std::find_if(std::begin(ELEVATION_FORMATS),
                     std::end(ELEVATION_FORMATS),
                     [bytes](const SElevationFormat& format)
                     { return format.pRecognise != nullptr && format.pRecognise(bytes); });
    return pFound != std::end(ELEVATION_FORMATS) ? pFound : FindFormatByName(pszPath);
}

const SElevationFormat* FindFormatOfFile(const char* pszPath)
{
    uint8_t aBytes[64];
    fs::file file;
    const size_t nRead =
        file.open(pszPath, fs::mode_read) ? file.read(aBytes, sizeof(aBytes)) : size_t{0};
    return RecogniseElevation({aBytes, nRead}, pszPath);
}

bool IsWritten(const SElevationFormat* pFormat)
{
    return pFormat != nullptr && (pFormat->pWrite != nullptr || pFormat->pSave != nullptr);
}

std::string ListElevationFormats(bool bWritten)
{
    std::string strList;
    for (const SElevationFormat& format : ELEVATION_FORMATS)
    {
        if (!bWritten || IsWritten(&format))
        {
            strList += (strList.empty() ? "" : ", ") + std::string(format.extensions[0]);
        }
    }
    return strList;
}
